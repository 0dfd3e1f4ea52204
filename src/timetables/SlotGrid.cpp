#include "timetables/SlotGrid.h"

namespace {

// The number at the start of the text, as the C library's atoi reads it (blanks, then an
// optional sign, then digits); 0 when there is none. Stops growing past 9999.
int LeadingNumber(std::wstring_view text)
{
    std::size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || text[i] == L'\t'))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-'))
        negative = text[i++] == L'-';
    int value = 0;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i)
        value = value > 9999 ? value : value * 10 + (text[i] - L'0');
    return negative ? -value : value;
}

} // namespace

SlotFieldTime ParseSlotFieldTime(std::wstring_view text)
{
    SlotFieldTime time;
    if (text.size() < 2)
        return time;
    time.hour = LeadingNumber(text.substr(0, 2));
    if (time.hour < 24)
        time.minute = LeadingNumber(text.substr(text.size() - 2));
    return time;
}

namespace slot_grid {

QRect Area(QRect const& control)
{
    int const top = kLabelStrip + kMenuButtonHeight;
    return QRect(control.x() + kLeftInset, control.y() + top, control.width() - kLeftInset - kRightInset,
                 control.height() - top - kBottomInset);
}

int MinuteAt(QRect const& area, QPoint const& point)
{
    int const width = area.width();
    int const height = area.height();
    int x = point.x() - area.left();
    int y = point.y() - area.top();
    if (x >= width)
        x = width - 1;
    if (y >= height)
        y = height - 1;
    int const hour = static_cast<int>(x / (width / 24.0));
    int const quarter = static_cast<int>(y / (height * 0.25));
    return (4 * hour + quarter) * 15;
}

bool Contains(QRect const& area, QPoint const& point)
{
    // Bounds included: the right and bottom edges as the platform's rectangle has them.
    return point.x() >= area.left() && point.x() <= area.left() + area.width()
        && point.y() >= area.top() && point.y() <= area.top() + area.height();
}

Range DragRange(int pressMinute, int end)
{
    if (pressMinute >= end)
        return {end - 15, pressMinute + 15};
    return {pressMinute, end};
}

} // namespace slot_grid
