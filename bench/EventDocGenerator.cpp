#include "EventDocGenerator.h"

#include "config/XmlDocument.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace zo::docgen {
namespace {

// splitmix64: small, fast and identical on every compiler and standard library.
class Rng {
public:
    explicit Rng(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t Next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    int Below(int n) { return static_cast<int>(Next() % static_cast<std::uint64_t>(n)); }
    bool Percent(int p) { return Below(100) < p; }
    template <class T, std::size_t N>
    T const& Pick(std::array<T, N> const& items) { return items[Below(static_cast<int>(N))]; }

private:
    std::uint64_t m_state;
};

std::uint64_t Mix(std::uint64_t seed, char kind, std::uint64_t index)
{
    Rng rng(seed ^ (static_cast<std::uint64_t>(static_cast<unsigned char>(kind)) << 56) ^ (index * 0xD1B54A32D192ED03ull));
    return rng.Next();
}

struct Equipment {
    char const* tag;       // variable stem
    char const* text;      // description word
};

constexpr std::array<Equipment, 10> kEquipment{{
    {"PUMP", "Pump"}, {"VALVE", "Valve"}, {"MOTOR", "Motor"}, {"TANK", "Tank"},
    {"BOILER", "Boiler"}, {"FAN", "Fan"}, {"COMPRESSOR", "Compressor"}, {"CHILLER", "Chiller"},
    {"METER", "Energy meter"}, {"FEEDER", "Feeder"},
}};

struct Measure {
    char const* tag;
    char const* text;
    char const* unit;
    char const* format;
};

constexpr std::array<Measure, 8> kMeasures{{
    {"PRESSURE", "pressure", "bar", "%.2f"}, {"TEMPERATURE", "temperature", "\xC2\xB0" "C", "%.1f"},
    {"LEVEL", "level", "m", "%.2f"}, {"FLOW", "flow", "m3/h", "%.1f"},
    {"CURRENT", "current", "A", "%.1f"}, {"VOLTAGE", "voltage", "V", "%.0f"},
    {"SPEED", "speed", "rpm", "%.0f"}, {"POWER", "active power", "kW", "%.2f"},
}};

constexpr std::array<char const*, 6> kSites{{
    "line", "building", "plant room", "substation", "sector", "zona t\xC3\xA9" "cnica",
}};

constexpr std::array<char const*, 5> kAddresses{{
    "operations@plant.example", "maintenance@plant.example", "shift.lead@plant.example",
    "energy@plant.example", "alarms@plant.example",
}};

constexpr std::array<char const*, 6> kScreens{{
    "Overview", "Pumping station", "Boilers", "HVAC", "Substation 1", "Energy",
}};

constexpr std::array<char const*, 4> kCommands{{
    "C:\\Scripts\\notify.cmd", "C:\\Scripts\\log_alarm.exe", "/opt/scada/bin/pager", "C:\\Tools\\siren.exe",
}};

std::string Format(char const* format, auto... args)
{
    char buffer[512];
    int n = std::snprintf(buffer, sizeof buffer, format, args...);
    return std::string(buffer, n < 0 ? 0 : (n < static_cast<int>(sizeof buffer) ? n : sizeof buffer - 1));
}

void AppendEscaped(std::string& out, std::string_view text)
{
    for (char c : text) {
        switch (c) {
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '&': out += "&amp;"; break;
        default: out += c;
        }
    }
}

void Key(std::string& out, char const* tag, std::string_view text)
{
    out += '<';
    out += tag;
    if (text.empty()) {
        out += "/>";
        return;
    }
    out += '>';
    AppendEscaped(out, text);
    out += "</";
    out += tag;
    out += '>';
}

void Open(std::string& out, char const* tag) { out += '<'; out += tag; out += '>'; }
void Close(std::string& out, char const* tag) { out += "</"; out += tag; out += '>'; }

// Appends <tag>content</tag>, or <tag/> when the content is empty.
void Element(std::string& out, char const* tag, std::string const& content)
{
    if (content.empty()) {
        out += '<';
        out += tag;
        out += "/>";
        return;
    }
    Open(out, tag);
    out += content;
    Close(out, tag);
}

char const* Flag(bool value) { return value ? "T" : "F"; }

// What every part of one event is made of, drawn once so that name, condition, texts and
// actions speak of the same variable.
struct EventTraits {
    int plc;
    int unit;
    Equipment equipment;
    Measure measure;
    char const* site;
    int siteNumber;
    bool high;
    std::string variable;   // PLC3.PUMP_12_PRESSURE
    std::string runVariable;
};

EventTraits DrawTraits(Rng& rng)
{
    EventTraits t{};
    t.plc = 1 + rng.Below(8);
    t.unit = 1 + rng.Below(40);
    t.equipment = rng.Pick(kEquipment);
    t.measure = rng.Pick(kMeasures);
    t.site = rng.Pick(kSites);
    t.siteNumber = 1 + rng.Below(6);
    t.high = rng.Percent(60);
    t.variable = Format("PLC%d.%s_%d_%s", t.plc, t.equipment.tag, t.unit, t.measure.tag);
    t.runVariable = Format("PLC%d.%s_%d_RUN", t.plc, t.equipment.tag, t.unit);
    return t;
}

std::string EventName(EventTraits const& t, int index)
{
    return Format("PLC%d_%s_%d_%s_%s_%d", t.plc, t.equipment.tag, t.unit, t.measure.tag,
                  t.high ? "HIGH" : "LOW", index);
}

std::string Threshold(Rng& rng)
{
    return Format("%d.%d", 1 + rng.Below(120), rng.Below(10));
}

void AppendArguments(std::string& out, Rng& rng, EventDocShape const& shape, int index, EventTraits const& t)
{
    int count = rng.Percent(90) ? 1 : 2;
    Open(out, "arguments");
    for (int a = 0; a < count; ++a) {
        Open(out, "argument");
        Key(out, "id", GeneratedId(shape.seed, 'A', static_cast<std::uint64_t>(index) * 4 + a));
        Key(out, "value", a == 0 ? "[" + t.variable + "]" : "[" + t.runVariable + "]");
        Key(out, "format", a == 0 ? t.measure.format : "%.0f");
        Key(out, "thousandSeparator", Flag(rng.Percent(30)));
        Close(out, "argument");
    }
    Close(out, "arguments");
}

void AppendGroups(std::string& out, Rng& rng, EventDocShape const& shape)
{
    std::string memberships;
    if (shape.eventGroups > 0) {
        int const count = rng.Percent(80) || shape.eventGroups < 2 ? 1 : 2;
        int const first = rng.Below(shape.eventGroups);
        for (int g = 0; g < count; ++g)
            Key(memberships, "eventsGroup", GeneratedId(shape.seed, 'G', static_cast<std::uint64_t>((first + g) % shape.eventGroups)));
    }
    Element(out, "eventsGroups", memberships);
}

void AppendForce(std::string& out, std::string const& id, std::string const& variable, char const* value)
{
    Open(out, "force");
    Key(out, "id", id);
    Key(out, "variable", variable);
    Key(out, "value", value);
    Close(out, "force");
}

void AppendServerActions(std::string& out, Rng& rng, std::uint64_t seed, int index, EventTraits const& t)
{
    auto actionId = [&](int n) { return GeneratedId(seed, 'X', static_cast<std::uint64_t>(index) * 16 + n); };
    std::string alarm = Format("[PLC%d.%s_%d_ALARM]", t.plc, t.equipment.tag, t.unit);
    Open(out, "actions");
    std::string activate;
    if (rng.Percent(70))
        AppendForce(activate, actionId(0), alarm, "1");
    if (rng.Percent(15)) {
        Open(activate, "mail");
        Key(activate, "id", actionId(1));
        Key(activate, "message", Format("%s %d %s %s", t.equipment.text, t.unit, t.measure.text, t.high ? "high" : "low"));
        Key(activate, "address", rng.Pick(kAddresses));
        Close(activate, "mail");
    }
    Element(out, "activate", activate);
    if (rng.Percent(10)) {
        Open(out, "while");
        Open(out, "shellExecute");
        Key(out, "id", actionId(2));
        Key(out, "command", rng.Pick(kCommands));
        Key(out, "parameter", Format("%d", index));
        Close(out, "shellExecute");
        Close(out, "while");
    } else {
        out += "<while/>";
    }
    if (rng.Percent(40)) {
        Open(out, "deactivate");
        AppendForce(out, actionId(3), alarm, "0");
        Close(out, "deactivate");
    } else {
        out += "<deactivate/>";
    }
    out += "<acknowledge/>";
    Close(out, "actions");
}

void AppendClientActions(std::string& out, Rng& rng, std::uint64_t seed, int index)
{
    auto actionId = [&](int n) { return GeneratedId(seed, 'X', static_cast<std::uint64_t>(index) * 16 + 8 + n); };
    Open(out, "clientActions");
    std::string activate;
    if (rng.Percent(20)) {
        Open(activate, "screen");
        Key(activate, "id", actionId(0));
        Key(activate, "name", rng.Pick(kScreens));
        Close(activate, "screen");
    }
    if (rng.Percent(30)) {
        Open(activate, "beep");
        Key(activate, "id", actionId(1));
        Close(activate, "beep");
    }
    Element(out, "activate", activate);
    out += "<while/><deactivate/><acknowledge/>";
    Close(out, "clientActions");
}

std::string TableName(int k, char const* kind)
{
    return Format("%s_%03d", kind, k);
}

} // namespace

std::vector<std::string> GeneratedScreenNames()
{
    return {kScreens.begin(), kScreens.end()};
}

std::string GeneratedId(std::uint64_t seed, char kind, std::uint64_t index)
{
    Rng rng(Mix(seed, kind, index));
    std::uint64_t hi = rng.Next();
    std::uint64_t lo = rng.Next();
    hi = (hi & ~0xF000ull) | 0x4000ull;                         // version 4
    lo = (lo & 0x3FFFFFFFFFFFFFFFull) | 0x8000000000000000ull;  // variant 1
    return Format("{%08X-%04X-%04X-%04X-%012llX}", static_cast<unsigned>(hi >> 32),
                  static_cast<unsigned>((hi >> 16) & 0xFFFF), static_cast<unsigned>(hi & 0xFFFF),
                  static_cast<unsigned>(lo >> 48), static_cast<unsigned long long>(lo & 0xFFFFFFFFFFFFull));
}

std::string GeneratedEventName(std::uint64_t seed, int index)
{
    Rng rng(Mix(seed, 'e', static_cast<std::uint64_t>(index)));
    return EventName(DrawTraits(rng), index);
}

void AppendEventXml(std::string& out, EventDocShape const& shape, int index)
{
    Rng rng(Mix(shape.seed, 'e', static_cast<std::uint64_t>(index)));
    EventTraits const t = DrawTraits(rng);
    std::string const threshold = Threshold(rng);

    Open(out, "event");
    Key(out, "id", GeneratedId(shape.seed, 'E', static_cast<std::uint64_t>(index)));
    Key(out, "name", EventName(t, index));
    std::string description = Format("%s %d %s %s", t.equipment.text, t.unit, t.measure.text, t.high ? "high" : "low");
    if (rng.Percent(50))
        description += Format(" (%s %d)", t.site, t.siteNumber);
    Key(out, "description", description);
    std::string condition = Format("[%s] %s %s", t.variable.c_str(), t.high ? ">" : "<", threshold.c_str());
    if (rng.Percent(50))
        condition += Format(" AND [%s] = 1", t.runVariable.c_str());
    Key(out, "condition", condition);
    if (rng.Percent(30))
        Key(out, "conditionStop", Format("[%s] %s %s", t.variable.c_str(), t.high ? "<=" : ">=", threshold.c_str()));
    Key(out, "delayToActivate", Format("%d", rng.Percent(50) ? 0 : 5 * rng.Below(12)));
    Key(out, "delayToDeactivate", Format("%d", rng.Percent(70) ? 0 : 10 * rng.Below(6)));
    Key(out, "notify", Flag(rng.Percent(80)));
    Key(out, "record", Flag(rng.Percent(90)));
    Key(out, "disabled", Flag(rng.Percent(8)));
    Key(out, "rssActivate", Flag(rng.Percent(20)));
    Key(out, "rssDeactivate", Flag(rng.Percent(10)));
    Key(out, "rssAcknowledge", Flag(rng.Percent(5)));
    if (shape.timeTables > 0 && rng.Percent(75))
        Key(out, "timeTable", GeneratedId(shape.seed, 'T', static_cast<std::uint64_t>(rng.Below(shape.timeTables))));
    Key(out, "annotation", Format("%s %d %s %%a1 %s in %%g1", t.equipment.text, t.unit, t.measure.text, t.measure.unit));
    Key(out, "deaAnnotation", rng.Percent(40) ? Format("%s %d %s back to normal (%%a1 %s)", t.equipment.text, t.unit,
                                                       t.measure.text, t.measure.unit) : std::string());
    Key(out, "ackAnnotation", rng.Percent(30) ? Format("%s %d alarm acknowledged", t.equipment.text, t.unit) : std::string());
    AppendArguments(out, rng, shape, index, t);
    AppendGroups(out, rng, shape);
    AppendServerActions(out, rng, shape.seed, index, t);
    AppendClientActions(out, rng, shape.seed, index);
    Close(out, "event");
}

void AppendEventsXml(std::string& out, EventDocShape const& shape)
{
    out.reserve(out.size() + static_cast<std::size_t>(shape.events) * 1300);
    for (int i = 0; i < shape.events; ++i)
        AppendEventXml(out, shape, shape.firstIndex + i);
}

std::string MakeEventsDocumentXml(EventDocShape const& shape)
{
    std::string out;
    Open(out, kEventsRootTag);
    std::string events;
    AppendEventsXml(events, shape);
    Element(out, "events", events);
    std::string groups;
    for (int g = 0; g < shape.eventGroups; ++g) {
        Open(groups, "eventsGroup");
        Key(groups, "id", GeneratedId(shape.seed, 'G', static_cast<std::uint64_t>(g)));
        Key(groups, "name", Format("Group %02d", g + 1));
        Close(groups, "eventsGroup");
    }
    Element(out, "eventsGroups", groups);
    Close(out, kEventsRootTag);
    return out;
}

std::string MakeEventsClipboardXml(EventDocShape const& shape)
{
    std::string out = "<eventsClipboard>";
    AppendEventsXml(out, shape);
    out += "</eventsClipboard>";
    return out;
}

std::string MakeTimeTablesXml(EventDocShape const& shape)
{
    int const total = shape.timeTables;
    int const days = total * 60 / 100 > 0 || total == 0 ? total * 60 / 100 : 1;
    int const weeks = total * 25 / 100;
    auto id = [&](int k) { return GeneratedId(shape.seed, 'T', static_cast<std::uint64_t>(k)); };
    Rng rng(Mix(shape.seed, 't', 0));
    std::string out = "<timeTables><days>";
    for (int k = 0; k < days; ++k) {
        Open(out, "day");
        Key(out, "id", id(k));
        Key(out, "name", TableName(k, "Day"));
        Key(out, "color", Format("%06X", static_cast<unsigned>(rng.Next() & 0xFFFFFF)));
        int slots = 1 + rng.Below(3);
        int hour = rng.Below(6);
        for (int s = 0; s < slots; ++s) {
            int from = hour + rng.Below(3);
            int to = from + 1 + rng.Below(5);
            if (to > 23)
                break;
            Open(out, "slot");
            Key(out, "from", Format("%02d:%02d", from, 15 * rng.Below(4)));
            Key(out, "to", Format("%02d:%02d", to, 15 * rng.Below(4)));
            Close(out, "slot");
            hour = to + 1;
        }
        Close(out, "day");
    }
    out += "</days><weeks>";
    for (int k = days; k < days + weeks; ++k) {
        Open(out, "week");
        Key(out, "id", id(k));
        Key(out, "name", TableName(k, "Week"));
        for (int d = 1; d <= 7; ++d)
            if (days > 0 && (d <= 5 || rng.Percent(30)))
                Key(out, Format("day%d", d).c_str(), id(rng.Below(days)));
        Close(out, "week");
    }
    out += "</weeks><calendars>";
    for (int k = days + weeks; k < total; ++k) {
        Open(out, "calendar");
        Key(out, "id", id(k));
        Key(out, "name", TableName(k, "Calendar"));
        for (int year = 2024; year <= 2025; ++year) {
            Open(out, "year");
            Key(out, "year", Format("%d", year));
            for (int month : {1, 12}) {
                std::string monthTag = Format("month%d", month);
                Open(out, monthTag.c_str());
                for (int day = 1; day <= 31; ++day)
                    if (days > 0)
                        Key(out, Format("day%d", day).c_str(), id(rng.Below(days)));
                Close(out, monthTag.c_str());
            }
            Close(out, "year");
        }
        Close(out, "calendar");
    }
    out += "</calendars></timeTables>";
    return out;
}

namespace {

void AppendDevice(std::string& out, std::string const& id, char const* type)
{
    Open(out, "device");
    Key(out, "id", id);
    Key(out, "type", type);
    Close(out, "device");
}

// A device group: its ordinary devices, the events given to it, and its subgroups.
void AppendDeviceGroup(std::string& out, EventDocShape const& shape, int depth, int path, int& nextEvent,
                       int eventsHere, int& nextDevice)
{
    constexpr int kFanOut = 4;
    int const kDepth = shape.deviceGroupDepth;
    out += "<devices>";
    for (int d = 0; d < 2; ++d)
        AppendDevice(out, GeneratedId(shape.seed, 'D', static_cast<std::uint64_t>(nextDevice++)), "PLC");
    int const own = depth >= kDepth ? eventsHere : eventsHere / (kFanOut + 1);
    int const end = shape.firstIndex + shape.events;
    for (int i = 0; i < own && nextEvent < end; ++i)
        AppendDevice(out, GeneratedId(shape.seed, 'E', static_cast<std::uint64_t>(nextEvent++)), "R$EVE");
    out += "</devices>";
    if (depth >= kDepth)
        return;
    out += "<groups>";
    int const rest = eventsHere - own;
    for (int g = 0; g < kFanOut; ++g) {
        int const share = rest / kFanOut + (g < rest % kFanOut ? 1 : 0);
        Open(out, "group");
        Key(out, "name", Format("Area %d", path * 10 + g + 1));
        AppendDeviceGroup(out, shape, depth + 1, path * 10 + g + 1, nextEvent, share, nextDevice);
        Close(out, "group");
    }
    out += "</groups>";
}

} // namespace

std::string MakeDeviceGroupsXml(EventDocShape const& shape)
{
    std::string out = "<deviceGroups>";
    int nextEvent = shape.firstIndex;
    int nextDevice = 0;
    AppendDeviceGroup(out, shape, 0, 0, nextEvent, shape.events, nextDevice);
    out += "</deviceGroups>";
    return out;
}

namespace {

// A range for each measure (kMeasures' order) that holds the generated thresholds (1 to 121).
constexpr std::array<std::array<int, 2>, 8> kMeasureRanges{{
    {0, 160}, {-50, 400}, {0, 150}, {0, 5000}, {0, 2000}, {0, 1000}, {0, 3600}, {0, 10000},
}};

constexpr int kRunRange[2] = {0, 1};

void AppendCatalogVariable(std::string& out, std::string const& code, std::string const& description,
                           char const* type, char const* unit, int const* range, bool writable)
{
    Open(out, "variable");
    Key(out, "code", code);
    Key(out, "description", description);
    Key(out, "type", type);
    if (unit)
        Key(out, "unit", unit);
    if (range) {
        Key(out, "min", Format("%d", range[0]));
        Key(out, "max", Format("%d", range[1]));
    }
    Key(out, "writable", Flag(writable));
    Close(out, "variable");
}

void AppendCatalogDriver(std::string& out, EventDocShape const& shape, int index, std::string const& name,
                         char const* type, std::string const& variables)
{
    Open(out, "driver");
    Key(out, "id", GeneratedId(shape.seed, 'C', static_cast<std::uint64_t>(index)));
    Key(out, "name", name);
    Key(out, "description", index < 8 ? Format("Controller %d", index + 1) : Format("Remote unit %d", index + 1));
    Key(out, "type", type);
    Key(out, "address", Format("10.0.%d.%d:502", index / 250, 1 + index % 250));
    out += variables;
    Close(out, "driver");
}

} // namespace

std::string MakeDeviceCatalogXml(EventDocShape const& shape, int devices)
{
    std::string out = "<catalog>";
    for (int plc = 0; plc < 8 && plc < devices; ++plc) {
        std::string variables;
        for (Equipment const& equipment : kEquipment) {
            for (int unit = 1; unit <= 40; ++unit) {
                std::string const stem = Format("%s_%d_", equipment.tag, unit);
                std::string const text = Format("%s %d ", equipment.text, unit);
                for (std::size_t m = 0; m < kMeasures.size(); ++m)
                    AppendCatalogVariable(variables, stem + kMeasures[m].tag, text + kMeasures[m].text, "analog",
                                          kMeasures[m].unit, kMeasureRanges[m].data(), false);
                // An integer 0/1, not a digital: the generated events show it as a numeric argument.
                AppendCatalogVariable(variables, stem + "RUN", text + "running", "integer", nullptr, kRunRange, false);
                AppendCatalogVariable(variables, stem + "ALARM", text + "alarm", "digital", nullptr, nullptr, true);
            }
        }
        AppendCatalogDriver(out, shape, plc, Format("PLC%d", plc + 1), "MODBUS-TCP", variables);
    }
    for (int rtu = 8; rtu < devices; ++rtu) {
        std::string variables;
        for (std::size_t m = 0; m < kMeasures.size(); ++m)
            AppendCatalogVariable(variables, kMeasures[m].tag, kMeasures[m].text, m == 6 ? "integer" : "analog",
                                  kMeasures[m].unit, kMeasureRanges[m].data(), false);
        AppendCatalogDriver(out, shape, rtu, Format("RTU%04d", rtu + 1), "IEC104", variables);
    }
    out += "</catalog>";
    return out;
}

bool LoadGenerated(XmlDocument& doc, std::string const& text)
{
    return doc.Parse(text.c_str(), text.size());
}

} // namespace zo::docgen
