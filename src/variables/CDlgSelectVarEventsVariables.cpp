#include "variables/CDlgSelectVarEventsVariables.h"

#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The events pseudo-devices are named "R$EVE_" and the event's name: the title shows the
// name alone.
QString ShownDriverName(std::wstring const& name)
{
    if (name.starts_with(L"R$EVE"))
        return QString::fromStdWString(name.size() > 6 ? name.substr(6) : std::wstring());
    return QString::fromStdWString(name);
}

// The code with a mnemonic on its first letter that no earlier row took (ST, TACT, CACT,
// CDIS, CACK, CTIM: S, T, C, D, K, I), so that every box has its own key.
QString WithMnemonic(std::wstring const& code, QString& used)
{
    QString text = QString::fromStdWString(code);
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar const letter = text[i].toUpper();
        if (letter.isLetterOrNumber() && !used.contains(letter)) {
            used += letter;
            return text.insert(i, QLatin1Char('&'));
        }
    }
    return text;
}

} // namespace

CDlgSelectVarEventsVariables::CDlgSelectVarEventsVariables(QWidget* parent, ZoDriver const* driver,
                                                           std::list<ZoBasicString<wchar_t>>* result,
                                                           std::bitset<34> const& mask, int maximum)
    : ZoDialog(parent)
    , m_result(result)
    , m_choice(driver, mask, maximum)
{
    setObjectName(QStringLiteral("eventVariablesDialog"));
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(12);
    auto const& rows = m_choice.Rows();
    QString mnemonics;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        auto* check = new QCheckBox(this);
        check->setObjectName(QStringLiteral("variableCheck%1").arg(i));
        // The check box carries the code; the label the description, which also toggles
        // the box when clicked through its buddy.
        check->setText(WithMnemonic(rows[i].code, mnemonics));
        auto* label = new QLabel(QString::fromStdWString(rows[i].description), this);
        label->setObjectName(QStringLiteral("variableLabel%1").arg(i));
        label->setBuddy(check);
        grid->addWidget(check, static_cast<int>(i), 0);
        grid->addWidget(label, static_cast<int>(i), 1);
        int const row = static_cast<int>(i);
        connect(check, &QCheckBox::clicked, this, [this, row] { OnCheckVariable(row); });
        m_checks.push_back(check);
    }
    m_ok = new QPushButton(this);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    connect(m_ok, &QPushButton::clicked, this, &CDlgSelectVarEventsVariables::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto* main = new QVBoxLayout(this);
    main->addLayout(grid);
    main->addStretch(1);
    main->addLayout(buttons);
}

int CDlgSelectVarEventsVariables::DoModal()
{
    if (!IsCreated())
        return QDialog::Rejected;
    return ZoDialog::DoModal();
}

void CDlgSelectVarEventsVariables::OnInitDialog()
{
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    QString title = ZoText(196) + " - " + ZoText(34099);
    if (!m_choice.DriverName().empty())
        title += " - " + ShownDriverName(m_choice.DriverName());
    setWindowTitle(title);
    m_ok->setText(ZoText(311));
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_cancel->setText(ZoText(312));
    m_cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    CheckInitialVariables();
    // The first box that can still be changed takes the focus.
    for (QCheckBox* check : m_checks) {
        if (check->isEnabled()) {
            check->setFocus(Qt::OtherFocusReason);
            break;
        }
    }
    setMinimumWidth(420);
}

void CDlgSelectVarEventsVariables::CheckInitialVariables()
{
    if (m_result)
        m_choice.CheckInitialVariables(*m_result);
    auto const& rows = m_choice.Rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        m_checks[i]->setChecked(rows[i].checked);
        m_checks[i]->setEnabled(!rows[i].locked);
    }
}

bool CDlgSelectVarEventsVariables::CanSelect(int n)
{
    if (m_choice.CanSelect(n))
        return true;
    ShowLimitMessage();
    return false;
}

void CDlgSelectVarEventsVariables::UnSelect(int n)
{
    m_choice.UnSelect(n);
}

void CDlgSelectVarEventsVariables::OnCheckVariable(int row)
{
    if (row < 0 || row >= static_cast<int>(m_checks.size()))
        return;
    QCheckBox* check = m_checks[static_cast<std::size_t>(row)];
    if (!m_choice.SetChecked(static_cast<std::size_t>(row), check->isChecked())) {
        ShowLimitMessage();
        check->setChecked(false);
    }
}

void CDlgSelectVarEventsVariables::ShowLimitMessage()
{
    if (m_choice.Maximum() == 1) {
        ZoShowMessage(this, 32336);
        return;
    }
    ZoShowMessageText(this, 197, ZoFormatN(256, ZoLoadString(197).c_str(), m_choice.Maximum()));
}

bool CDlgSelectVarEventsVariables::IsValid()
{
    if (m_choice.IsValid())
        return true;
    ShowLimitMessage();
    return false;
}

void CDlgSelectVarEventsVariables::SelectVariables()
{
    if (m_result)
        m_choice.SelectVariables(*m_result);
}

void CDlgSelectVarEventsVariables::accept()
{
    if (!IsValid())
        return;
    SelectVariables();
    ZoDialog::accept();
}
