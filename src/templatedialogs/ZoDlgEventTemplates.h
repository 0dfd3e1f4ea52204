#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

class QPushButton;
class QTreeView;
class QLabel;
class TemplateRowsModel;

// Events > Templates: the project's event templates (name, how many events were stamped
// from each, condition). New and Modify (Enter, double click) open the event editor on the
// template, whose formulas are checked with `{device}` standing for a device that has
// every variable of the catalog (PlaceholderDeviceCatalog); Delete removes the selected template after a question (its
// stamped events stay, no longer linked). The changes are made in the document at once;
// the caller journals them, keeps them on OK and asks before undoing them on Cancel.
//
// Object names: templatesList, newButton, modifyButton, deleteButton, okButton, cancelButton.
class ZoDlgEventTemplates : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgEventTemplates(QWidget* parent, XmlDocument* events, XmlDocument::XmlNode const* deviceTree,
                        XmlDocument::XmlNode const* timeTablesRoot, XmlDocument* users);
    ~ZoDlgEventTemplates() override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill(int current);
    void UpdateButtons();
    void OnNew();
    void OnModify();
    void OnDelete();
    // Runs the event editor on the template at `index` of a copy of the templates (index
    // == count: a new one); true when it ended with OK and the copy replaced the templates.
    bool Edit(int index, bool isNew);

    XmlDocument* m_events;
    XmlDocument::XmlNode const* m_deviceTree;
    XmlDocument::XmlNode const* m_timeTables;
    XmlDocument* m_users;

    QLabel* m_label = nullptr;
    TemplateRowsModel* m_model = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_new = nullptr;
    QPushButton* m_modify = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
