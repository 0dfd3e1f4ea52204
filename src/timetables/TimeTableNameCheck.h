#pragma once
#include "config/XmlDocument.h"
#include <array>
#include <string>

class QLineEdit;
class QWidget;

// The name check that the three time-table editors run on OK:
//   1. an empty name is refused (text 32780);
//   2. a name that IsValidId refuses is refused (text 32764);
//   3. another element of the own kind with this name, found in the working copy of the own
//      container, refuses it (text 32779), unless it is the element being edited;
//   4. an element of either other kind with this name, found from the live containers,
//      refuses it (text 32779).
// Each lookup is a path with a leading "/" run from the element the lookup starts at, which
// covers only that element's children (the path rule of the XML tree).
struct TimeTableNameLookup {
    XmlDocument::XmlNode const* from = nullptr; // null: nothing to look up
    wchar_t const* format = nullptr;            // "/day?name=%s?"...
};

struct TimeTableNameRules {
    TimeTableNameLookup own;
    std::array<TimeTableNameLookup, 2> others;
};

// The day editor: days copy, then both other-kind lookups start from the weeks container,
// so "/calendar?name=%s?" finds nothing there and a day program may share its name with a
// calendar. That asymmetry is kept as it has always been.
TimeTableNameRules DayNameRules(XmlDocument::XmlNode const* daysCopy, XmlDocument::XmlNode const* weeks,
                                XmlDocument::XmlNode const* calendars);
// The week editor: each lookup starts from its own container.
TimeTableNameRules WeekNameRules(XmlDocument::XmlNode const* weeksCopy, XmlDocument::XmlNode const* days,
                                 XmlDocument::XmlNode const* calendars);
// The calendar editor: each lookup starts from its own container.
TimeTableNameRules CalendarNameRules(XmlDocument::XmlNode const* calendarsCopy, XmlDocument::XmlNode const* days,
                                     XmlDocument::XmlNode const* weeks);

// 0 when the name passes steps 1 to 4, else the text id of the first failing step.
unsigned CheckTimeTableName(std::wstring const& name, XmlDocument::XmlNode const* element,
                            TimeTableNameRules const& rules);

// Step 5, day editor only: true when another day program of the days copy has this colour
// ("/day?color=%06X?"; the element being edited does not count).
bool IsDayColourShared(XmlDocument::XmlNode const* daysCopy, XmlDocument::XmlNode const* element,
                       unsigned colour);

// Runs steps 1 to 4 for an editor: on a failing step shows its message, focuses the name
// field and selects its whole text, and returns false.
bool ConfirmTimeTableName(QWidget* dialog, QLineEdit* nameEdit, XmlDocument::XmlNode const* element,
                          TimeTableNameRules const& rules);
