#pragma once
#include "config/XmlDocument.h"
#include <QWidget>
#include <memory>
#include <vector>

class QKeyEvent;
class QMenu;
class QPushButton;
class QTreeView;
class ZoActionsListModel;
class ZoMnemonics;

// The list pane of one moment of one side of an event's actions (`actions` or
// `clientActions`, moment 0 activate, 1 while, 2 deactivate, 3 acknowledge): the actions of
// the moment element, with New, Modify and Remove, copy and paste. A child widget of the
// event editor, which shows eight of them on its two action tabs.
//
//   pane->Initialize(momentIndex, moment, users, client);   // fills the list
//   pane->SetEditorFlags(presetIndex, skipCheck, keep);      // each time the pane is shown
//   ... pane->IsModified()
//
// Every change goes straight into the moment element (the event editor's caller keeps or
// drops the whole working copy); IsModified() tells whether one was made.
//
// Keyboard: Insert adds, Delete removes (after a question), Enter or a double click on a
// row modifies it, Ctrl+C / Ctrl+V copy and paste, a click on a column header sorts. Enter
// elsewhere and Escape act on the event editor (its OK and Cancel).
//
// Object names: actionsList, newActionButton, modifyActionButton, removeActionButton; in
// the context menu copyAction, pasteAction.
class ZoEDlgEventActionsCfg : public QWidget {
    Q_OBJECT
public:
    explicit ZoEDlgEventActionsCfg(QWidget* parent = nullptr);
    ~ZoEDlgEventActionsCfg() override;

    // Stores the moment and fills the list (once, before the pane is shown).
    void Initialize(int momentIndex, XmlDocument::XmlNode* moment, XmlDocument* users, bool client);
    // Captions with Alt keys that the letters already taken in keys leave free.
    void SetCaptions(ZoMnemonics keys);
    // Handed on to every editor the pane opens. With a preset index the list is not sorted,
    // and a confirmed modify of that row ends the event editor with OK.
    void SetEditorFlags(int presetIndex, bool skipCheck, bool keep);

    bool IsModified() const { return m_changed; }
    int MomentIndex() const { return m_momentIndex; }
    bool IsClient() const { return m_client; }
    XmlDocument::XmlNode* Moment() const { return m_moment; }
    // The kinds this moment may receive now (ZoAllowedActionKinds).
    unsigned AllowedKinds() const;
    ZoActionsListModel* Model() const { return m_model; }
    QTreeView* List() const { return m_list; }

    void OnNew();
    void OnModify();
    void OnRemove();
    void CopyToClipboard();
    void PasteFromClipboard();
    void OnColumnclickList(int column);
    // Pass OK and Cancel on to the event editor (queued, as a posted command).
    void OnOK();
    void OnCancel();
    // The context menu as a right click shows it: copy with a selection, paste when the
    // clipboard holds actions; null when neither applies.
    std::unique_ptr<QMenu> CreateContextMenu();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void UpdateList();
    void UpdateButtons();
    void UpdateSortIndicator();
    void AdjustColumnsSize();
    bool OnKeydownList(QKeyEvent* key);
    std::vector<int> SelectedRows() const;
    void SelectElement(XmlDocument::XmlNode const* element);
    // Appends a new action of the kind and edits it; the element when it was kept.
    XmlDocument::XmlNode* AddAction(unsigned kind);
    bool ModifyAction(XmlDocument::XmlNode* element);
    void Changed(XmlDocument::XmlNode const* select);

    int m_momentIndex = 0;
    bool m_client = false;
    XmlDocument::XmlNode* m_moment = nullptr;
    XmlDocument* m_users = nullptr;
    bool m_changed = false;
    int m_presetIndex = -1;
    bool m_skipCheck = false;
    bool m_keep = false;

    ZoActionsListModel* m_model = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_newButton = nullptr;
    QPushButton* m_modifyButton = nullptr;
    QPushButton* m_removeButton = nullptr;
};
