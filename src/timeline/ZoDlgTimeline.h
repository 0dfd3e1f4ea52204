#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <functional>
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

// Adds "Timeline..." to a time-table editor's buttons: the timeline of the element's table
// over the three containers the editor was given (its own being the working copy it edits)
// as they are when it is clicked. `unsaved` writes what the editor holds apart from the
// element (slots, painted dates) into a copy of it, so that the timeline shows the table as
// OK would leave it. Disabled when the element has no id.
QPushButton* ZoAddTimelineButton(QDialogButtonBox* buttons, QWidget* dialog, XmlDocument::XmlNode const* element,
                                 XmlDocument::XmlNode const* days, XmlDocument::XmlNode const* weeks,
                                 XmlDocument::XmlNode const* calendars,
                                 std::function<void(XmlDocument::XmlNode*)> unsaved = {});
