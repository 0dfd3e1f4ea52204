#include "EventsListControls.h"

#include "JourneyScript.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/ZoEDlgEventsCfg.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTreeView>

namespace zo::bench {
namespace {

QAbstractItemView* View(JourneyScript* script, ZoEDlgEventsCfg& list)
{
    auto* view = list.findChild<QAbstractItemView*>(QStringLiteral("eventsList"));
    if (!view && script)
        script->Fail("no eventsList in the events list");
    return view;
}

} // namespace

int ListRowCount(ZoEDlgEventsCfg& list)
{
    QAbstractItemView* view = View(nullptr, list);
    return view ? view->model()->rowCount() : 0;
}

int SelectedRowCount(ZoEDlgEventsCfg& list)
{
    QAbstractItemView* view = View(nullptr, list);
    return view ? static_cast<int>(view->selectionModel()->selectedRows().size()) : 0;
}

void SelectMiddleRow(JourneyScript& script, ZoEDlgEventsCfg& list)
{
    QAbstractItemView* view = View(&script, list);
    if (!view)
        return;
    int const rows = view->model()->rowCount();
    if (rows == 0) {
        script.Fail("the events list is empty");
        return;
    }
    QModelIndex const middle = view->model()->index(rows / 2, 0);
    view->selectionModel()->select(middle, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void SetDescription(JourneyScript& script, QDialog& editor, QString const& text)
{
    auto* edit = editor.findChild<QLineEdit*>(QStringLiteral("descriptionEdit"));
    if (!edit) {
        script.Fail("no descriptionEdit in the event editor");
        return;
    }
    edit->setText(text);
}

void ModifyMiddleDescription(JourneyScript& script, ZoEDlgEventsCfg& list, QString const& description,
                             std::function<void()> const& beforeOk)
{
    SelectMiddleRow(script, list);
    script.ThenAs<ZoEDlgEventCfg>([&script, description, beforeOk](ZoEDlgEventCfg& editor) {
        SetDescription(script, editor, description);
        if (beforeOk)
            beforeOk();
        return ClickButton(script, editor, "okButton");
    });
    ClickButton(script, list, "modifyButton");
    if (!list.IsModified())
        script.Fail("the event editor's OK did not change the list");
}

QString NextDescription()
{
    static int round = 0;
    return QStringLiteral("Changed on the journey, round %1").arg(++round);
}

} // namespace zo::bench
