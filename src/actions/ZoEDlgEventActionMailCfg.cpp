#include "actions/ZoEDlgEventActionMailCfg.h"

#include "actions/ZoRecipientAddresses.h"
#include "platform/tools/ZoTexts.h"

namespace {

ZoRecipientsEditorKind MailKind()
{
    return {L"mail",
            L"mail",
            L"address",
            L"mailLists",
            L"mailList",
            "addressEdit",
            "addressLabel",
            "mailEditor",
            8,
            470,
            63500,
            63504,
            63506,
            63523,
            34174,
            34175,
            63517,
            {ZoText(63508), ZoText(63509), ZoText(63512), ZoText(63533), ZoText(63514), ZoText(63515), ZoText(63516)},
            {ZoText(63508), ZoText(63511), ZoText(63512), ZoText(63533), ZoText(63514), ZoText(63515), ZoText(63516)},
            &ZoFirstInvalidMailAddress};
}

} // namespace

ZoEDlgEventActionMailCfg::ZoEDlgEventActionMailCfg(QWidget* parent, XmlNode* action, XmlNode* moment,
                                                   XmlDocument* users)
    : ZoRecipientsEditorDlg(parent, action, moment, users, MailKind())
{
    Layout(nullptr);
}
