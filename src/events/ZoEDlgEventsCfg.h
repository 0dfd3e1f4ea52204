#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include <functional>
#include <memory>
#include <string>

using XmlNode = XmlDocument::XmlNode;

class CDlgSearchReplace;
class EventSearch;
class EventsListModel;
struct ZoSearchReplaceRequest;
class QLabel;
class QMenu;
class QPushButton;
class QTableView;

// The events list: every event of the project, with add, modify, delete, copy and paste.
// Ends with OK only when something changed, so the host saves only after a real change.
//
// Arguments: the device groups element under which every event is registered as a device
// (may be null: nothing is registered), the event configuration document (its `events`
// element is changed), the time-tables document (read only, for the names of time
// tables) and the users document (handed unchanged to every event editor).
//
// Object names: eventsList, addButton, modifyButton, deleteButton, okButton, cancelButton,
// and in the context menu copyAction, pasteAction, searchAction (also Ctrl+F in the list),
// which shows the search dialog (CDlgSearchReplace, whose header names its controls).
class ZoEDlgEventsCfg : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgEventsCfg(QWidget* parent, XmlNode* deviceGroups, XmlDocument* eventsCfg,
                    XmlDocument const* timeTables, XmlDocument* users);
    ~ZoEDlgEventsCfg() override;

    bool IsModified() const { return m_modified; }

    // Selects the row of the event with this name (exact text, without regard to case)
    // and scrolls it into view; nothing when there is none.
    void SelectEvent(std::wstring const& name);
    void SelectEvent(XmlNode const* event);

    // Ctrl+C: puts the selected events on the clipboard.
    void CopyToClipboard();
    // Ctrl+V: pastes the events of an events clipboard; anything else is ignored.
    void PasteFromClipboard();

    // Set by the host to offer "Where Used…" in the context menu: shows the uses of the first
    // selected event (parent: this list) and returns the event the user picked among them,
    // which the list then selects, or null.
    std::function<XmlNode const*(QWidget* parent, XmlNode const* event)> m_whereUsed;

    // The list's context menu as a right click shows it (copy, paste, search in groups).
    // Opening it records the search start position. OnRclickZoeList pops it up.
    std::unique_ptr<QMenu> CreateContextMenu();
    // One more than the list position of the first selected row when the context menu was
    // last opened, -1 when no row was selected then (where a search in groups starts).
    int SearchStartPosition() const { return m_searchStart; }

    // Search and replace (ZoEDlgEventsCfgSearch.cpp). The context menu's entry, or Ctrl+F in
    // the list: shows the modeless search dialog (made on first use, kept until the list
    // closes) in find mode and starts the walk at the event of the first row selected when
    // the menu opened, or at the first event.
    void OnGroupsSearchReplace();
    // A notification of the search dialog: wParam 1 when it closes (nothing to do),
    // otherwise the request.
    void OnCtrlSearchReplace(int wParam, ZoSearchReplaceRequest const& request);
    // Advances the walk's current event to the next event; false at the end.
    bool IncIterators();
    // The search dialog, null before the first search.
    CDlgSearchReplace* SearchDialog() const { return m_searchDialog; }

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void OnAdd();
    void OnModify();
    void OnDelete();
    void OnOK();
    void OnColumnclickList(int column);
    void OnRclickZoeList(QPoint const& position);
    void UpdateButtons();

private:
    void Layout();
    void UpdateList();
    void AdjustColumnsSize();
    void UpdateSortIndicator();
    bool OnKeydownList(class QKeyEvent* key);
    void OnDblclkZoeList();
    std::vector<int> SelectedRows() const;
    void SelectRow(int row);
    // Runs the event editor on `event` of a working copy whose root is copyRoot.
    // storedName: the event's name in the rows (empty for a new event).
    bool RunEventEditor(XmlNode* event, XmlNode* copyRoot, std::wstring const& storedName);
    // Search and replace steps (ZoEDlgEventsCfgSearch.cpp).
    XmlNode* LiveEvents() const;
    void SearchStep(ZoSearchReplaceRequest const& request);
    void ReplaceAllStep(ZoSearchReplaceRequest const& request);

    XmlNode* m_deviceGroups;
    XmlDocument* m_eventsCfg;
    XmlDocument const* m_timeTables;
    XmlDocument* m_users;
    bool m_modified = false;
    int m_searchStart = -1;
    CDlgSearchReplace* m_searchDialog = nullptr; // a child: goes with the list
    std::unique_ptr<EventSearch> m_search;        // the current event of the walk
    bool m_replaceMode = false;

    EventsListModel* m_model = nullptr;
    QLabel* m_label = nullptr;
    QTableView* m_list = nullptr;
    QPushButton* m_addButton = nullptr;
    QPushButton* m_modifyButton = nullptr;
    QPushButton* m_deleteButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
