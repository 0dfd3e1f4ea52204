#pragma once
#include <QWidget>

// The slot editor's drawn 24-hour bar: 24 columns (hours) by 4 rows (quarters of an hour),
// the hour labels 0, 6, 12, 18 and 23 over a strip in the label colour, and the selected
// quarters in the selection colour. The user drags over it to choose a range:
//   - a press inside the grid (bounds included) starts a drag at the pressed quarter; a
//     press outside stops dragging;
//   - moving while dragging inside the grid extends the range to the current quarter;
//   - the release stops dragging.
// The range always covers both the pressed and the current quarter (slot_grid::DragRange)
// and is reported with dragRangeChanged. Outside a drag the grid shows the range last set
// with SetRange (the slot editor's fields).
//
// Colours are colour words (red in the low byte).
class SlotGridCtrl : public QWidget {
    Q_OBJECT
public:
    SlotGridCtrl(unsigned labelColour, unsigned selectionColour, QWidget* parent = nullptr);

    // The range shown outside a drag, in minutes.
    void SetRange(int from, int to);
    bool IsDragging() const { return m_dragging; }
    // The grid's area in widget coordinates, and the minute under a point given in screen
    // coordinates (GetMinute).
    QRect GridArea() const;
    int GetMinute(QPoint const& screenPoint) const;
    // The centre of a quarter in widget coordinates (for tests and accessibility).
    QPoint QuarterCenter(int minute) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void dragStarted();
    void dragRangeChanged(int from, int to);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect ScreenArea() const;
    // The range drawn now: the drag's, or the one set; false when nothing is to be drawn.
    bool DrawnRange(int& from, int& to) const;
    void ReportDrag();
    void Draw(QPainter& painter) const;

    unsigned m_labelColour;
    unsigned m_selectionColour;
    bool m_dragging = false;
    int m_pressMinute = 0;
    int m_end = 0;
    int m_from = 0;
    int m_to = 0;
};
