#pragma once
#include "check/ZoCheckFinding.h"
#include "config/XmlDocument.h"

#include <cstdint>
#include <functional>

// The fields of the events that can refer to other elements of the project, walked in the
// documents' order (events in their order, each event's fields in the editor's order), so
// that where-used and rename read the same places the same way.
namespace zo::uses {

using XmlNode = XmlDocument::XmlNode;

// What a field's text is.
enum class FieldKind {
    EventName,  // the event's own name
    Formula,    // condition, stop condition, delays, argument value, force variable and value
    DeviceName, // a device action's device
    ScreenName, // a screen action's screen
    ReportName, // a report action's report
    Recipient,  // a mail or SMS action's user, mailing list or phone list (an id)
    TimeTable,  // the event's time table (an id)
    Group,      // one of the event's groups (an id)
};

// Where a field lies: the event (its element and position in `events`) and the field as
// the project check names it (list, moment and index for an action).
struct FieldPlace {
    XmlNode const* event = nullptr;
    std::uint32_t position = 0;
    ZoCheckField field = ZoCheckField::None;
    int list = -1;
    int moment = -1;
    int index = 0;
};

// The `events` element of the event configuration document's root, or eventsRoot itself when
// it is that element (the event editor works on a copy of it); null when there is none.
XmlNode const* EventsElement(XmlNode const* eventsRoot);

// Calls visit(place, kind, node) for every field of every event under eventsRoot (see
// EventsElement; null: none); node is the element whose text is the
// field's value.
void ForEachEventField(XmlNode const* eventsRoot,
                       std::function<void(FieldPlace const&, FieldKind, XmlNode const&)> const& visit);

// A place of the events document as the project check reports places (subject, event's
// name and id, path), so that the Problems window's ways of showing and opening a place
// serve here too. The rule and message are left for the caller.
ZoFinding PlaceFinding(XmlNode const* eventsRoot, FieldPlace const& place);

// The position of child among its parent's children.
std::uint32_t PositionIn(XmlNode const& child);

} // namespace zo::uses
