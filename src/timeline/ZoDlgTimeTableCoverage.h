#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <cstdint>
#include <memory>

class QDateEdit;
class QLabel;
class QTreeView;
class ZoCoverageChart;
class ZoCoverageEventsModel;
class ZoTimeTableCoverage;
class ZoTimeTableResolution;

// Events > Time Table Coverage: for each hour of a chosen week, how many notifying events
// their time tables allow (ZoTimeTableCoverage), as a grid; choosing an hour lists those
// events. Enter or a double click on an event asks the host to open it (openRequested) and
// then builds the coverage again, as the host may have changed the events (assigning over
// the same `events` element). It changes nothing itself.
//
// Object names: weekEdit, previousWeekButton, nextWeekButton, coverageChart, summaryLabel,
// eventsLabel, eventsList, closeButton.
class ZoDlgTimeTableCoverage : public ZoDialog {
    Q_OBJECT
public:
    // events: the `events` element; timeTablesRoot: the time-tables document's root.
    ZoDlgTimeTableCoverage(QWidget* parent, XmlDocument::XmlNode const* events,
                           XmlDocument::XmlNode const* timeTablesRoot);
    ~ZoDlgTimeTableCoverage() override;

    // The week shown starts on the Monday of the date's week.
    void SetWeek(QDate date);
    QDate Week() const;
    void ChooseHour(int hour);
    ZoTimeTableCoverage const& Coverage() const { return *m_coverage; }
    ZoCoverageEventsModel const& Events() const { return *m_model; }
    // Builds the coverage again from the documents (after the events changed).
    void Refresh(XmlDocument::XmlNode const* events);

signals:
    // The event at that position among the children of `events`.
    void openRequested(std::uint32_t position);

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Rebuild();
    void UpdateList();
    void OpenCurrent();

    XmlDocument::XmlNode const* m_events;
    XmlDocument::XmlNode const* m_timeTablesRoot;
    std::unique_ptr<ZoTimeTableResolution> m_tables;
    std::unique_ptr<ZoTimeTableCoverage> m_coverage;
    ZoCoverageEventsModel* m_model = nullptr;
    QDateEdit* m_week = nullptr;
    ZoCoverageChart* m_chart = nullptr;
    QLabel* m_summary = nullptr;
    QLabel* m_eventsLabel = nullptr;
    QTreeView* m_list = nullptr;
};
