#include "platform/ui/ZoListView.h"

#include <QTreeView>

QTreeView* ZoNewListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                         QAbstractItemView::SelectionMode mode)
{
    auto* list = new QTreeView(parent);
    list->setObjectName(QLatin1String(objectName));
    list->setModel(model);
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setUniformRowHeights(true);
    list->setSelectionMode(mode);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setAllColumnsShowFocus(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return list;
}
