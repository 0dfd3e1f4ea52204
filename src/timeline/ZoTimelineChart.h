#pragma once
#include <QWidget>

class ZoTimelineRows;

// The timeline's chart over ZoTimelineRows: one row per date, the hours of the day across,
// the allowed periods filled in the day program's colour, dates without a day program
// hatched. The rows are drawn one text line high, so that a year is a long chart in a
// scroll area. Up/Down (and the wheel) move the dates by a week, Page Up/Page Down by a
// month, through scrollRequested; hovering a row shows its day program and slots.
class ZoTimelineChart : public QWidget {
    Q_OBJECT
public:
    ZoTimelineChart(ZoTimelineRows const* rows, QWidget* parent = nullptr);

    // After the rows' span changed.
    void RowsChanged();
    // The row under a point of the widget, -1 when none.
    int RowAt(QPoint point) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // Move the dates by weeks or months (negative: back).
    void scrollRequested(int weeks, int months);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int RowHeight() const;
    int LabelWidth() const;
    int HeaderHeight() const { return RowHeight(); }

    ZoTimelineRows const* m_rows;
};
