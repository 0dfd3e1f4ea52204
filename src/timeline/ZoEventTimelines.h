#pragma once
// The timeline questions asked of a project's events: which event a name means, which
// events may fire at a moment, and what an event's time table is called.
#include "timeline/ZoTimeline.h"

#include <string>
#include <string_view>
#include <vector>

// The first `event` of `events` with that name, else the first with that id; null when
// none (or events is null).
XmlDocument::XmlNode const* ZoFindEvent(XmlDocument::XmlNode const* events, std::wstring_view nameOrId);

// The enabled events ("disabled" is "F") whose time table allows the minute that starts at
// the moment, in document order. Each distinct reference is resolved once.
std::vector<XmlDocument::XmlNode const*> ZoEventsAllowedAt(XmlDocument::XmlNode const* events,
                                                          ZoTimeTableResolution const& tables, ZoMoment moment);

// A time table's element found by its id in the days, weeks and calendars of the
// time-tables root (in that order), with its kind; null and Kind::None when none has it.
struct ZoTableElement {
    XmlDocument::XmlNode const* element = nullptr;
    ZoTimeTableResolution::Kind kind = ZoTimeTableResolution::Kind::None;
};
ZoTableElement ZoFindTimeTable(XmlDocument::XmlNode const* timeTablesRoot, std::wstring_view id);
