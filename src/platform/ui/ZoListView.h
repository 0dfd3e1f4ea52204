#pragma once
#include <QAbstractItemView>
#include <functional>
#include <memory>
#include <vector>

class QAbstractItemModel;
class QEvent;
class QObject;
class QKeyEvent;
class QMenu;
class QTableView;
class QTreeView;
class QWidget;

// The list control of the dialogs: a flat QTreeView over a model, whole rows selected,
// rows of one height (so that lists of many thousand rows stay quick), no editing in place.
QTreeView* ZoNewListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                         QAbstractItemView::SelectionMode mode = QAbstractItemView::ExtendedSelection);

// The same control for lists of up to millions of rows: a QTableView (rows of one height,
// no grid, no row headings, Tab leaves the list), which lays out no row ahead of showing
// it, where a QTreeView lays out every row after each insertion or removal.
QTableView* ZoNewLongListView(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                              QAbstractItemView::SelectionMode mode = QAbstractItemView::ExtendedSelection);

// The selected rows of a list, ascending.
std::vector<int> ZoSelectedRows(QAbstractItemView const* list);

// Shows the model's sort column and direction in the list's header.
void ZoShowSortIndicator(QTreeView* list, int column, bool descending);
void ZoShowSortIndicator(QTableView* list, int column, bool descending);

// After rows from firstRow on were removed: selects the row that took firstRow's place, or
// the last one, when any is left.
void ZoSelectRowAfterRemoval(QAbstractItemView* list, int firstRow);

// What the keys of a list of elements do; a null entry leaves its key to the dialog.
struct ZoListKeyCommands {
    std::function<void()> copy = {};           // Ctrl+C
    std::function<void()> paste = {};          // Ctrl+V
    std::function<void()> add = {};            // Insert
    std::function<void()> remove = {};         // Delete with rows selected (without, Delete does nothing)
    std::function<void()> open = {};           // Enter with rows selected
    std::function<void()> enterOnNothing = {}; // Enter without a selection
    std::function<void()> escape = {};         // Escape
};
// Runs the command of a key pressed in a list; true when the key was used.
bool ZoListKey(QKeyEvent* key, bool selected, ZoListKeyCommands const& commands);

// What a list's dialog does with the events of the list's viewport, which it filters: a
// resize runs `resized` (fitting the columns), a left double click runs `doubleClicked` and
// is used up. A null command leaves its event alone. True when the event was used.
bool ZoListViewportEvent(QAbstractItemView const* list, QObject const* watched, QEvent const* event,
                         std::function<void()> const& resized, std::function<void()> const& doubleClicked);

// For a list that opens its current row (the Problems, where-used and coverage windows):
// Enter or Return on the list, or a left double click on its viewport, runs `open`, and the
// event is used up. The list and its viewport must be filtered by the caller.
bool ZoListOpenEvent(QAbstractItemView const* list, QObject const* watched, QEvent const* event,
                     std::function<void()> const& open);

// The context menu of a list with Copy (when canCopy) and Paste (when canPaste), named
// copyAction and pasteAction; null when neither applies.
std::unique_ptr<QMenu> ZoNewCopyPasteMenu(QWidget* parent, bool canCopy, bool canPaste, std::function<void()> copy,
                                          std::function<void()> paste);
