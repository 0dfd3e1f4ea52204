#pragma once
// The indexes the rules of the project check share, and the helpers that make findings.
// Internal to src/check.
#include "check/ZoProjectChecker.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/formula/ZoEvaluator.h"
#include "timetables/ZoTimeTableResolution.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace zo::check {

using XmlNode = XmlDocument::XmlNode;

struct WideHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
};
using WideSet = std::unordered_set<std::wstring, WideHash, std::equal_to<>>;

// The event a rule looks at.
struct EventUnderCheck {
    XmlNode const& node;
    std::uint32_t position; // in `events`
    std::wstring name;
    std::wstring id;
};

// "T" exactly, as the editor reads Booleans.
inline bool IsTrue(XmlNode const& element, wchar_t const* key)
{
    return element.ValueUtf8(key) == "T";
}

// The position of child among its parent's children.
std::uint32_t PositionOf(XmlNode const& child);

} // namespace zo::check

struct ZoProjectChecker::Context {
    Context(ZoProjectDocs docs, ZoCheckOptions options);

    ZoProjectDocs docs;
    QDate from; // the year over which time tables are resolved: from .. to
    QDate to;
    std::unique_ptr<ZoDeviceCatalog> ownCatalog;
    ZoDeviceCatalog const* catalog = nullptr;
    ZoEvaluator evaluator;
    ZoTimeTableResolution timeTables;
    zo::check::WideSet groupIds;
    zo::check::WideSet screens;
    zo::check::WideSet reports;
    zo::check::WideSet users;
    zo::check::WideSet mailLists;
    zo::check::WideSet phoneLists;
    std::unordered_map<std::string, int> eventNames;        // UTF-8 name -> events holding it
    std::vector<std::string> nameAt;                         // by position in `events`
    std::unordered_map<std::string, int> registrations;     // event id -> R$EVE devices
    std::uint32_t eventsPosition = 0;                        // of `events` in the root
    XmlDocument::XmlNode const* eventsElement = nullptr;
    std::vector<ZoFinding>* out = nullptr;

    // A finding about the event, at the field.
    ZoFinding& Add(zo::check::EventUnderCheck const& event, ZoSeverity severity, std::string_view rule,
                   ZoCheckField field, std::wstring message);
    // A finding about another element, at path in file.
    ZoFinding& AddAt(zo::project::ProjectDoc file, std::vector<std::uint32_t> path, ZoCheckSubject subject,
                     std::wstring name, std::wstring id, ZoSeverity severity, std::string_view rule,
                     std::wstring message);

    void IndexNames();
    void IndexRegistrations();
    void IndexFolder();
    void IndexUsers();
};

namespace zo::check {

// The rules over one event (ZoEventRules.cpp, ZoActionRules.cpp).
void CheckEventIdentity(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventFormulas(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventReferences(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventActions(ZoProjectChecker::Context& context, EventUnderCheck const& event);

// The rules over the project (ZoProjectRules.cpp).
void CheckDuplicateIds(ZoProjectChecker::Context& context);
void CheckGroups(ZoProjectChecker::Context& context);
void CheckTimeTables(ZoProjectChecker::Context& context);
void CheckRegistrations(ZoProjectChecker::Context& context);
void CheckLikelyDuplicates(ZoProjectChecker::Context& context);
void CheckFloodBound(ZoProjectChecker::Context& context);

} // namespace zo::check
