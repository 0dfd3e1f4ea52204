#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include "platform/ui/ZoMnemonics.h"

#include <functional>
#include <memory>
#include <vector>

class EventGroupsModel;
class NameRowsModel;
class QGroupBox;
class QKeyEvent;
class QPushButton;
class QTreeView;

// The event groups of a project and their members: the groups on the left, the events of
// the one selected group on the right.
//
// Argument: the event configuration document; its `eventsGroups` element holds the groups
// (`id`, `name`), and each event names its groups in its own `eventsGroups`.
//
// New and renamed groups are named in ZoDlgEventNewModifyGroup on a working copy of the
// groups, written back on its OK. Deleting groups and adding or removing members change the
// live document at once: Cancel does not undo them (the host keeps an undo journal for
// that). Ends with OK only when something changed.
//
// Keys: in the group list Insert adds, Delete deletes, Enter and a double click rename; in
// the member list Insert adds members and Delete removes the selected ones. A click on the
// group list's heading reverses its order (the first click sorts descending).
//
// Object names: groupsBox, groupsList, addButton, modifyButton, deleteButton, membersBox,
// membersList, addMemberButton, removeMemberButton, okButton, cancelButton.
class QMenu;

class ZoEDlgEventGroupsCfg : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgEventGroupsCfg(QWidget* parent, XmlDocument* eventsCfg);
    ~ZoEDlgEventGroupsCfg() override;

    bool IsModified() const { return m_modified; }
    // Selects the first group shown with this name (exact text); nothing when none is.
    void SelectGroup(QString const& name);

    // Set by the host to offer "Where Used…" in the groups list's context menu for one
    // selected group: shows the uses of "group:NAME" (parent: this dialog).
    std::function<void(QWidget* parent, QString const& reference)> m_whereUsed;
    // The groups list's context menu; null when it would be empty.
    std::unique_ptr<QMenu> CreateContextMenu();

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void OnAdd();
    void OnModify();
    void OnDelete();
    void OnAddEvent();
    void OnDeleteEvent();
    void OnOK();
    void OnColumnclickList();
    void OnItemchangedList();
    void UpdateButtons();

private:
    void Layout();
    void UpdateList();
    void UpdateEventList();
    void UpdateSortIndicator();
    bool OnKeydownList(QKeyEvent* key);
    bool OnKeydownEventList(QKeyEvent* key);
    std::vector<int> SelectedGroupRows() const;
    std::vector<int> SelectedMemberRows() const;
    void SelectRow(int row);
    XmlDocument::XmlNode* Events() const;

    XmlDocument* m_eventsCfg;
    bool m_modified = false;
    int m_eventCount = 0;
    // The letters taken by the fixed texts, so that the member box's changing title gets
    // one of its own every time.
    ZoMnemonics m_keys;

    EventGroupsModel* m_model = nullptr;
    NameRowsModel* m_members = nullptr;
    QGroupBox* m_groupsBox = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_addButton = nullptr;
    QPushButton* m_modifyButton = nullptr;
    QPushButton* m_deleteButton = nullptr;
    QGroupBox* m_membersBox = nullptr;
    QTreeView* m_memberList = nullptr;
    QPushButton* m_addMemberButton = nullptr;
    QPushButton* m_removeMemberButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
