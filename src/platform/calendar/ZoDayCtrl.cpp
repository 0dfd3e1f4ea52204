#include "platform/calendar/ZoDayCtrl.h"
#include "platform/calendar/ZoColourWord.h"
#include <QPainter>
#include <QPaintEvent>
#include <QStringList>
#include <algorithm>
#include <utility>

namespace {

constexpr int kMinutesPerDay = 1440;
constexpr int kSide = 4; // blank at either end, so the outer hour labels fit

} // namespace

ZoDayCtrl::ZoDayCtrl(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void ZoDayCtrl::Setup(XmlDocument::XmlNode const* day)
{
    if (!day) {
        m_hasDay = false;
        m_slots.clear();
        m_colour = 0xFFFFFF;
    } else {
        DayMinuteMap map;
        map.MarkSlotsOf(day);
        m_hasDay = true;
        m_slots = map.Slots();
        m_colour = ZoDayColourWord(day);
    }
    UpdateToolTip();
    update();
}

void ZoDayCtrl::SetSlots(std::vector<DaySlot> daySlots, unsigned colourWord)
{
    m_hasDay = true;
    m_slots = std::move(daySlots);
    m_colour = colourWord & 0xFFFFFFu;
    UpdateToolTip();
    update();
}

void ZoDayCtrl::UpdateToolTip()
{
    QStringList parts;
    for (DaySlot const& slot : m_slots)
        parts << QString::fromStdWString(SlotTimeText(slot.from)) + QStringLiteral("\u2013")
                + QString::fromStdWString(SlotTimeText(slot.to));
    setToolTip(parts.join(QStringLiteral(", ")));
}

QSize ZoDayCtrl::sizeHint() const
{
    return QSize(288, fontMetrics().height() + 20);
}

QSize ZoDayCtrl::minimumSizeHint() const
{
    return QSize(120, fontMetrics().height() + 20);
}

void ZoDayCtrl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    QPalette const& pal = palette();
    int const labelHeight = fontMetrics().height();
    QRect const bar(kSide + 6, 3, width() - 2 * (kSide + 6) - 1, height() - labelHeight - 8);
    if (bar.width() < 24 || bar.height() < 4)
        return;

    painter.fillRect(bar, isEnabled() ? pal.color(QPalette::Base) : pal.color(QPalette::Window));
    auto const xOf = [&bar](int minute) { return bar.left() + int(qint64(minute) * bar.width() / kMinutesPerDay); };

    QColor const fill = ZoColorFromWord(m_colour);
    QColor const edge = fill.lightness() > 200 ? fill.darker(150) : fill.darker(120);
    for (DaySlot const& slot : m_slots) {
        QRect const r(QPoint(xOf(slot.from), bar.top()), QPoint(std::max(xOf(slot.to) - 1, xOf(slot.from)), bar.bottom()));
        painter.fillRect(r, fill);
        painter.setPen(edge);
        painter.drawRect(r.adjusted(0, 0, -1, -1).normalized());
    }

    // Hour ticks: a short one each hour, a long one every six.
    QColor const tick = pal.color(QPalette::Mid);
    for (int hour = 1; hour < 24; ++hour) {
        int const x = xOf(hour * 60);
        painter.setPen(tick);
        int const length = hour % 6 == 0 ? bar.height() : bar.height() / 3;
        painter.drawLine(x, bar.bottom() - length + 1, x, bar.bottom());
    }
    painter.setPen(pal.color(QPalette::Dark));
    painter.drawRect(bar.adjusted(0, 0, -1, -1));

    painter.setPen(pal.color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    for (int hour = 0; hour <= 24; hour += 6) {
        QString const label = QString::number(hour);
        int const w = fontMetrics().horizontalAdvance(label);
        int const x = std::clamp(xOf(hour * 60) - w / 2, 0, width() - w);
        painter.drawText(QRect(x, bar.bottom() + 2, w, labelHeight), Qt::AlignCenter, label);
    }
}
