#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoDaySlots.h"
#include <optional>

class QWidget;

// The colours the day editor gives the slot editor: a green label strip, a red selection.
inline constexpr unsigned kSlotLabelColour = 0x00FF00;
inline constexpr unsigned kSlotSelectionColour = 0x0000FF;

// Runs the slot editor on a scratch slot ("main" document) holding `slot`, or nothing for a
// new one. The slot chosen on OK (a slot whose ends are equal is empty), nothing on Cancel.
std::optional<DaySlot> RunSlotEditor(QWidget* parent, DaySlot const* slot);

// The host's time-slot entry: runs the slot editor on the slot of a day program's list at
// `row` (the list as the day editor shows it: merged and sorted), or on a new slot when row
// is -1 or past the list, and on OK writes the day's slots back the way the day editor's OK
// does (the old range unmarked, the new one marked, overlapping slots merged). True when the
// day was written.
bool EditDaySlot(QWidget* parent, XmlDocument::XmlNode* day, int row);
