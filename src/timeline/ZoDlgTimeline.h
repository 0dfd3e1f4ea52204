#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <memory>
#include <string>

class QComboBox;
class QDialogButtonBox;
class QPushButton;
class QDateEdit;
class QDateTimeEdit;
class QLabel;
class QScrollArea;
class ZoTimelineChart;
class ZoTimelineRows;

// The timeline of one time table (or of an event's time-table reference): the coming weeks
// as a chart, one row per date (ZoTimelineChart over ZoTimelineRows), from a start date
// over a span of one week to one year (four weeks at first), and a date-time field that
// answers "allowed at this moment?". It reads the time tables and changes nothing.
//
// Object names: startEdit, spanCombo, monthBackButton, weekBackButton, weekForwardButton,
// monthForwardButton, timelineChart, momentEdit, answerLabel, closeButton.
class ZoDlgTimeline : public ZoDialog {
    Q_OBJECT
public:
    // timeTablesRoot: the root of the time-tables document (or the working copy the caller
    // edits); reference: a time table's id, empty for an event without a time table.
    ZoDlgTimeline(QWidget* parent, XmlDocument::XmlNode const* timeTablesRoot, std::wstring reference);
    ~ZoDlgTimeline() override;

    ZoTimelineRows const& Rows() const { return *m_rows; }

protected:
    void OnInitDialog() override;

private:
    void OnScroll(int weeks, int months);
    void OnSpanChanged();
    void UpdateChart();
    void UpdateAnswer();

    std::unique_ptr<ZoTimelineRows> m_rows;
    QDateEdit* m_start = nullptr;
    QComboBox* m_span = nullptr;
    QScrollArea* m_scroll = nullptr;
    ZoTimelineChart* m_chart = nullptr;
    QDateTimeEdit* m_moment = nullptr;
    QLabel* m_answer = nullptr;
};

// Runs the timeline of that reference modally (the editors' "Timeline..." buttons).
void ZoShowTimeline(QWidget* parent, XmlDocument::XmlNode const* timeTablesRoot, std::wstring const& reference);

// Adds "Timeline..." to a time-table editor's buttons: the timeline of the table with the
// element's id, as the time tables under the container's parent hold it (the editor's
// changes count once it ends with OK); disabled while the table is new.
QPushButton* ZoAddTimelineButton(QDialogButtonBox* buttons, QWidget* dialog, XmlDocument::XmlNode const* container,
                                 XmlDocument::XmlNode const* element);
