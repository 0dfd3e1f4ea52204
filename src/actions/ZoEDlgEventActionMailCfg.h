#pragma once
#include "actions/ZoRecipientsEditorDlg.h"

using XmlNode = XmlDocument::XmlNode;

// Editor of a `mail` action: the message and its recipients, chosen among the users of
// the users document, among its mailing lists, or typed as free addresses. Writes
// `message`, `address`, `users` and `mailLists` only on its own OK (layout in
// docs/actions.md).
//
// Controls (objectName): messageLabel, messageEdit, usersLabel, usersList (checkable users:
// name and mail address; a user without an address is greyed and cannot be chosen),
// listsLabel, listsList (checkable mailing lists: name and members), addressLabel,
// addressEdit (free addresses separated by ";"), okButton, cancelButton.
class ZoEDlgEventActionMailCfg : public ZoRecipientsEditorDlg {
    Q_OBJECT
public:
    // action: the `mail` element (written on OK); moment: the element that holds it (may
    // be null); users: the users document (may be null or empty: free addresses only).
    ZoEDlgEventActionMailCfg(QWidget* parent, XmlNode* action, XmlNode* moment, XmlDocument* users);
};
