#pragma once
#include "actions/ZoRecipientsEditorDlg.h"

class QCheckBox;

using XmlNode = XmlDocument::XmlNode;

// Editor of an `sms` action: the message, with a live count of its characters and of the
// messages it takes, and its recipients, chosen among the users of the users document,
// among its phone lists, or typed as free numbers. Writes `message`, `phone`, `users`,
// `phoneLists` and `forceBreakMessage` only on its own OK (layout in docs/actions.md).
//
// Controls (objectName): messageLabel, messageEdit, countLabel (characters and messages),
// forceBreakCheck (a long text is sent as several messages instead of being cut),
// usersLabel, usersList (checkable users: name and phone number; a user without a number
// is greyed and cannot be chosen), listsLabel, listsList (checkable phone lists),
// phoneLabel, phoneEdit (free numbers separated by ";"), okButton, cancelButton.
class ZoEDlgEventActionSmsCfg : public ZoRecipientsEditorDlg {
    Q_OBJECT
public:
    // action: the `sms` element (written on OK); moment: the element that holds it (may
    // be null); users: the users document (may be null or empty: free numbers only).
    ZoEDlgEventActionSmsCfg(QWidget* parent, XmlNode* action, XmlNode* moment, XmlDocument* users);

protected:
    void SetExtraCaptions(ZoMnemonics& mnemonics) override;
    void LoadExtras() override;
    void WriteExtras(XmlNode& sms) const override;
    bool CheckExtras() override;
    bool ExtrasChanged() const override;

private:
    void UpdateCount();

    QLabel* m_countLabel = nullptr;
    QCheckBox* m_forceBreakCheck = nullptr;
};
