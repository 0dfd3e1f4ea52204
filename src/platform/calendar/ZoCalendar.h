#pragma once
#include "platform/calendar/ZoCalendarDates.h"
#include "platform/tools/ZoDateTime.h"
#include <QString>
#include <QWidget>
#include <array>
#include <string>

class QToolButton;
class QLabel;

// A whole year of dates, twelve month grids (four across, three down) with weekday headings
// (Monday first), on which the user paints dates with the current selection type: a click
// paints a date, a drag paints every date it passes over. Painted dates of other years are
// kept; the arrows beside the year (or Ctrl+Page Up / Page Down) show another year.
//
// Keyboard: the arrows move the focus date by a day or a week, Page Up / Page Down by a
// month, Home / End to the month's first or last day; Space paints the focus date, and a move
// with Shift held paints the date it reaches.
//
// Object names: prevYearButton, nextYearButton, yearLabel.
class ZoCalendar : public QWidget {
    Q_OBJECT
public:
    explicit ZoCalendar(QWidget* parent = nullptr);

    // Month names, index 0 (January) to 11; weekday names, index 0 (Monday) to 6 (Sunday).
    void SetMonthName(int index, QString const& text);
    void SetWeekdayName(int index, QString const& text);
    // The type that clicks and Select paint: a colour word and an id text. An empty id erases.
    void SetSelType(unsigned colour, std::wstring const& id);
    unsigned SelColour() const { return m_selColour; }
    std::wstring const& SelId() const { return m_selId; }
    // Paints the date with the current type.
    void Select(ZoDateTime const& date);
    // The id text painted on a date, empty when none.
    std::wstring GetIdDay(ZoDateTime const& date) const;
    // The earliest or the latest painted date (of any year); invalid when none is painted.
    void GetFirstSelectedDay(ZoDateTime& date) const;
    void GetLastSelectedDay(ZoDateTime& date) const;
    int GetYear() const { return m_year; }
    void SetYear(int year);
    ZoDateTime FocusDate() const { return m_focus; }
    void SetFocusDate(ZoDateTime const& date);
    ZoCalendarDates const& Dates() const { return m_dates; }
    // Replaces every painted date.
    void SetDates(ZoCalendarDates dates);

    // The date drawn at a point of the widget; invalid outside every date.
    ZoDateTime DateAt(QPoint const& point) const;
    // Where a date of the shown year is drawn (empty for another year).
    QRect DateRect(ZoDateTime const& date) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void yearChanged(int year);
    // A date was painted or erased by the user.
    void datesPainted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Metrics {
        int left = 0, top = 0;  // of the first month block
        int cellWidth = 0, cellHeight = 0;
        int gapX = 0, gapY = 0;
        int MonthWidth() const { return 7 * cellWidth; }
        int MonthHeight() const { return 8 * cellHeight; } // title, headings, six weeks
    };
    Metrics Layout() const;
    QRect MonthRect(Metrics const& m, int month) const;
    void PaintMonth(QPainter& painter, Metrics const& m, int month) const;
    void PaintByUser(ZoDateTime const& date);
    void MoveFocus(ZoDateTime const& date, bool paint);
    void UpdateYearLabel();

    std::array<QString, 12> m_monthNames;
    std::array<QString, 7> m_weekdayNames;
    ZoCalendarDates m_dates;
    unsigned m_selColour = 0xFFFFFF;
    std::wstring m_selId;
    int m_year;
    ZoDateTime m_focus;
    bool m_dragging = false;
    ZoDateTime m_lastDragged;

    QToolButton* m_prev = nullptr;
    QToolButton* m_next = nullptr;
    QLabel* m_yearLabel = nullptr;
};
