#pragma once
#include <QPoint>
#include <QRect>
#include <string_view>

// The slot editor's rules, apart from its widgets.

// Hour and minute of a slot field as the slot editor opens it: a text shorter than two
// characters is 00:00; otherwise the hour is the number in the first two characters and,
// when it is below 24, the minute the number in the last two; an hour of 24 or more has
// minute 0. A "number" is read as the C library reads one (leading digits, else 0).
struct SlotFieldTime {
    int hour = 0;
    int minute = 0;
};
SlotFieldTime ParseSlotFieldTime(std::wstring_view text);

// The drawn 24 x 4 grid: one column per hour, one row per quarter of an hour.
namespace slot_grid {

inline constexpr int kLeftInset = 8;
inline constexpr int kRightInset = 9;
inline constexpr int kBottomInset = 9;
inline constexpr int kLabelStrip = 12;   // above the grid, plus the menu-button height
inline constexpr int kMenuButtonHeight = 19; // the platform's menu-button height at 96 dpi
inline constexpr int kViewportInset = 6; // the drawing's viewport: less 6 left, right, bottom

// The grid's area inside the control's rectangle (both in the same coordinates).
QRect Area(QRect const& control);
// The minute of the quarter under the point (GetMinute): x' = x - left, y' = y - top, each
// clamped to width - 1 and height - 1 at the high end only; hour = x' / (width / 24) and
// quarter = y' / (height / 4), both in double precision and truncated toward zero; the
// result is (4 * hour + quarter) * 15.
int MinuteAt(QRect const& area, QPoint const& point);
// Inside the area, bounds included.
bool Contains(QRect const& area, QPoint const& point);

// The range a drag covers: from the press minute to end, or when the press minute is at or
// after end, from end - 15 to press + 15, so that both the pressed and the current
// quarter are always covered.
struct Range {
    int from = 0;
    int to = 0;
};
Range DragRange(int pressMinute, int end);

} // namespace slot_grid
