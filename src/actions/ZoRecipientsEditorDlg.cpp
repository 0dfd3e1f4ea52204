#include "actions/ZoRecipientsEditorDlg.h"

#include "actions/ZoRecipientAddresses.h"
#include "actions/ZoRecipientsViews.h"
#include "editor/ZoActionChecks.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>
#include <QVBoxLayout>

ZoRecipientsEditorDlg::ZoRecipientsEditorDlg(QWidget* parent, XmlDocument::XmlNode* action,
                                             XmlDocument::XmlNode* moment, XmlDocument* users,
                                             ZoRecipientsEditorKind kind)
    : ZoActionEditorDlg(parent, action, moment)
    , m_kind(std::move(kind))
    , m_users(users)
    , m_usersModel(std::make_unique<ZoRecipientsModel>(m_kind.userTexts))
    , m_listsModel(std::make_unique<ZoRecipientsModel>(m_kind.listTexts))
{
    setObjectName(QLatin1String(m_kind.editorName));
    m_messageEdit = ZoNewMessageEdit(this, m_kind.messageLines);
    m_messageLabel = ZoNewBuddyLabel(this, "messageLabel", m_messageEdit);
    m_usersList = ZoNewRecipientsView(this, "usersList", m_usersModel.get());
    m_usersLabel = ZoNewBuddyLabel(this, "usersLabel", m_usersList);
    m_listsList = ZoNewRecipientsView(this, "listsList", m_listsModel.get());
    m_listsLabel = ZoNewBuddyLabel(this, "listsLabel", m_listsList);
    m_freeEdit = new QLineEdit(this);
    m_freeEdit->setObjectName(QLatin1String(m_kind.freeEditName));
    m_freeLabel = ZoNewBuddyLabel(this, m_kind.freeLabelName, m_freeEdit);
}

ZoRecipientsEditorDlg::~ZoRecipientsEditorDlg()
{
    // The views go before the models they show.
    delete m_usersList;
    delete m_listsList;
}

void ZoRecipientsEditorDlg::Layout(QLayout* extra)
{
    auto* grid = new QGridLayout;
    int row = 0;
    grid->addWidget(m_messageLabel, row++, 0, 1, 2);
    grid->addWidget(m_messageEdit, row++, 0, 1, 2);
    if (extra)
        grid->addLayout(extra, row++, 0, 1, 2);
    grid->addWidget(m_usersLabel, row, 0);
    grid->addWidget(m_listsLabel, row++, 1);
    grid->addWidget(m_usersList, row, 0);
    grid->addWidget(m_listsList, row, 1);
    grid->setRowStretch(row++, 1);
    grid->addWidget(m_freeLabel, row++, 0, 1, 2);
    grid->addWidget(m_freeEdit, row, 0, 1, 2);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);

    QDialogButtonBox* buttons = NewButtons();
    auto* main = new QVBoxLayout(this);
    main->addLayout(grid, 1);
    main->addWidget(buttons);
}

void ZoRecipientsEditorDlg::OnInitDialog()
{
    setWindowTitle(ZoText(m_kind.title));
    ZoMnemonics mnemonics;
    SetButtonCaptions(mnemonics);
    mnemonics.Set(m_messageLabel, ZoText(63502));
    SetExtraCaptions(mnemonics);
    mnemonics.Set(m_usersLabel, ZoText(63503));
    mnemonics.Set(m_listsLabel, ZoText(m_kind.listsCaption));
    mnemonics.Set(m_freeLabel, ZoText(m_kind.freeCaption));
    m_freeEdit->setToolTip(ZoText(m_kind.freeToolTip));
    m_usersList->setToolTip(ZoText(63535));
    m_listsList->setToolTip(ZoText(63535));

    XmlDocument::XmlNode const* root = m_users ? m_users->Root() : nullptr;
    m_usersModel->LoadUsers(root, m_kind.userContact);
    m_listsModel->LoadLists(root, m_kind.listsKey);
    if (m_action) {
        m_messageEdit->setPlainText(QString::fromStdWString(m_action->Value(L"message", L"")));
        m_freeEdit->setText(QString::fromStdWString(m_action->Value(m_kind.freeKey, L"")));
        m_usersModel->CheckIds(m_action->Child(L"users"));
        m_listsModel->CheckIds(m_action->Child(m_kind.listsKey));
    }
    LoadExtras();
    m_usersList->resizeColumnToContents(0);
    m_listsList->resizeColumnToContents(0);
    resize(sizeHint().expandedTo(QSize(680, m_kind.minimumHeight)));
    ZoStartMessage(m_messageEdit);
}

void ZoRecipientsEditorDlg::WriteTo(XmlDocument::XmlNode& element) const
{
    element.SetValue(L"message", m_messageEdit->toPlainText().toStdWString());
    std::wstring const entries = ZoJoinRecipients(ZoSplitRecipients(m_freeEdit->text().toStdWString()));
    if (entries.empty())
        element.EraseTag(m_kind.freeKey);
    else
        element.SetValue(m_kind.freeKey, entries);
    ZoWriteRecipientIds(element, L"users", L"user", m_usersModel->CheckedIds());
    ZoWriteRecipientIds(element, m_kind.listsKey, m_kind.listKey, m_listsModel->CheckedIds());
    WriteExtras(element);
}

// The message must say something, it must reach someone, and every free entry must look
// like one. The recipients rule is the one the event's own checks apply.
bool ZoRecipientsEditorDlg::IsValid()
{
    if (m_skipCheck)
        return true;
    if (m_messageEdit->toPlainText().trimmed().isEmpty()) {
        ZoShowMessage(this, m_kind.noMessage);
        m_messageEdit->setFocus();
        m_messageEdit->selectAll();
        return false;
    }
    XmlDocument draft;
    draft.Create(m_kind.element);
    WriteTo(*draft.Root());
    if (!ZoActionHasRecipient(*draft.Root(), m_kind.freeKey, m_kind.listsKey)) {
        ZoShowMessage(this, m_kind.noRecipient);
        if (m_usersModel->HasAvailableRows())
            ZoFocusRecipients(m_usersList, *m_usersModel);
        else if (m_listsModel->HasAvailableRows())
            ZoFocusRecipients(m_listsList, *m_listsModel);
        else
            m_freeEdit->setFocus();
        return false;
    }
    ZoBasicString<wchar_t> const faulty = m_kind.firstInvalid(m_freeEdit->text().toStdWString());
    if (!faulty.empty()) {
        ZoShowMessageText(this, m_kind.faultyEntry,
                          ZoFormatN(1024, ZoLoadString(m_kind.faultyEntry).c_str(), faulty.c_str()));
        ZoSelectEntry(m_freeEdit, faulty);
        return false;
    }
    return CheckExtras();
}

// Free entries count as unchanged when they name the same entries in the same order,
// recipients when the same users and lists are chosen, whatever their stored order. With
// the skip-check flag OK always writes.
bool ZoRecipientsEditorDlg::HasChanged() const
{
    if (m_skipCheck || !m_action)
        return true;
    if (m_messageEdit->toPlainText().toStdWString() != m_action->Value(L"message", L"") || ExtrasChanged())
        return true;
    if (ZoSplitRecipients(m_freeEdit->text().toStdWString()) != ZoSplitRecipients(m_action->Value(m_kind.freeKey, L"")))
        return true;
    return !ZoSameRecipientIds(m_usersModel->CheckedIds(), ZoRecipientIds(m_action->Child(L"users")))
        || !ZoSameRecipientIds(m_listsModel->CheckedIds(), ZoRecipientIds(m_action->Child(m_kind.listsKey)));
}

void ZoRecipientsEditorDlg::UpdateCfg()
{
    if (m_action)
        WriteTo(*m_action);
}
