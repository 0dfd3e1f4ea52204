#pragma once
#include <QWidget>

class ZoTimeTableCoverage;

// The coverage of one week as a grid: a row per day, a column per hour, each cell shaded
// by the number of notifying events allowed in that hour (from pale at the week's quietest
// hour to dark at its peak) and showing the number. A click or the arrow keys choose an hour (hourChosen).
class ZoCoverageChart : public QWidget {
    Q_OBJECT
public:
    explicit ZoCoverageChart(QWidget* parent = nullptr);

    // The coverage shown (not owned; null shows an empty grid).
    void SetCoverage(ZoTimeTableCoverage const* coverage);
    int CurrentHour() const { return m_current; }
    void SetCurrentHour(int hour);
    // The hour cell under a point, -1 when none.
    int HourAt(QPoint point) const;
    QRect CellRect(int hour) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void hourChosen(int hour);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    int LabelWidth() const;
    int HeaderHeight() const;
    double CellWidth() const;
    int CellHeight() const;

    ZoTimeTableCoverage const* m_coverage = nullptr;
    int m_current = -1;
};
