#include "actions/ZoRecipientsViews.h"

#include "actions/ZoRecipientsModel.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>

QTreeView* ZoNewRecipientsView(QWidget* parent, char const* objectName, ZoRecipientsModel* model)
{
    auto* view = new QTreeView(parent);
    view->setObjectName(QLatin1String(objectName));
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->header()->setStretchLastSection(true);
    view->header()->setSectionsMovable(false);
    view->setMinimumHeight(view->fontMetrics().height() * 7);
    return view;
}

QPlainTextEdit* ZoNewMessageEdit(QWidget* parent, int lines)
{
    auto* edit = new QPlainTextEdit(parent);
    edit->setObjectName(QStringLiteral("messageEdit"));
    edit->setTabChangesFocus(true);
    edit->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    int const frame = 2 * edit->frameWidth() + 8;
    edit->setMinimumHeight(edit->fontMetrics().lineSpacing() * 3 + frame);
    edit->setMaximumHeight(edit->fontMetrics().lineSpacing() * lines + frame);
    return edit;
}

void ZoStartMessage(QPlainTextEdit* edit)
{
    edit->setFocus();
    edit->moveCursor(QTextCursor::End);
}

void ZoSelectEntry(QLineEdit* edit, std::wstring const& entry)
{
    edit->setFocus();
    int const at = edit->text().indexOf(QString::fromStdWString(entry));
    if (entry.empty() || at < 0)
        edit->selectAll();
    else
        edit->setSelection(at, static_cast<int>(QString::fromStdWString(entry).size()));
}

void ZoFocusRecipients(QTreeView* list, ZoRecipientsModel const& model)
{
    list->setFocus();
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.RowAt(row).available) {
            list->setCurrentIndex(model.index(row, 0));
            return;
        }
}
