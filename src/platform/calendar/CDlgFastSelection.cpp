#include "platform/calendar/CDlgFastSelection.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

QIcon Swatch(unsigned colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.fillRect(QRect(1, 1, 14, 14), ZoColorFromWord(colour));
    painter.setPen(QColor(0x70, 0x70, 0x70));
    painter.drawRect(QRect(1, 1, 13, 13));
    return QIcon(pixmap);
}

QPushButton* NewButton(QWidget* parent, char const* objectName)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

} // namespace

CDlgFastSelection::CDlgFastSelection(QWidget* parent, std::vector<DayProgram> dayPrograms, int initialRow)
    : ZoDialog(parent)
    , m_dayPrograms(std::move(dayPrograms))
{
    setObjectName(QStringLiteral("fastSelection"));
    m_explanation = new QLabel(this);
    m_explanation->setWordWrap(true);
    m_dayCombo = new QComboBox(this);
    m_dayCombo->setObjectName(QStringLiteral("dayProgramCombo"));
    for (DayProgram const& day : m_dayPrograms)
        m_dayCombo->addItem(Swatch(day.colour), day.name);
    if (!m_dayPrograms.empty())
        m_dayCombo->setCurrentIndex(initialRow >= 0 && initialRow < int(m_dayPrograms.size()) ? initialRow : 0);
    m_dayLabel = new QLabel(this);
    m_dayLabel->setBuddy(m_dayCombo);

    m_monthsBox = new QGroupBox(this);
    m_weekdaysBox = new QGroupBox(this);
    for (int month = 0; month < 12; ++month) {
        m_months[month] = new QCheckBox(m_monthsBox);
        m_months[month]->setObjectName(QStringLiteral("monthCheck%1").arg(month));
    }
    for (int day = 0; day < 7; ++day) {
        m_weekdays[day] = new QCheckBox(m_weekdaysBox);
        m_weekdays[day]->setObjectName(QStringLiteral("weekdayCheck%1").arg(day));
    }
    m_allMonths = NewButton(m_monthsBox, "allMonthsButton");
    m_noMonths = NewButton(m_monthsBox, "noMonthsButton");
    m_allWeekdays = NewButton(m_weekdaysBox, "allWeekdaysButton");
    m_noWeekdays = NewButton(m_weekdaysBox, "noWeekdaysButton");
    m_ok = new QPushButton(this);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));

    auto const setAll = [](auto& checks, bool on) {
        for (QCheckBox* check : checks)
            check->setChecked(on);
    };
    connect(m_allMonths, &QPushButton::clicked, this, [this, setAll] { setAll(m_months, true); });
    connect(m_noMonths, &QPushButton::clicked, this, [this, setAll] { setAll(m_months, false); });
    connect(m_allWeekdays, &QPushButton::clicked, this, [this, setAll] { setAll(m_weekdays, true); });
    connect(m_noWeekdays, &QPushButton::clicked, this, [this, setAll] { setAll(m_weekdays, false); });
    for (QCheckBox* check : m_months)
        connect(check, &QCheckBox::toggled, this, &CDlgFastSelection::UpdateButtons);
    for (QCheckBox* check : m_weekdays)
        connect(check, &QCheckBox::toggled, this, &CDlgFastSelection::UpdateButtons);
    connect(m_dayCombo, &QComboBox::currentIndexChanged, this, &CDlgFastSelection::UpdateButtons);
    connect(m_ok, &QPushButton::clicked, this, &CDlgFastSelection::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    Layout();
    // Every month and every weekday at first: the user takes away what does not apply.
    SetMasks(0xFFF, 0x7F);
}

void CDlgFastSelection::Layout()
{
    auto* dayRow = new QHBoxLayout;
    dayRow->addWidget(m_dayLabel);
    dayRow->addWidget(m_dayCombo, 1);

    auto* months = new QGridLayout(m_monthsBox);
    for (int month = 0; month < 12; ++month)
        months->addWidget(m_months[month], month % 4, month / 4);
    auto* monthButtons = new QHBoxLayout;
    monthButtons->addStretch(1);
    monthButtons->addWidget(m_allMonths);
    monthButtons->addWidget(m_noMonths);
    months->addLayout(monthButtons, 4, 0, 1, 3);

    auto* weekdays = new QGridLayout(m_weekdaysBox);
    for (int day = 0; day < 7; ++day)
        weekdays->addWidget(m_weekdays[day], day % 4, day / 4);
    auto* weekdayButtons = new QHBoxLayout;
    weekdayButtons->addStretch(1);
    weekdayButtons->addWidget(m_allWeekdays);
    weekdayButtons->addWidget(m_noWeekdays);
    weekdays->addLayout(weekdayButtons, 4, 0, 1, 2);

    auto* groups = new QHBoxLayout;
    groups->addWidget(m_monthsBox, 3);
    groups->addWidget(m_weekdaysBox, 2);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);

    auto* main = new QVBoxLayout(this);
    main->addWidget(m_explanation);
    main->addLayout(dayRow);
    main->addLayout(groups, 1);
    main->addWidget(buttons);
}

void CDlgFastSelection::OnInitDialog()
{
    setWindowTitle(ZoText(61500));
    m_explanation->setText(ZoText(61507));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_ok, ZoText(311));
    mnemonics.Set(m_cancel, ZoText(312));
    mnemonics.Set(m_dayLabel, ZoText(455));
    mnemonics.Set(m_monthsBox, ZoText(61502));
    mnemonics.Set(m_weekdaysBox, ZoText(61503));
    m_allMonths->setText(ZoText(61504));
    m_noMonths->setText(ZoText(61505));
    m_allWeekdays->setText(ZoText(61504));
    m_noWeekdays->setText(ZoText(61505));
    for (int month = 0; month < 12; ++month)
        m_months[month]->setText(ZoText(436 + month));
    for (int day = 0; day < 7; ++day)
        m_weekdays[day]->setText(ZoText(448 + day));
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    m_dayCombo->setFocus();
    UpdateButtons();
}

void CDlgFastSelection::SetMasks(unsigned monthMask, unsigned weekdayMask)
{
    for (int month = 0; month < 12; ++month)
        m_months[month]->setChecked(monthMask & (1u << month));
    for (int day = 0; day < 7; ++day)
        m_weekdays[day]->setChecked(weekdayMask & (1u << day));
}

unsigned CDlgFastSelection::Mask(QCheckBox* const* checks, int count) const
{
    unsigned mask = 0;
    for (int i = 0; i < count; ++i)
        if (checks[i]->isChecked())
            mask |= 1u << i;
    return mask;
}

void CDlgFastSelection::UpdateButtons()
{
    m_ok->setEnabled(m_dayCombo->currentIndex() >= 0 && Mask(m_months.data(), 12) != 0
                     && Mask(m_weekdays.data(), 7) != 0);
}

void CDlgFastSelection::OnOK()
{
    if (!m_ok->isEnabled())
        return;
    m_row = m_dayCombo->currentIndex();
    m_monthMask = Mask(m_months.data(), 12);
    m_weekdayMask = Mask(m_weekdays.data(), 7);
    accept();
}
