#include "platform/ui/ZoListView.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTreeView>
#include <algorithm>

namespace {

// What every list control is: named, over its model, whole rows selected, no editing in place.
void SetUpList(QAbstractItemView* list, char const* objectName, QAbstractItemModel* model,
               QAbstractItemView::SelectionMode mode)
{
    list->setObjectName(QLatin1String(objectName));
    list->setModel(model);
    list->setSelectionMode(mode);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
}

// Draws a table's cells as a list draws its rows: the selected row highlighted whole, no
// frame around the one cell that has the focus.
class WholeRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, QModelIndex const& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

} // namespace

QTreeView* ZoNewListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                         QAbstractItemView::SelectionMode mode)
{
    auto* list = new QTreeView(parent);
    SetUpList(list, objectName, model, mode);
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    return list;
}

QTableView* ZoNewLongListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                              QAbstractItemView::SelectionMode mode)
{
    auto* list = new QTableView(parent);
    SetUpList(list, objectName, model, mode);
    list->setShowGrid(false);
    list->setWordWrap(false);
    list->setTabKeyNavigation(false);
    list->setCornerButtonEnabled(false);
    list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    QHeaderView* rows = list->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    // The rows of the other lists: a line of text or a small icon, and a little air.
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(std::max(list->fontMetrics().height(), 16) + 2);
    list->setItemDelegate(new WholeRowDelegate(list));
    list->horizontalHeader()->setHighlightSections(false);
    list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return list;
}

std::vector<int> ZoSelectedRows(QAbstractItemView const* list)
{
    std::vector<int> rows;
    for (QModelIndex const& index : list->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ZoShowSortIndicator(QTreeView* list, int column, bool descending)
{
    list->header()->setSortIndicator(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ZoShowSortIndicator(QTableView* list, int column, bool descending)
{
    list->horizontalHeader()->setSortIndicator(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ZoSelectRowAfterRemoval(QAbstractItemView* list, int firstRow)
{
    int const count = list->model()->rowCount();
    if (count <= 0)
        return;
    QModelIndex const index = list->model()->index(std::min(firstRow, count - 1), 0);
    list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool ZoListKey(QKeyEvent* key, bool selected, ZoListKeyCommands const& commands)
{
    auto run = [](std::function<void()> const& command) {
        if (!command)
            return false;
        command();
        return true;
    };
    if (key->matches(QKeySequence::Copy))
        return run(commands.copy);
    if (key->matches(QKeySequence::Paste))
        return run(commands.paste);
    if (key->modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (key->key()) {
    case Qt::Key_Insert: return run(commands.add);
    case Qt::Key_Delete:
        if (!commands.remove)
            return false;
        if (selected)
            commands.remove();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: return run(selected ? commands.open : commands.enterOnNothing);
    case Qt::Key_Escape: return run(commands.escape);
    default: return false;
    }
}

bool ZoListViewportEvent(QAbstractItemView const* list, QObject const* watched, QEvent const* event,
                         std::function<void()> const& resized, std::function<void()> const& doubleClicked)
{
    if (watched != list->viewport())
        return false;
    if (event->type() == QEvent::Resize && resized) {
        resized();
    } else if (event->type() == QEvent::MouseButtonDblClick && doubleClicked
               && static_cast<QMouseEvent const*>(event)->button() == Qt::LeftButton) {
        doubleClicked();
        return true;
    }
    return false;
}

bool ZoListOpenEvent(QAbstractItemView const* list, QObject const* watched, QEvent const* event,
                     std::function<void()> const& open)
{
    if (watched == list && event->type() == QEvent::KeyPress) {
        int const key = static_cast<QKeyEvent const*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            open();
            return true;
        }
    }
    return ZoListViewportEvent(list, watched, event, nullptr, open);
}

std::unique_ptr<QMenu> ZoNewCopyPasteMenu(QWidget* parent, bool canCopy, bool canPaste, std::function<void()> copy,
                                          std::function<void()> paste)
{
    if (!canCopy && !canPaste)
        return nullptr;
    auto menu = std::make_unique<QMenu>(parent);
    if (canCopy) {
        QAction* action = menu->addAction(ZoImageIcon(L"COPY-16.png"), ZoText(732) + QStringLiteral("\tCtrl+C"),
                                          parent, std::move(copy));
        action->setObjectName(QStringLiteral("copyAction"));
    }
    if (canPaste) {
        QAction* action = menu->addAction(ZoImageIcon(L"PASTE-16.png"), ZoText(742) + QStringLiteral("\tCtrl+V"),
                                          parent, std::move(paste));
        action->setObjectName(QStringLiteral("pasteAction"));
    }
    return menu;
}
