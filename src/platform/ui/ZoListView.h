#pragma once
#include <QAbstractItemView>

class QAbstractItemModel;
class QTreeView;
class QWidget;

// The list control of the dialogs: a flat QTreeView over a model, whole rows selected,
// rows of one height (so that lists of many thousand rows stay quick), no editing in place.
QTreeView* ZoNewListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                         QAbstractItemView::SelectionMode mode = QAbstractItemView::ExtendedSelection);
