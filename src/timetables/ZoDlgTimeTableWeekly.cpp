#include "timetables/ZoDlgTimeTableWeekly.h"
#include "timeline/ZoDlgTimeline.h"
#include "platform/calendar/ZoDayCtrl.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "timetables/DayProgramsModel.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "timetables/TimeTableDialogParts.h"
#include "timetables/TimeTableNameCheck.h"
#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using XmlNode = XmlDocument::XmlNode;

ZoDlgTimeTableWeekly::ZoDlgTimeTableWeekly(QWidget* parent, XmlNode* element, XmlNode* weeks, XmlNode const* days,
                                           XmlNode const* calendars)
    : ZoDialog(parent)
    , m_element(element)
    , m_weeks(weeks)
    , m_days(days)
    , m_calendars(calendars)
{
    setObjectName(QStringLiteral("weekEditor"));
    m_model = new DayProgramsModel(days, true, this);
    m_name = NewTimeTableNameEdit(this);
    m_nameLabel = new QLabel(this);
    m_nameLabel->setBuddy(m_name);
    for (int day = 0; day < 7; ++day) {
        m_choosers[day] = new QComboBox(this);
        m_choosers[day]->setObjectName(QStringLiteral("dayCombo%1").arg(day));
        m_choosers[day]->setModel(m_model);
        m_choosers[day]->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        m_choosers[day]->setMinimumContentsLength(18);
        m_dayLabels[day] = new QLabel(this);
        m_dayLabels[day]->setBuddy(m_choosers[day]);
        m_programLabels[day] = new QLabel(this);
        m_programLabels[day]->setBuddy(m_choosers[day]);
        m_pictures[day] = new ZoDayCtrl(this);
        m_pictures[day]->setObjectName(QStringLiteral("dayPicture%1").arg(day));
        m_pictures[day]->setMinimumWidth(260);
    }
    m_buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);
    ZoAddTimelineButton(m_buttons, this, m_element, m_days, m_weeks, m_calendars);
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgTimeTableWeekly::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &ZoDlgTimeTableWeekly::reject);
    setSizeGripEnabled(true);
    Layout();
}

ZoDlgTimeTableWeekly::~ZoDlgTimeTableWeekly() = default;

void ZoDlgTimeTableWeekly::Layout()
{
    auto* name = new QHBoxLayout;
    name->addWidget(m_nameLabel);
    name->addWidget(m_name, 1);

    auto* days = new QGridLayout;
    days->setHorizontalSpacing(10);
    for (int day = 0; day < 7; ++day) {
        days->addWidget(m_dayLabels[day], day, 0);
        days->addWidget(m_programLabels[day], day, 1);
        days->addWidget(m_choosers[day], day, 2);
        days->addWidget(m_pictures[day], day, 3);
    }
    days->setColumnStretch(3, 1);

    auto* main = new QVBoxLayout(this);
    main->addLayout(name);
    main->addSpacing(8);
    main->addLayout(days);
    main->addStretch(1);
    main->addWidget(m_buttons);
}

void ZoDlgTimeTableWeekly::OnInitDialog()
{
    std::wstring const name = m_element ? m_element->Value(L"name", L"") : std::wstring();
    setWindowTitle(ZoText(name.empty() ? 32778 : 32777));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_ok, ZoText(428));
    mnemonics.Set(m_cancel, ZoText(429));
    mnemonics.Set(m_nameLabel, ZoText(355));
    QFont bold = font();
    bold.setBold(true);
    for (int day = 0; day < 7; ++day) {
        mnemonics.Set(m_dayLabels[day], ZoText(448 + day));
        m_dayLabels[day]->setFont(bold);
        m_programLabels[day]->setText(ZoText(455));
    }
    m_name->setText(QString::fromStdWString(name));
    m_openedName = name;

    for (int day = 0; day < 7; ++day) {
        QComboBox* chooser = m_choosers[day];
        chooser->setCurrentIndex(0);
        if (m_element) {
            int const row = m_model->RowOfId(m_element->Value(ZoFormat(L"day%d", day + 1).c_str(), L""));
            if (row > 0)
                chooser->setCurrentIndex(row);
        }
        m_openedRows[day] = chooser->currentIndex();
        connect(chooser, &QComboBox::currentIndexChanged, this, [this, day] { ApplyDay(day); });
        ApplyDay(day);
    }
    resize(sizeHint().expandedTo(QSize(720, 0)));
    m_name->setFocus();
    m_name->selectAll();
}

void ZoDlgTimeTableWeekly::ApplyDay(int day)
{
    XmlNode const* program = m_model->DayAt(m_choosers[day]->currentIndex());
    m_pictures[day]->Setup(program);
    if (!m_element)
        return;
    std::wstring const key = ZoFormat(L"day%d", day + 1);
    if (program)
        m_element->SetValue(key.c_str(), program->Value(L"id", L""));
    else
        m_element->EraseTag(key.c_str());
}

bool ZoDlgTimeTableWeekly::HasChanged() const
{
    if (m_name->text().toStdWString() != m_openedName)
        return true;
    for (int day = 0; day < 7; ++day)
        if (m_choosers[day]->currentIndex() != m_openedRows[day])
            return true;
    return false;
}

void ZoDlgTimeTableWeekly::OnOK()
{
    if (!m_element)
        return;
    if (!ConfirmTimeTableName(this, m_name, m_element, WeekNameRules(m_weeks, m_days, m_calendars)))
        return;
    m_element->SetValue(L"name", m_name->text().toStdWString());
    accept();
}

void ZoDlgTimeTableWeekly::reject()
{
    if (HasChanged() && !ConfirmDiscardChanges(this))
        return;
    QDialog::reject();
}
