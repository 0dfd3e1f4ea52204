#include "timeline/ZoTimelineChart.h"

#include "platform/calendar/ZoColourWord.h"
#include "timeline/ZoTimelineRows.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

ZoTimelineChart::ZoTimelineChart(ZoTimelineRows const* rows, QWidget* parent)
    : QWidget(parent)
    , m_rows(rows)
{
    setObjectName("timelineChart");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

int ZoTimelineChart::RowHeight() const
{
    return fontMetrics().height() + 4;
}

int ZoTimelineChart::LabelWidth() const
{
    return fontMetrics().horizontalAdvance(QStringLiteral("Wed 0000-00-00")) + 12;
}

QSize ZoTimelineChart::sizeHint() const
{
    return {LabelWidth() + 24 * fontMetrics().horizontalAdvance(QStringLiteral("00")) * 2,
            HeaderHeight() + m_rows->Days() * RowHeight() + 1};
}

QSize ZoTimelineChart::minimumSizeHint() const
{
    // Every row at its height: the scroll area scrolls rather than squeezes them.
    return {LabelWidth() + 24 * 12, HeaderHeight() + m_rows->Days() * RowHeight() + 1};
}

void ZoTimelineChart::RowsChanged()
{
    // Every row at its height at once; the scroll area widens the chart to its viewport
    // when it lays it out again.
    setMinimumHeight(minimumSizeHint().height());
    resize(width(), minimumHeight());
    updateGeometry();
    update();
}

int ZoTimelineChart::RowAt(QPoint point) const
{
    int const y = point.y() - HeaderHeight();
    if (y < 0 || point.x() < 0)
        return -1;
    int const row = y / RowHeight();
    return row < m_rows->Days() ? row : -1;
}

void ZoTimelineChart::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().base());
    int const rowHeight = RowHeight();
    int const left = LabelWidth();
    // Room on the right for half of the last hour label ("24").
    double const hourWidth = std::max(1.0, (width() - left - fontMetrics().horizontalAdvance(QStringLiteral("24"))) / 24.0);
    auto const xOf = [&](int minute) { return left + static_cast<int>(minute * hourWidth / 60.0); };
    painter.setPen(palette().color(QPalette::Text));
    for (int hour = 0; hour <= 24; hour += 3)
        painter.drawText(QRect(xOf(hour * 60) - 20, 0, 40, rowHeight), Qt::AlignCenter,
                         QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0')));
    int const first = std::max(0, (event->rect().top() - HeaderHeight()) / rowHeight);
    int const last = std::min(m_rows->Days() - 1, (event->rect().bottom() - HeaderHeight()) / rowHeight);
    QColor const grid = palette().color(QPalette::Mid);
    for (int row = first; row <= last; ++row) {
        ZoTimelineRows::Day const day = m_rows->DayAt(row);
        int const top = HeaderHeight() + row * rowHeight;
        QRect const band(xOf(0), top + 2, xOf(1440) - xOf(0), rowHeight - 4);
        if (day.date.dayOfWeek() == 1 && row > 0) {
            painter.setPen(QPen(palette().color(QPalette::Text), 1));
            painter.drawLine(0, top, width(), top);
        }
        painter.setPen(palette().color(day.date.dayOfWeek() >= 6 ? QPalette::Link : QPalette::Text));
        painter.drawText(QRect(4, top, left - 8, rowHeight), Qt::AlignVCenter | Qt::AlignLeft,
                         QLocale().toString(day.date, QStringLiteral("ddd yyyy-MM-dd")));
        if (day.state == ZoTimelineRows::State::NoProgram || day.state == ZoTimelineRows::State::Dangling)
            painter.fillRect(band, QBrush(day.state == ZoTimelineRows::State::Dangling ? QColor(200, 60, 60) : grid,
                                          Qt::BDiagPattern));
        QColor const fill = day.state == ZoTimelineRows::State::Unrestricted ? QColor(120, 190, 120)
                                                                           : ZoColorFromWord(day.color);
        for (DaySlot const& slot : day.periods) {
            QRect const period(xOf(slot.from), band.top(), std::max(1, xOf(slot.to) - xOf(slot.from)), band.height());
            painter.fillRect(period, fill);
            painter.setPen(fill.darker(160));
            painter.drawRect(period.adjusted(0, 0, -1, -1));
        }
        painter.setPen(grid);
        for (int hour = 0; hour <= 24; hour += 6)
            painter.drawLine(xOf(hour * 60), band.top(), xOf(hour * 60), band.bottom());
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

bool ZoTimelineChart::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        int const row = RowAt(help->pos());
        if (row < 0)
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), QString::fromStdWString(m_rows->Describe(m_rows->DayAt(row))), this);
        return true;
    }
    return QWidget::event(event);
}

void ZoTimelineChart::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up: emit scrollRequested(-1, 0); return;
    case Qt::Key_Down: emit scrollRequested(1, 0); return;
    case Qt::Key_PageUp: emit scrollRequested(0, -1); return;
    case Qt::Key_PageDown: emit scrollRequested(0, 1); return;
    default: QWidget::keyPressEvent(event);
    }
}

void ZoTimelineChart::wheelEvent(QWheelEvent* event)
{
    int const steps = event->angleDelta().y() / 120;
    if (steps == 0)
        return QWidget::wheelEvent(event);
    emit scrollRequested(-steps, 0);
    event->accept();
}
