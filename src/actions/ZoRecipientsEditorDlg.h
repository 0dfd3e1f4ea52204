#pragma once
#include "actions/ZoActionEditorParts.h"
#include "actions/ZoRecipientsModel.h"

#include <memory>
#include <string_view>

class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QTreeView;

// What tells a mail editor from an SMS editor apart from the SMS extras: the keys it
// writes, its texts and how a free recipient is checked.
struct ZoRecipientsEditorKind {
    wchar_t const* element;      // "mail", "sms": the element a draft to check is
    wchar_t const* userContact;  // the user's contact key: "mail", "phone"
    wchar_t const* freeKey;      // the free recipients: "address", "phone"
    wchar_t const* listsKey;     // "mailLists", "phoneLists"
    wchar_t const* listKey;      // "mailList", "phoneList"
    char const* freeEditName;    // objectName of the free recipients edit ("addressEdit")
    char const* freeLabelName;   // and of its label ("addressLabel")
    char const* editorName;      // objectName of the dialog ("mailEditor")
    int messageLines;            // height of the message field
    int minimumHeight;           // of the dialog when it opens
    unsigned title;
    unsigned listsCaption;
    unsigned freeCaption;
    unsigned freeToolTip;
    unsigned noMessage;          // message: the text is empty
    unsigned noRecipient;        // message: nobody is reached
    unsigned faultyEntry;        // message (with %s): a free recipient is malformed
    ZoRecipientTexts userTexts;
    ZoRecipientTexts listTexts;
    // The first malformed entry of the free recipients, empty when all are well formed.
    ZoBasicString<wchar_t> (*firstInvalid)(std::wstring_view);
};

// The mail and SMS editors: the message and its recipients, chosen among the users of the
// users document, among its distribution lists, or typed as free entries separated by ";".
// Writes the message, the free entries, `users` and the lists only on its own OK.
//
// Controls (objectName): messageLabel, messageEdit, usersLabel, usersList (checkable users:
// name and contact; a user without one is greyed and cannot be chosen), listsLabel,
// listsList (checkable lists), the free entries' label and edit (named by the kind),
// okButton, cancelButton.
class ZoRecipientsEditorDlg : public ZoActionEditorDlg {
    Q_OBJECT
public:
    ~ZoRecipientsEditorDlg() override;

protected:
    // users: the users document (may be null or empty: free entries only).
    ZoRecipientsEditorDlg(QWidget* parent, XmlDocument::XmlNode* action, XmlDocument::XmlNode* moment,
                          XmlDocument* users, ZoRecipientsEditorKind kind);

    void OnInitDialog() override;
    bool IsValid() override;
    bool HasChanged() const override;
    void UpdateCfg() override;

    // Places the widgets; extra (may be null) goes under the message.
    void Layout(QLayout* extra);
    // Hooks of the SMS editor, called in the order the shared steps run.
    virtual void SetExtraCaptions(ZoMnemonics&) {}
    virtual void LoadExtras() {}
    virtual void WriteExtras(XmlDocument::XmlNode&) const {}
    virtual bool CheckExtras() { return true; }
    virtual bool ExtrasChanged() const { return false; }

    QPlainTextEdit* m_messageEdit = nullptr;

private:
    // Writes the controls into an element (the action on OK, a draft to check).
    void WriteTo(XmlDocument::XmlNode& element) const;

    ZoRecipientsEditorKind m_kind;
    XmlDocument* m_users;
    std::unique_ptr<ZoRecipientsModel> m_usersModel;
    std::unique_ptr<ZoRecipientsModel> m_listsModel;
    QLabel* m_messageLabel = nullptr;
    QLabel* m_usersLabel = nullptr;
    QTreeView* m_usersList = nullptr;
    QLabel* m_listsLabel = nullptr;
    QTreeView* m_listsList = nullptr;
    QLabel* m_freeLabel = nullptr;
    QLineEdit* m_freeEdit = nullptr;
};
