#include "timeline/ZoCoverageChart.h"

#include "timeline/ZoTimeTableCoverage.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

ZoCoverageChart::ZoCoverageChart(QWidget* parent) : QWidget(parent)
{
    setObjectName("coverageChart");
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ZoCoverageChart::SetCoverage(ZoTimeTableCoverage const* coverage)
{
    m_coverage = coverage;
    update();
}

void ZoCoverageChart::SetCurrentHour(int hour)
{
    if (hour < 0 || hour >= ZoTimeTableCoverage::kHours || hour == m_current)
        return;
    m_current = hour;
    update();
    emit hourChosen(hour);
}

int ZoCoverageChart::LabelWidth() const
{
    return fontMetrics().horizontalAdvance(QStringLiteral("Wed 00-00")) + 10;
}

int ZoCoverageChart::HeaderHeight() const
{
    return fontMetrics().height() + 4;
}

double ZoCoverageChart::CellWidth() const
{
    return std::max(8.0, (width() - LabelWidth() - 2) / 24.0);
}

int ZoCoverageChart::CellHeight() const
{
    return std::max(fontMetrics().height() + 8, (height() - HeaderHeight() - 2) / 7);
}

QSize ZoCoverageChart::sizeHint() const
{
    return {LabelWidth() + 24 * fontMetrics().horizontalAdvance(QStringLiteral("0000")),
            HeaderHeight() + 7 * (fontMetrics().height() + 12)};
}

QSize ZoCoverageChart::minimumSizeHint() const
{
    return {LabelWidth() + 24 * fontMetrics().horizontalAdvance(QStringLiteral("000")),
            HeaderHeight() + 7 * (fontMetrics().height() + 8)};
}

QRect ZoCoverageChart::CellRect(int hour) const
{
    int const day = hour / 24;
    int const column = hour % 24;
    int const left = LabelWidth() + static_cast<int>(column * CellWidth());
    int const right = LabelWidth() + static_cast<int>((column + 1) * CellWidth());
    return {left, HeaderHeight() + day * CellHeight(), right - left, CellHeight()};
}

int ZoCoverageChart::HourAt(QPoint point) const
{
    if (point.x() < LabelWidth() || point.y() < HeaderHeight())
        return -1;
    int const column = static_cast<int>((point.x() - LabelWidth()) / CellWidth());
    int const day = (point.y() - HeaderHeight()) / CellHeight();
    return column < 24 && day < 7 ? day * 24 + column : -1;
}

void ZoCoverageChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    QColor const text = palette().color(QPalette::Text);
    painter.setPen(text);
    for (int column = 0; column < 24; ++column) {
        QRect const cell = CellRect(column);
        painter.drawText(QRect(cell.left(), 0, cell.width(), HeaderHeight()), Qt::AlignCenter,
                         QStringLiteral("%1").arg(column, 2, 10, QLatin1Char('0')));
    }
    // Shaded from the week's quietest hour (pale) to its peak (dark), so that the hours
    // stand apart even when most events have no time table.
    int low = m_coverage ? m_coverage->Peak() : 0;
    for (int hour = 0; m_coverage && hour < ZoTimeTableCoverage::kHours; ++hour)
        low = std::min(low, m_coverage->CountAt(hour));
    int const range = m_coverage ? std::max(1, m_coverage->Peak() - low) : 1;
    for (int day = 0; day < 7; ++day) {
        QRect const first = CellRect(day * 24);
        QString const label = m_coverage ? QLocale().toString(m_coverage->WeekStart().addDays(day), QStringLiteral("ddd MM-dd"))
                                         : QString();
        painter.setPen(text);
        painter.drawText(QRect(2, first.top(), LabelWidth() - 6, first.height()), Qt::AlignVCenter | Qt::AlignLeft, label);
        for (int hour = day * 24; hour < day * 24 + 24; ++hour) {
            QRect const cell = CellRect(hour).adjusted(0, 0, -1, -1);
            int const count = m_coverage ? m_coverage->CountAt(hour) : 0;
            // From pale yellow (none) to dark red (the peak).
            double const share = count > low ? static_cast<double>(count - low) / range : 0.0;
            QColor const fill = QColor::fromHsvF(0.12 * (1 - share), 0.15 + 0.75 * share, 1.0 - 0.35 * share);
            painter.fillRect(cell, fill);
            painter.setPen(palette().color(QPalette::Mid));
            painter.drawRect(cell);
            painter.setPen(share > 0.55 ? QColor(Qt::white) : QColor(Qt::black));
            painter.drawText(cell, Qt::AlignCenter, QString::number(count));
        }
    }
    if (m_current >= 0) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), hasFocus() ? 3 : 2));
        painter.drawRect(CellRect(m_current).adjusted(1, 1, -2, -2));
    }
}

void ZoCoverageChart::mousePressEvent(QMouseEvent* event)
{
    int const hour = HourAt(event->position().toPoint());
    if (hour >= 0)
        SetCurrentHour(hour);
    setFocus(Qt::MouseFocusReason);
}

void ZoCoverageChart::keyPressEvent(QKeyEvent* event)
{
    int const current = std::max(m_current, 0);
    switch (event->key()) {
    case Qt::Key_Left: SetCurrentHour(current - 1); return;
    case Qt::Key_Right: SetCurrentHour(m_current < 0 ? 0 : current + 1); return;
    case Qt::Key_Up: SetCurrentHour(current - 24); return;
    case Qt::Key_Down: SetCurrentHour(m_current < 0 ? 0 : current + 24); return;
    case Qt::Key_Home: SetCurrentHour(current / 24 * 24); return;
    case Qt::Key_End: SetCurrentHour(current / 24 * 24 + 23); return;
    default: QWidget::keyPressEvent(event);
    }
}

bool ZoCoverageChart::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && m_coverage) {
        auto* help = static_cast<QHelpEvent*>(event);
        int const hour = HourAt(help->pos());
        if (hour < 0) {
            QToolTip::hideText();
        } else {
            QDate const date = m_coverage->WeekStart().addDays(hour / 24);
            QToolTip::showText(help->globalPos(),
                               QStringLiteral("%1 %2:00-%3:00: %4")
                                   .arg(QLocale().toString(date, QStringLiteral("ddd yyyy-MM-dd")))
                                   .arg(hour % 24, 2, 10, QLatin1Char('0'))
                                   .arg(hour % 24 + 1, 2, 10, QLatin1Char('0'))
                                   .arg(m_coverage->CountAt(hour)),
                               this);
        }
        return true;
    }
    return QWidget::event(event);
}
