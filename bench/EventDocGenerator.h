#pragma once
#include <cstdint>
#include <string>
#include <vector>

class XmlDocument;

// Deterministic generator of project documents shaped like real ones, for benchmarks,
// fuzz seeds and tests.
//
// Every event is derived from (seed, index) alone, so event i of a configuration document
// and event i of an events clipboard made with the same seed are identical (same id, same
// name): a clipboard of the first events of a document pastes as "copy and paste within
// the same project". Time tables and event groups are derived the same way, and each
// event's `timeTable` and `eventsGroup` references name tables and groups that the
// time-tables and configuration documents of the same seed hold.
//
// The XML is compact (no indentation), as the module's own writer produces it; properties
// are child elements. An event takes about 1.2 KB.
namespace zo::docgen {

struct EventDocShape {
    int events = 1000;          // number of events
    int firstIndex = 0;         // index of the first event (ids and names derive from it)
    int timeTables = 200;       // day, week and calendar programs together
    int eventGroups = 24;       // event groups of the configuration document
    int deviceGroupDepth = 3;   // levels of nested device groups below the element (4 per group)
    std::uint64_t seed = 0x5EED2024u;
};

// The root tag used for the generated event configuration document.
inline constexpr char const* kEventsRootTag = "eventsConfiguration";

// "<eventsConfiguration><events>...</events><eventsGroups>...</eventsGroups></eventsConfiguration>"
std::string MakeEventsDocumentXml(EventDocShape const& shape);
// Appends the `event` elements alone, joined without separator.
void AppendEventsXml(std::string& out, EventDocShape const& shape);
// Appends one `event` element (index as in EventDocShape::firstIndex).
void AppendEventXml(std::string& out, EventDocShape const& shape, int index);
// "<eventsClipboard>" + events + "</eventsClipboard>", as the events list copies them.
std::string MakeEventsClipboardXml(EventDocShape const& shape);
// The time-tables document: root "timeTables" with `days`, `weeks` and `calendars`
// (about 60 %, 25 % and 15 % of shape.timeTables).
std::string MakeTimeTablesXml(EventDocShape const& shape);
// A device groups element (root "deviceGroups") with nested device groups, deviceGroupDepth
// levels deep, where each event of the shape is registered once as a device of type "R$EVE",
// mixed with a few ordinary devices.
std::string MakeDeviceGroupsXml(EventDocShape const& shape);

// The device catalog (root "catalog", as in Devices.zocfg) that the generated formulas
// refer to: the controllers PLC1 to PLC8 with every variable an event may name
// (EQUIPMENT_n_MEASURE analog with a range that holds every generated threshold,
// EQUIPMENT_n_RUN an integer 0 or 1, since the events show it as a numeric argument,
// EQUIPMENT_n_ALARM digital and writable), 4,000 variables each,
// then remote units RTU0009... with eight variables each, `devices` devices in all.
std::string MakeDeviceCatalogXml(EventDocShape const& shape, int devices);

// The GUID text (upper case, with braces) of the generated element of a kind and index.
// Kinds: 'E' event, 'T' time table, 'G' event group, 'A' argument, 'X' action, 'D' device.
std::string GeneratedId(std::uint64_t seed, char kind, std::uint64_t index);

// The screens that the generated screen actions name.
std::vector<std::string> GeneratedScreenNames();
// The name of generated event `index`.
std::string GeneratedEventName(std::uint64_t seed, int index);

// Parses text into doc; false when it does not parse (which generated text always does).
bool LoadGenerated(XmlDocument& doc, std::string const& text);

} // namespace zo::docgen
