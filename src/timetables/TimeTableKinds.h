#pragma once
#include "config/XmlDocument.h"

// The three kinds of time table and where each lives in the time-tables document:
//   kind 0, day program:  "days" holding "day" elements
//   kind 1, week program: "weeks" holding "week" elements
//   kind 2, calendar:     "calendars" holding "calendar" elements
// The numbers are those the kind chooser returns and the setup list's rows carry.
enum TimeTableKind { KindDay = 0, KindWeek = 1, KindCalendar = 2 };
inline constexpr int kTimeTableKinds = 3;

struct TimeTableKindInfo {
    wchar_t const* container; // "days"
    wchar_t const* tag;       // "day"
    wchar_t const* byName;    // "/day?name=%s?"
    unsigned word;            // the kind's word in the list and the chooser
};

inline constexpr TimeTableKindInfo kTimeTableKindInfo[kTimeTableKinds] = {
    {L"days", L"day", L"/day?name=%s?", 32696},
    {L"weeks", L"week", L"/week?name=%s?", 32697},
    {L"calendars", L"calendar", L"/calendar?name=%s?", 32771},
};

inline TimeTableKindInfo const& KindInfo(int kind)
{
    return kTimeTableKindInfo[kind >= 0 && kind < kTimeTableKinds ? kind : 0];
}

// The container of a kind below the document's root; null when it (or the root) is missing.
inline XmlDocument::XmlNode* TimeTableContainer(XmlDocument* document, int kind)
{
    XmlDocument::XmlNode* root = document ? document->Root() : nullptr;
    return root ? root->Child(KindInfo(kind).container) : nullptr;
}

// The kind of an element by its tag; -1 for any other tag.
inline int TimeTableKindOfTag(XmlDocument::XmlNode const* element)
{
    for (int kind = 0; kind < kTimeTableKinds; ++kind)
        if (element->HasTag(kTimeTableKindInfo[kind].tag))
            return kind;
    return -1;
}
