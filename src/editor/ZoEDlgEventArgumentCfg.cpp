#include "editor/ZoEDlgEventArgumentCfg.h"

#include "editor/ZoFormulaFaults.h"
#include "editor/ZoFormulaStatus.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/reports/CDlgWizzard.h"
#include "platform/reports/ZoCardFormule.h"
#include "platform/reports/ZoEditTemplateWnd.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "platform/ui/ZoWizardButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kNumeric = 0;

struct SampleFormat {
    int digits = ZoCardFormule::kDefaultDigits;
    int decimals = ZoCardFormule::kDefaultDecimals;
    bool thousands = false;
    bool padInteger = false;
    bool padDecimals = false;
};

ZoFormulaStatus Shown(ZoBasicString<wchar_t> text, ZoBasicString<wchar_t> detail = {})
{
    ZoFormulaStatus status;
    status.shown = true;
    status.text = std::move(text);
    status.detail = std::move(detail);
    return status;
}

// What the value label shows: the formula's value (every variable at its sample value) in
// the chosen format, or why there is none.
ZoFormulaStatus SampleStatus(ZoEvaluator& evaluator, std::wstring_view formula, SampleFormat const& format)
{
    if (formula.empty())
        return Shown(ZoLoadString(32449));
    ZoPrepareEditorCheck(evaluator, formula);
    if (evaluator.AnalizeExpression() != kNumeric) {
        int const code = evaluator.ErrorCode();
        return Shown(ZoLoadString(32446), code ? evaluator.ErrorMsg(code) : ZoBasicString<wchar_t>());
    }
    double value = 0;
    int type = -1;
    int const code = evaluator.Evaluate(value, type);
    if (code == kZoFormulaModule && isThereAModuleInExpression(evaluator.Expr().c_str()))
        return Shown(ZoLoadString(37540));
    // A fault leaves no value to show: its sentence takes the value's place.
    if (code != kZoFormulaOk && code != kZoFormulaMarked)
        return Shown(evaluator.ErrorMsg(code), evaluator.ErrorMsg(code));
    if (type != kNumeric)
        return Shown(ZoLoadString(32878));
    ZoFormulaStatus status;
    status.shown = true;
    ZoEditTemplateWnd::FormatDouble(status.text, value, format.digits, format.decimals, format.thousands,
                                    format.padInteger, format.padDecimals);
    status.marked = code == kZoFormulaMarked;
    if (status.marked)
        status.detail = evaluator.ErrorMsg(code);
    return status;
}

QComboBox* NewCountCombo(QWidget* parent, char const* objectName, int lowest)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QLatin1String(objectName));
    combo->addItem(ZoText(753), ZoCardFormule::kAutomatic);
    for (int count = lowest; count <= ZoCardFormule::kMaxCount; ++count)
        combo->addItem(QString::number(count), count);
    return combo;
}

void SelectCount(QComboBox* combo, int count)
{
    int const index = combo->findData(count);
    combo->setCurrentIndex(index < 0 ? 0 : index);
}

} // namespace

ZoEDlgEventArgumentCfg::ZoEDlgEventArgumentCfg(QWidget* parent, XmlDocument::XmlNode* argument)
    : ZoDialog(parent)
    , m_argument(argument)
    , m_evaluator(std::make_unique<ZoEvaluator>())
{
    setObjectName(QStringLiteral("argumentEditor"));
    BuildControls();
}

ZoEDlgEventArgumentCfg::~ZoEDlgEventArgumentCfg() = default;

void ZoEDlgEventArgumentCfg::BuildControls()
{
    m_value = new QLineEdit(this);
    m_value->setObjectName(QStringLiteral("valueEdit"));
    m_value->setMaxLength(kMaxValue);
    m_value->setToolTip(ZoText(60201));
    m_value->setPlaceholderText(ZoText(60203));
    m_value->setMinimumWidth(360);
    m_valueLabel = new QLabel(this);
    m_valueLabel->setObjectName(QStringLiteral("valueLabel"));
    m_valueLabel->setBuddy(m_value);
    m_valueLabel->setWordWrap(true);
    m_wizard = ZoNewWizardButton(this, "valueWizardButton", m_value, ZoText(60204));

    m_format = new QGroupBox(this);
    m_format->setObjectName(QStringLiteral("formatGroup"));
    m_digits = NewCountCombo(m_format, "integerDigitsCombo", 1);
    m_decimals = NewCountCombo(m_format, "decimalsCombo", 0);
    m_digitsLabel = new QLabel(m_format);
    m_digitsLabel->setObjectName(QStringLiteral("integerDigitsLabel"));
    m_digitsLabel->setBuddy(m_digits);
    m_decimalsLabel = new QLabel(m_format);
    m_decimalsLabel->setObjectName(QStringLiteral("decimalsLabel"));
    m_decimalsLabel->setBuddy(m_decimals);
    m_padInteger = new QCheckBox(m_format);
    m_padInteger->setObjectName(QStringLiteral("padIntegerCheck"));
    m_padDecimals = new QCheckBox(m_format);
    m_padDecimals->setObjectName(QStringLiteral("padDecimalsCheck"));
    m_thousands = new QCheckBox(m_format);
    m_thousands->setObjectName(QStringLiteral("thousandsCheck"));

    auto* format = new QGridLayout(m_format);
    format->setHorizontalSpacing(12);
    format->addWidget(m_digitsLabel, 0, 0);
    format->addWidget(m_digits, 0, 1);
    format->addWidget(m_padInteger, 0, 2);
    format->addWidget(m_decimalsLabel, 1, 0);
    format->addWidget(m_decimals, 1, 1);
    format->addWidget(m_padDecimals, 1, 2);
    format->addWidget(m_thousands, 2, 0, 1, 3);
    format->setColumnStretch(3, 1);

    QDialogButtonBox* buttons = ZoNewDialogButtons(this, m_ok, m_cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_valueLabel);
    layout->addLayout(ZoFieldWithButton(m_value, m_wizard));
    layout->addSpacing(6);
    layout->addWidget(m_format);
    layout->addStretch(1);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetMinimumSize);

    connect(m_wizard, &QToolButton::clicked, this, &ZoEDlgEventArgumentCfg::OnWizzard);
    connect(m_value, &QLineEdit::textChanged, this, &ZoEDlgEventArgumentCfg::OnChangeValue);
    for (QComboBox* combo : {m_digits, m_decimals})
        connect(combo, &QComboBox::currentIndexChanged, this, &ZoEDlgEventArgumentCfg::OnChangeFormat);
    for (QCheckBox* check : {m_padInteger, m_padDecimals, m_thousands})
        connect(check, &QCheckBox::toggled, this, &ZoEDlgEventArgumentCfg::OnChangeValue);
}

void ZoEDlgEventArgumentCfg::OnInitDialog()
{
    bool const empty = !m_argument || m_argument->Value(L"value", L"").empty();
    setWindowTitle(ZoText(empty ? 32809 : 32810));
    ZoMnemonics keys;
    keys.Set(m_valueLabel, ZoText(32433));
    m_valueLabel->setProperty("caption", m_valueLabel->text());
    m_format->setTitle(ZoText(32432));
    keys.Set(m_digitsLabel, ZoText(32736));
    keys.Set(m_decimalsLabel, ZoText(736));
    keys.Set(m_padInteger, ZoText(32737));
    keys.Set(m_padDecimals, ZoText(32738));
    keys.Set(m_thousands, ZoText(32475));
    keys.Set(m_ok, ZoText(311));
    keys.Set(m_cancel, ZoText(312));
    LoadFields();
    m_value->setFocus(Qt::OtherFocusReason);
    m_value->selectAll();
}

void ZoEDlgEventArgumentCfg::LoadFields()
{
    int digits = ZoCardFormule::kDefaultDigits;
    int decimals = ZoCardFormule::kDefaultDecimals;
    bool padInteger = false;
    bool padDecimals = false;
    if (m_argument) {
        m_value->setText(QString::fromStdWString(m_argument->Value(L"value", L"")));
        m_thousands->setChecked(m_argument->Value(L"thousandSeparator", L"") == L"T");
        ZoCardFormule::ParseFormat(m_argument->Value(L"format", L""), digits, decimals, padInteger, padDecimals);
    }
    SelectCount(m_digits, digits);
    SelectCount(m_decimals, decimals);
    m_padInteger->setChecked(padInteger);
    m_padDecimals->setChecked(padDecimals);
    OnChangeFormat();
}

int ZoEDlgEventArgumentCfg::Digits() const
{
    return m_digits->currentData().toInt();
}

int ZoEDlgEventArgumentCfg::Decimals() const
{
    return m_decimals->currentData().toInt();
}

// A padding means something only for a fixed count.
void ZoEDlgEventArgumentCfg::OnChangeFormat()
{
    m_padInteger->setEnabled(Digits() != ZoCardFormule::kAutomatic);
    m_padDecimals->setEnabled(Decimals() != ZoCardFormule::kAutomatic);
    OnChangeValue();
}

void ZoEDlgEventArgumentCfg::OnChangeValue()
{
    SampleFormat format;
    format.digits = Digits();
    format.decimals = Decimals();
    format.thousands = m_thousands->isChecked();
    format.padInteger = m_padInteger->isEnabled() && m_padInteger->isChecked();
    format.padDecimals = m_padDecimals->isEnabled() && m_padDecimals->isChecked();
    ZoFormulaStatus const status = SampleStatus(*m_evaluator, m_value->text().toStdWString(), format);
    std::wstring const caption = m_valueLabel->property("caption").toString().toStdWString();
    m_valueLabel->setText(QString::fromStdWString(ZoLabelWithStatus(caption, status)));
    m_valueLabel->setToolTip(QString::fromStdWString(status.detail));
}

void ZoEDlgEventArgumentCfg::OnWizzard()
{
    CDlgWizzard wizard(this, std::bitset<34>(4), false, 13);
    wizard.SetExpected(ZoWizardStatus::Expect::Numeric);
    ZoRunWizardOnField(wizard, m_value);
}

void ZoEDlgEventArgumentCfg::accept()
{
    if (!m_argument) {
        reject();
        return;
    }
    if (!IsValid())
        return;
    UpdateCfg();
    ZoDialog::accept();
}

// An empty value is refused; a faulty one may be kept after a question (the event's own
// check on OK asks again).
bool ZoEDlgEventArgumentCfg::IsValid()
{
    std::wstring const value = m_value->text().left(kMaxValue).toStdWString();
    if (value.empty()) {
        ZoShowMessage(this, 32812);
        m_value->setFocus(Qt::OtherFocusReason);
        return false;
    }
    auto const fault = ZoFormulaFault(*m_evaluator, value, ZoFormulaRole::Argument);
    if (!fault)
        return true;
    if (ZoAskYesNoText(this, 32811, ZoFormatN(1024, ZoLoadString(32811).c_str(), fault->c_str())))
        return true;
    m_value->setFocus(Qt::OtherFocusReason);
    m_value->selectAll();
    return false;
}

void ZoEDlgEventArgumentCfg::UpdateCfg()
{
    m_argument->SetValue(L"value", m_value->text().left(kMaxValue).toStdWString());
    m_argument->SetValue(L"format", ZoCardFormule::WriteFormat(Digits(), Decimals(), m_padInteger->isChecked(),
                                                               m_padDecimals->isChecked()));
    m_argument->SetValue(L"thousandSeparator", m_thousands->isChecked() ? L"T" : L"F");
}
