#include "timetables/SlotGridCtrl.h"
#include "platform/calendar/ZoColourWord.h"
#include "timetables/SlotGrid.h"
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>

using namespace slot_grid;

SlotGridCtrl::SlotGridCtrl(unsigned labelColour, unsigned selectionColour, QWidget* parent)
    : QWidget(parent)
    , m_labelColour(labelColour & 0xFFFFFFu)
    , m_selectionColour(selectionColour & 0xFFFFFFu)
{
    setObjectName(QStringLiteral("slotGrid"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::CrossCursor);
}

QSize SlotGridCtrl::sizeHint() const
{
    return QSize(kLeftInset + kRightInset + 24 * 24, kLabelStrip + kMenuButtonHeight + kBottomInset + 4 * 16);
}

QSize SlotGridCtrl::minimumSizeHint() const
{
    return QSize(kLeftInset + kRightInset + 24 * 12, kLabelStrip + kMenuButtonHeight + kBottomInset + 4 * 12);
}

void SlotGridCtrl::SetRange(int from, int to)
{
    m_from = from;
    m_to = to;
    if (!m_dragging)
        update();
}

QRect SlotGridCtrl::GridArea() const
{
    return Area(rect());
}

QRect SlotGridCtrl::ScreenArea() const
{
    return Area(QRect(mapToGlobal(QPoint(0, 0)), size()));
}

int SlotGridCtrl::GetMinute(QPoint const& screenPoint) const
{
    return MinuteAt(ScreenArea(), screenPoint);
}

QPoint SlotGridCtrl::QuarterCenter(int minute) const
{
    QRect const area = GridArea();
    int const hour = minute / 60;
    int const quarter = (minute % 60) / 15;
    double const cellWidth = area.width() / 24.0;
    double const cellHeight = area.height() / 4.0;
    return QPoint(area.left() + int((hour + 0.5) * cellWidth), area.top() + int((quarter + 0.5) * cellHeight));
}

void SlotGridCtrl::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    QPoint const screen = event->globalPosition().toPoint();
    if (!m_dragging && Contains(ScreenArea(), screen)) {
        m_dragging = true;
        m_pressMinute = GetMinute(screen);
        m_end = m_pressMinute + 15;
        emit dragStarted();
        ReportDrag();
        update();
    } else {
        m_dragging = false;
    }
}

void SlotGridCtrl::mouseMoveEvent(QMouseEvent* event)
{
    QPoint const screen = event->globalPosition().toPoint();
    if (!m_dragging || !Contains(ScreenArea(), screen))
        return;
    int const end = GetMinute(screen) + 15;
    if (end == m_end)
        return;
    m_end = end;
    ReportDrag();
    update();
}

void SlotGridCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_dragging) {
        m_dragging = false;
        update();
    }
}

void SlotGridCtrl::ReportDrag()
{
    Range const range = DragRange(m_pressMinute, m_end);
    if (range.from > 1440 || range.to > 1440)
        return;
    m_from = range.from;
    m_to = range.to;
    emit dragRangeChanged(range.from, range.to);
}

bool SlotGridCtrl::DrawnRange(int& from, int& to) const
{
    if (m_dragging) {
        Range const range = DragRange(m_pressMinute, m_end);
        from = range.from;
        to = range.to;
    } else {
        from = m_from;
        to = m_to;
    }
    return from <= 1440 && to <= 1440;
}

void SlotGridCtrl::paintEvent(QPaintEvent*)
{
    // Drawn off screen first and copied in one step, so a drag never flickers.
    QPixmap picture(size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    {
        QPainter offscreen(&picture);
        Draw(offscreen);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture);
}

void SlotGridCtrl::Draw(QPainter& painter) const
{
    QPalette const& pal = palette();
    painter.fillRect(rect(), pal.color(QPalette::Window));
    // The viewport: the control less 6 at the left, the right and the bottom.
    QRect const viewport = rect().adjusted(kViewportInset, 0, -kViewportInset, -kViewportInset);
    painter.fillRect(viewport, pal.color(QPalette::Base));
    painter.setPen(pal.color(QPalette::Mid));
    painter.drawRect(viewport.adjusted(0, 0, -1, -1));

    QRect const area = GridArea();
    if (area.width() < 24 || area.height() < 4)
        return;
    auto const xOf = [&area](int hour) { return area.left() + int(hour * area.width() / 24.0); };
    auto const yOf = [&area](int quarter) { return area.top() + int(quarter * area.height() / 4.0); };

    // The label strip, just above the grid.
    QFont labelFont(QStringLiteral("Arial"));
    labelFont.setPixelSize(12);
    labelFont.setWeight(QFont::Normal);
    int const stripHeight = QFontMetrics(labelFont).height() + 2;
    QRect const strip(area.left(), area.top() - stripHeight - 2, area.width() + 1, stripHeight);
    painter.fillRect(strip, ZoColorFromWord(m_labelColour));
    painter.setFont(labelFont);
    painter.setPen(Qt::black);
    painter.setBackgroundMode(Qt::TransparentMode);
    for (int hour : {0, 6, 12, 18, 23})
        painter.drawText(QRect(xOf(hour), strip.top(), xOf(hour + 1) - xOf(hour), strip.height()), Qt::AlignCenter,
                         QString::number(hour));

    int from = 0, to = 0;
    if (DrawnRange(from, to)) {
        QColor const selection = ZoColorFromWord(m_selectionColour);
        for (int quarter = 0; quarter < 96; ++quarter) {
            int const start = quarter * 15;
            if (start >= to || start + 15 <= from)
                continue;
            int const hour = quarter / 4;
            int const row = quarter % 4;
            painter.fillRect(QRect(QPoint(xOf(hour), yOf(row)), QPoint(xOf(hour + 1), yOf(row + 1))), selection);
        }
    }

    QPen const grey(QColor(0x80, 0x80, 0x80));
    QPen const black(Qt::black);
    painter.setPen(grey);
    for (int row = 1; row < 4; ++row)
        painter.drawLine(area.left(), yOf(row), area.left() + area.width(), yOf(row));
    for (int hour = 1; hour < 24; ++hour) {
        painter.setPen(hour % 6 == 0 ? black : grey);
        painter.drawLine(xOf(hour), area.top(), xOf(hour), area.top() + area.height());
    }
    painter.setPen(black);
    painter.drawRect(QRect(area.left(), area.top(), area.width(), area.height()));
}
