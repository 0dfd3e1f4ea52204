#include "timetables/ZoDlgTimeTableYearly.h"
#include "timeline/ZoDlgTimeline.h"
#include "platform/calendar/CDlgFastSelection.h"
#include "platform/calendar/ZoCalendar.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "timetables/CalendarPainting.h"
#include "timetables/DayProgramsModel.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "timetables/TimeTableDialogParts.h"
#include "timetables/TimeTableNameCheck.h"
#include <QBoxLayout>
#include <QDate>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTreeView>

using XmlNode = XmlDocument::XmlNode;

ZoDlgTimeTableYearly::ZoDlgTimeTableYearly(QWidget* parent, XmlNode* element, XmlNode* calendars, XmlNode const* days,
                                           XmlNode const* weeks)
    : ZoDialog(parent)
    , m_element(element)
    , m_calendars(calendars)
    , m_days(days)
    , m_weeks(weeks)
{
    setObjectName(QStringLiteral("calendarEditor"));
    m_model = new DayProgramsModel(days, false, this);
    m_name = NewTimeTableNameEdit(this);
    m_nameLabel = new QLabel(this);
    m_nameLabel->setBuddy(m_name);
    m_list = ZoNewListView(this, "dayProgramsList", m_model, QAbstractItemView::SingleSelection);
    m_list->setHeaderHidden(true);
    m_list->setIconSize(QSize(16, 12));
    m_list->setMinimumWidth(180);
    m_listLabel = new QLabel(this);
    m_listLabel->setBuddy(m_list);
    m_colourBox = new QLabel(this);
    m_colourBox->setObjectName(QStringLiteral("colourBox"));
    m_selectionLabel = new QLabel(this);
    m_selectionLabel->setObjectName(QStringLiteral("selectionLabel"));
    m_selectionLabel->setWordWrap(true);
    m_hint = new QLabel(this);
    m_hint->setWordWrap(true);
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    m_fastSelection = NewTimeTableButton(this, "fastSelectionButton");
    m_calendar = new ZoCalendar(this);
    m_calendar->setObjectName(QStringLiteral("calendar"));
    m_buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);
    ZoAddTimelineButton(m_buttons, this, m_element, m_days, m_weeks, m_calendars,
                        [this](XmlNode* calendar) { WriteCalendarDates(calendar, m_calendar->Dates(), m_days); });

    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoDlgTimeTableYearly::OnDayProgramChanged);
    connect(m_fastSelection, &QPushButton::clicked, this, &ZoDlgTimeTableYearly::OnFastSelection);
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgTimeTableYearly::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &ZoDlgTimeTableYearly::reject);
    setSizeGripEnabled(true);
    Layout();
}

ZoDlgTimeTableYearly::~ZoDlgTimeTableYearly() = default;

void ZoDlgTimeTableYearly::Layout()
{
    auto* name = new QHBoxLayout;
    name->addWidget(m_nameLabel);
    name->addWidget(m_name, 1);

    auto* chosen = new QHBoxLayout;
    chosen->addWidget(m_colourBox);
    chosen->addWidget(m_selectionLabel, 1);

    auto* left = new QVBoxLayout;
    left->addWidget(m_listLabel);
    left->addWidget(m_list, 1);
    left->addLayout(chosen);
    left->addWidget(m_fastSelection);
    left->addWidget(m_hint);

    auto* middle = new QHBoxLayout;
    middle->addLayout(left);
    middle->addWidget(m_calendar, 1);

    auto* main = new QVBoxLayout(this);
    main->addLayout(name);
    main->addLayout(middle, 1);
    main->addWidget(m_buttons);
}

void ZoDlgTimeTableYearly::OnInitDialog()
{
    std::wstring const name = m_element ? m_element->Value(L"name", L"") : std::wstring();
    setWindowTitle(ZoText(name.empty() ? 32778 : 32777));
    for (int month = 0; month < 12; ++month)
        m_calendar->SetMonthName(month, ZoText(436 + month));
    for (int day = 0; day < 7; ++day)
        m_calendar->SetWeekdayName(day, ZoText(34857 + day));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_ok, ZoText(311));
    mnemonics.Set(m_cancel, ZoText(312));
    mnemonics.Set(m_nameLabel, ZoText(355));
    mnemonics.Set(m_listLabel, ZoText(61514));
    mnemonics.Set(m_fastSelection, ZoText(61506));
    m_hint->setText(ZoText(61515));
    m_name->setText(QString::fromStdWString(name));
    m_openedName = name;

    std::vector<CalendarDayProgram> programs;
    programs.reserve(std::size_t(m_model->rowCount()));
    for (int row = 0; row < m_model->rowCount(); ++row)
        programs.push_back({m_model->NameAt(row), m_model->ColourAt(row)});
    ZoCalendarDates dates;
    ReadCalendarDates(m_element, m_days, programs, dates);
    m_openedDates = dates;
    ZoDateTime const first = dates.First();
    m_calendar->SetDates(std::move(dates));
    if (first.Valid())
        m_calendar->SetFocusDate(first);
    SetSelTypeFromList();

    resize(sizeHint().expandedTo(QSize(1000, 600)));
    m_name->setFocus();
    m_name->selectAll();
}

int ZoDlgTimeTableYearly::SelectedRow() const
{
    QModelIndexList const rows = m_list->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

void ZoDlgTimeTableYearly::SetSelTypeFromList()
{
    int const row = SelectedRow();
    if (row < 0) {
        m_colourBox->hide();
        m_selectionLabel->setText(ZoText(457));
        m_calendar->SetSelType(0xFFFFFF, std::wstring());
        return;
    }
    unsigned const colour = m_model->ColourAt(row);
    std::wstring const name = m_model->NameAt(row);
    int const side = m_selectionLabel->fontMetrics().height();
    m_colourBox->setPixmap(ColourSwatch(colour, 2 * side, side));
    m_colourBox->show();
    m_selectionLabel->setText(QString::fromStdWString(name));
    m_calendar->SetSelType(colour, name);
}

void ZoDlgTimeTableYearly::OnDayProgramChanged()
{
    SetSelTypeFromList();
}

void ZoDlgTimeTableYearly::OnFastSelection()
{
    std::vector<CDlgFastSelection::DayProgram> programs;
    for (int row = 0; row < m_model->rowCount(); ++row)
        programs.push_back({QString::fromStdWString(m_model->NameAt(row)), m_model->ColourAt(row)});
    CDlgFastSelection dialog(this, std::move(programs), SelectedRow());
    if (dialog.DoModal() != QDialog::Accepted || dialog.Row() < 0 || dialog.Row() >= m_model->rowCount())
        return;
    m_calendar->SetSelType(m_model->ColourAt(dialog.Row()), m_model->NameAt(dialog.Row()));
    for (ZoDateTime const& date : MaskedDates(m_calendar->GetYear(), dialog.MonthMask(), dialog.WeekdayMask()))
        m_calendar->Select(date);
    SetSelTypeFromList();
}

bool ZoDlgTimeTableYearly::HasChanged() const
{
    return m_name->text().toStdWString() != m_openedName || m_calendar->Dates().BySerial() != m_openedDates.BySerial();
}

void ZoDlgTimeTableYearly::OnOK()
{
    if (!m_element)
        return;
    if (!ConfirmTimeTableName(this, m_name, m_element, CalendarNameRules(m_calendars, m_days, m_weeks)))
        return;
    m_element->SetValue(L"name", m_name->text().toStdWString());
    WriteCalendarDates(m_element, m_calendar->Dates(), m_days);
    accept();
}

void ZoDlgTimeTableYearly::reject()
{
    if (HasChanged() && !ConfirmDiscardChanges(this))
        return;
    QDialog::reject();
}
