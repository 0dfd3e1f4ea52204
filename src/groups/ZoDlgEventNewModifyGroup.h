#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

class QLabel;
class QLineEdit;
class QDialogButtonBox;
class QPushButton;

// The name of one event group, new or renamed.
//
// group: the `eventsGroup` element to name; groups: the `eventsGroups` element among whose
// children the name must be unique. Both lie in the caller's working copy. The title says
// "rename" when the group already has a name, "new" otherwise. OK checks the name
// (CheckGroupName) and refuses it with a message; a name that differs from the group's
// current one (case counts) is written and the dialog ends with OK, an unchanged name ends
// it with Cancel, so that the caller records no change.
//
// Object names: nameLabel, nameEdit, okButton, cancelButton.
class ZoDlgEventNewModifyGroup : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgEventNewModifyGroup(QWidget* parent, XmlDocument::XmlNode* group, XmlDocument::XmlNode* groups);
    ~ZoDlgEventNewModifyGroup() override;

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();

private:
    void Layout();

    XmlDocument::XmlNode* m_group;
    XmlDocument::XmlNode* m_groups;
    QLabel* m_label = nullptr;
    QLineEdit* m_nameEdit = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
