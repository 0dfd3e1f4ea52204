#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QKeyEvent;
class QLabel;
class QMenu;
class QPushButton;
class QTreeView;
class TimeTablesListModel;

// The time-tables setup dialog: every day program, week program and calendar of the
// time-tables document, with add (through the kind chooser), modify, delete, copy and paste.
// Exported: the host's "Time tables..." entry opens it on the project's time-tables document
//
//   ZoDlgTimeTableSetup dialog(parent, &timeTables);
//   if (dialog.DoModal() == QDialog::Accepted) ... // the document changed: save it
//
// Every change is made to the document when it happens (an editor works on a working copy
// of its container, assigned back on its OK). OK ends the dialog with OK when anything
// changed and with Cancel otherwise; Cancel undoes nothing and always ends with Cancel. Deleting a table leaves references
// to it (in week programs, calendars and events) dangling, as readers of references expect.
//
// Object names: timeTablesList, addButton, modifyButton, deleteButton, okButton,
// cancelButton; in the context menu copyAction, pasteAction.
class ZoDlgTimeTableSetup : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgTimeTableSetup(QWidget* parent, XmlDocument* document);
    ~ZoDlgTimeTableSetup() override;

    bool IsModified() const { return m_modified; }

    // Each adds a table of its kind through its editor; true when one was added.
    bool AddNewTimeTableDaily();
    bool AddNewTimeTableWeekly();
    bool AddNewTimeTableYearly();
    // Each edits a live table of its kind through its editor; true when it changed.
    bool ModifyTimeTableDaily(XmlDocument::XmlNode* element);
    bool ModifyTimeTableWeekly(XmlDocument::XmlNode* element);
    bool ModifyTimeTableYearly(XmlDocument::XmlNode* element);

    void OnAdd();
    void OnModify();
    // Shows the timeline of the selected table, as the document holds it now.
    void OnTimeline();
    void OnDelete();
    void CopyToClipboard();
    void PasteFromClipboard();
    // The context menu as a right click shows it: copy with a selection, paste when the
    // clipboard holds time tables; null when neither applies.
    std::unique_ptr<QMenu> CreateContextMenu();
    // Set by the host to offer "Where Used…" in the context menu for one selected table:
    // shows the uses of "timetable:NAME" (parent: this dialog).
    std::function<void(QWidget* parent, QString const& reference)> m_whereUsed;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void OnOK();
    void OnColumnclickList(int column);
    void OnRclickZoeList(QPoint const& position);
    void UpdateButtons();

private:
    void Layout();
    void UpdateList();
    void AdjustColumnsSize();
    void UpdateSortIndicator();
    bool OnKeydownList(QKeyEvent* key);
    void OnDblclkZoeList();
    std::vector<int> SelectedRows() const;
    void SelectName(std::wstring const& name);
    bool AddNew(int kind);
    bool Modify(int kind, XmlDocument::XmlNode* element);
    // Runs the kind's editor on an element of a working copy whose root is copyRoot.
    bool RunEditor(int kind, XmlDocument::XmlNode* element, XmlDocument::XmlNode* copyRoot);

    XmlDocument* m_document;
    bool m_modified = false;
    std::wstring m_lastEdited; // name of the table the last add or modify wrote

    TimeTablesListModel* m_model = nullptr;
    QLabel* m_label = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_addButton = nullptr;
    QPushButton* m_modifyButton = nullptr;
    QPushButton* m_timelineButton = nullptr;
    QPushButton* m_deleteButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
