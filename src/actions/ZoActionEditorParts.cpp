#include "actions/ZoActionEditorParts.h"

#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

QToolButton* ZoNewIconButton(QWidget* parent, char const* objectName, QIcon const& icon, QString const& toolTip,
                             ZoMnemonics& mnemonics)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QLatin1String(objectName));
    button->setIcon(icon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    if (QChar const letter = ZoMnemonics::ShownLetter(mnemonics.Apply(toolTip)); !letter.isNull()) {
        QKeySequence const key(QStringLiteral("Alt+") + letter.toUpper());
        button->setShortcut(key);
        button->setToolTip(toolTip + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) + QLatin1Char(')'));
    } else {
        button->setToolTip(toolTip);
    }
    button->setAccessibleName(toolTip);
    return button;
}

QLabel* ZoNewBuddyLabel(QWidget* parent, char const* objectName, QWidget* buddy)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(objectName));
    label->setBuddy(buddy);
    return label;
}

QLineEdit* ZoNewActionEdit(QWidget* parent, char const* objectName, int maxLength)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(objectName));
    edit->setMaxLength(maxLength);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 56);
    return edit;
}

void ZoFocusField(QLineEdit* field)
{
    field->setFocus(Qt::OtherFocusReason);
    field->selectAll();
}

ZoActionEditorDlg::ZoActionEditorDlg(QWidget* parent, XmlDocument::XmlNode* action, XmlDocument::XmlNode* moment)
    : ZoDialog(parent)
    , m_action(action)
    , m_moment(moment)
{
}

QDialogButtonBox* ZoActionEditorDlg::NewButtons()
{
    return ZoNewDialogButtons(this, m_okButton, m_cancelButton);
}

void ZoActionEditorDlg::SetButtonCaptions(ZoMnemonics& mnemonics)
{
    mnemonics.Set(m_okButton, ZoText(m_skipCheck ? 34893 : 311));
    mnemonics.Set(m_cancelButton, ZoText(312));
}

void ZoActionEditorDlg::PlaceFields(QLayout* fields, QDialogButtonBox* buttons)
{
    auto* main = new QVBoxLayout(this);
    main->addLayout(fields);
    main->addStretch(1);
    main->addSpacing(8);
    main->addWidget(buttons);
    adjustSize();
    setMaximumHeight(sizeHint().height());
}

QString ZoActionEditorDlg::Stored(wchar_t const* key) const
{
    return QString::fromStdWString(m_action->Value(key, L""));
}

void ZoActionEditorDlg::accept()
{
    if (!IsValid())
        return;
    switch (ZoEditorEndOf(HasChanged(), m_keep)) {
    case ZoEditorEnd::Write:
        UpdateCfg();
        ZoDialog::accept();
        break;
    case ZoEditorEnd::KeepOk: ZoDialog::accept(); break;
    case ZoEditorEnd::Cancel: ZoDialog::reject(); break;
    }
}
