#include "timeline/ZoDlgTimeTableCoverage.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "timeline/ZoCoverageChart.h"
#include "timeline/ZoCoverageEventsModel.h"
#include "timeline/ZoTimeTableCoverage.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QDate MondayOf(QDate date)
{
    return date.addDays(1 - date.dayOfWeek());
}

// "Mon 2026-03-02 08:00-09:00".
std::wstring HourText(QDate weekStart, int hour)
{
    return ZoFormat(L"%ls %02d:00-%02d:00",
                    QLocale().toString(weekStart.addDays(hour / 24), QStringLiteral("ddd yyyy-MM-dd")).toStdWString().c_str(),
                    hour % 24, hour % 24 + 1);
}

QPushButton* NewButton(QWidget* parent, unsigned text, char const* name)
{
    auto* button = new QPushButton(ZoText(text), parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

ZoDlgTimeTableCoverage::ZoDlgTimeTableCoverage(QWidget* parent, XmlDocument::XmlNode const* events,
                                               XmlDocument::XmlNode const* timeTablesRoot)
    : ZoDialog(parent)
    , m_events(events)
    , m_timeTablesRoot(timeTablesRoot)
    , m_tables(std::make_unique<ZoTimeTableResolution>(timeTablesRoot))
{
    setObjectName("coverageDialog");
    setWindowTitle(ZoText(64924));
    auto* weekLabel = new QLabel(ZoText(64926), this);
    m_week = new QDateEdit(MondayOf(QDate::currentDate()), this);
    m_week->setObjectName("weekEdit");
    m_week->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    m_week->setCalendarPopup(true);
    weekLabel->setBuddy(m_week);
    QPushButton* previous = NewButton(this, 64927, "previousWeekButton");
    QPushButton* next = NewButton(this, 64928, "nextWeekButton");
    auto* top = new QHBoxLayout;
    top->addWidget(weekLabel);
    top->addWidget(m_week);
    top->addWidget(previous);
    top->addWidget(next);
    top->addStretch();

    m_chart = new ZoCoverageChart(this);
    m_summary = new QLabel(this);
    m_summary->setObjectName("summaryLabel");
    m_summary->setWordWrap(true);
    m_eventsLabel = new QLabel(this);
    m_eventsLabel->setObjectName("eventsLabel");
    m_model = new ZoCoverageEventsModel(this);
    m_list = ZoNewListView(this, "eventsList", m_model, QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(true);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    m_eventsLabel->setBuddy(m_list);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* close = buttons->addButton(ZoText(64917), QDialogButtonBox::RejectRole);
    close->setObjectName("closeButton");
    close->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_chart, 3);
    layout->addWidget(m_summary);
    layout->addWidget(m_eventsLabel);
    layout->addWidget(m_list, 2);
    layout->addWidget(buttons);

    connect(previous, &QPushButton::clicked, this, [this] { SetWeek(Week().addDays(-7)); });
    connect(next, &QPushButton::clicked, this, [this] { SetWeek(Week().addDays(7)); });
    connect(m_week, &QDateEdit::dateChanged, this, [this](QDate date) { SetWeek(date); });
    connect(m_chart, &ZoCoverageChart::hourChosen, this, &ZoDlgTimeTableCoverage::UpdateList);
    resize(900, 640);
    Rebuild();
}

ZoDlgTimeTableCoverage::~ZoDlgTimeTableCoverage() = default;

void ZoDlgTimeTableCoverage::OnInitDialog()
{
    m_week->setFocus(Qt::OtherFocusReason);
}

QDate ZoDlgTimeTableCoverage::Week() const
{
    return m_coverage ? m_coverage->WeekStart() : MondayOf(m_week->date());
}

void ZoDlgTimeTableCoverage::SetWeek(QDate date)
{
    QDate const monday = MondayOf(date);
    if (m_coverage && monday == m_coverage->WeekStart() && m_week->date() == monday)
        return;
    {
        QSignalBlocker const block(m_week);
        m_week->setDate(monday);
    }
    Rebuild();
}

void ZoDlgTimeTableCoverage::Refresh(XmlDocument::XmlNode const* events)
{
    m_events = events;
    m_tables = std::make_unique<ZoTimeTableResolution>(m_timeTablesRoot);
    Rebuild();
}

void ZoDlgTimeTableCoverage::Rebuild()
{
    // The list's rows point into the events: emptied before the coverage they come from goes.
    m_model->Clear();
    m_coverage = std::make_unique<ZoTimeTableCoverage>(m_events, *m_tables, MondayOf(m_week->date()));
    m_chart->SetCoverage(m_coverage.get());
    std::wstring const peakAt = HourText(m_coverage->WeekStart(), m_coverage->PeakHour());
    m_summary->setText(QString::fromStdWString(ZoFormat(ZoLoadString(64929).c_str(), m_coverage->NotifyingCount(),
                                                        m_coverage->Peak(), peakAt.c_str())));
    UpdateList();
}

void ZoDlgTimeTableCoverage::ChooseHour(int hour)
{
    m_chart->SetCurrentHour(hour);
}

void ZoDlgTimeTableCoverage::UpdateList()
{
    int const hour = m_chart->CurrentHour();
    if (hour < 0) {
        m_model->Clear();
        m_eventsLabel->setText(ZoText(64935));
        return;
    }
    m_model->SetEvents(m_coverage->EventsAt(hour), m_timeTablesRoot);
    std::wstring const when = HourText(m_coverage->WeekStart(), hour);
    m_eventsLabel->setText(QString::fromStdWString(ZoFormat(ZoLoadString(64930).c_str(), when.c_str())));
    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0, 0));
    m_list->resizeColumnToContents(ZoCoverageEventsModel::NameColumn);
}

void ZoDlgTimeTableCoverage::OpenCurrent()
{
    QModelIndex const current = m_list->currentIndex();
    if (!current.isValid())
        return;
    std::uint32_t const position = m_model->PositionAt(current.row());
    int const row = current.row();
    // The host may replace the events while the editor runs: no row points into them then,
    // and the coverage is built again afterwards (the `events` element stays the same).
    m_model->Clear();
    emit openRequested(position);
    Refresh(m_events);
    if (row < m_model->rowCount())
        m_list->setCurrentIndex(m_model->index(row, 0));
    m_list->setFocus(Qt::OtherFocusReason);
}

bool ZoDlgTimeTableCoverage::eventFilter(QObject* watched, QEvent* event)
{
    if (ZoListOpenEvent(m_list, watched, event, [this] { OpenCurrent(); }))
        return true;
    return ZoDialog::eventFilter(watched, event);
}
