#include "actions/ZoEDlgEventActionSmsCfg.h"

#include "actions/ZoRecipientAddresses.h"
#include "actions/ZoSmsLength.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>

namespace {

ZoRecipientsEditorKind SmsKind()
{
    return {L"sms",
            L"phone",
            L"phone",
            L"phoneLists",
            L"phoneList",
            "phoneEdit",
            "phoneLabel",
            "smsEditor",
            5,
            480,
            63501,
            63505,
            63507,
            63524,
            63519,
            63520,
            63518,
            {ZoText(63508), ZoText(63510), ZoText(63513), ZoText(63534), ZoText(63514), ZoText(63515), ZoText(63516)},
            {ZoText(63508), ZoText(63511), ZoText(63513), ZoText(63534), ZoText(63514), ZoText(63515), ZoText(63516)},
            &ZoFirstInvalidPhoneNumber};
}

// "165 characters, 2 messages (GSM 7-bit, 153 per message)".
QString CountText(ZoSmsLength const& length)
{
    unsigned const encodingText = length.encoding == ZoSmsEncoding::Gsm7 ? 63531 : 63532;
    std::wstring const encoding = ZoFormat(ZoLoadString(encodingText).c_str(), length.perMessage);
    std::wstring text;
    if (length.cut)
        text = ZoFormat(ZoLoadString(63530).c_str(), length.characters, encoding.c_str(), length.sentCharacters);
    else if (length.messages == 0)
        text = ZoFormat(ZoLoadString(63527).c_str(), length.characters, encoding.c_str());
    else if (length.messages == 1)
        text = ZoFormat(ZoLoadString(63528).c_str(), length.characters, encoding.c_str());
    else
        text = ZoFormat(ZoLoadString(63529).c_str(), length.characters, length.messages, encoding.c_str());
    return QString::fromStdWString(text);
}

} // namespace

ZoEDlgEventActionSmsCfg::ZoEDlgEventActionSmsCfg(QWidget* parent, XmlNode* action, XmlNode* moment,
                                                 XmlDocument* users)
    : ZoRecipientsEditorDlg(parent, action, moment, users, SmsKind())
{
    m_countLabel = new QLabel(this);
    m_countLabel->setObjectName(QStringLiteral("countLabel"));
    m_forceBreakCheck = new QCheckBox(this);
    m_forceBreakCheck->setObjectName(QStringLiteral("forceBreakCheck"));
    connect(m_messageEdit, &QPlainTextEdit::textChanged, this, &ZoEDlgEventActionSmsCfg::UpdateCount);
    connect(m_forceBreakCheck, &QCheckBox::toggled, this, &ZoEDlgEventActionSmsCfg::UpdateCount);
    auto* count = new QHBoxLayout;
    count->addWidget(m_countLabel, 1);
    count->addWidget(m_forceBreakCheck);
    Layout(count);
    // The check box follows the message with Tab, as it stands under it.
    setTabOrder(m_messageEdit, m_forceBreakCheck);
}

void ZoEDlgEventActionSmsCfg::SetExtraCaptions(ZoMnemonics& mnemonics)
{
    mnemonics.Set(m_forceBreakCheck, ZoText(63522));
    m_forceBreakCheck->setToolTip(ZoText(63525));
    m_countLabel->setToolTip(ZoText(63526));
    m_messageEdit->setToolTip(ZoText(63526));
}

void ZoEDlgEventActionSmsCfg::LoadExtras()
{
    if (m_action)
        m_forceBreakCheck->setChecked(m_action->Value(L"forceBreakMessage", L"") == L"T");
    UpdateCount();
}

// The count follows every keystroke; a text that will be cut is shown in the warning
// colour of the style.
void ZoEDlgEventActionSmsCfg::UpdateCount()
{
    ZoSmsLength const length =
        ZoMeasureSms(m_messageEdit->toPlainText().toStdWString(), m_forceBreakCheck->isChecked());
    m_countLabel->setText(CountText(length));
    QPalette palette = m_countLabel->parentWidget()->palette();
    if (length.cut)
        palette.setColor(QPalette::WindowText, QColor(0xB0, 0x30, 0x00));
    m_countLabel->setPalette(palette);
    m_countLabel->setProperty("cut", length.cut);
}

void ZoEDlgEventActionSmsCfg::WriteExtras(XmlNode& sms) const
{
    sms.SetValue(L"forceBreakMessage", m_forceBreakCheck->isChecked() ? L"T" : L"F");
}

// A text too long for one message is cut only when the user says so.
bool ZoEDlgEventActionSmsCfg::CheckExtras()
{
    ZoSmsLength const length =
        ZoMeasureSms(m_messageEdit->toPlainText().toStdWString(), m_forceBreakCheck->isChecked());
    if (length.cut
        && !ZoAskYesNoText(this, 63521, ZoFormatN(1024, ZoLoadString(63521).c_str(), length.sentCharacters))) {
        m_messageEdit->setFocus();
        return false;
    }
    return true;
}

bool ZoEDlgEventActionSmsCfg::ExtrasChanged() const
{
    return m_forceBreakCheck->isChecked() != (m_action->Value(L"forceBreakMessage", L"") == L"T");
}
