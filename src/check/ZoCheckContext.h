#pragma once
// The indexes the rules of the project check share, and the helpers that make findings.
// Internal to src/check.
#include "check/ZoProjectChecker.h"
#include "check/ZoUtf8Table.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/formula/ZoEvaluator.h"
#include "timetables/ZoTimeTableResolution.h"

#include <array>
#include <deque>
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

struct Utf8Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
// Texts as stored (UTF-8), looked up by a view of a document's text without a copy.
using Utf8Set = std::unordered_set<std::string, Utf8Hash, std::equal_to<>>;

// The devices of type R$EVE with an id, and whether an event has that id.
struct Registration {
    int count = 0;
    bool matched = false;
};

// The keys of an event the rules read, found in one pass over its children.
enum EventKey {
    KeyName,
    KeyId,
    KeyCondition,
    KeyConditionStop,
    KeyDelayActivate,
    KeyDelayDeactivate,
    KeyTimeTable,
    KeyAnnotation,
    KeyDeaAnnotation,
    KeyAckAnnotation,
    KeyArguments,
    KeyEventsGroups,
    KeyNotify,
    KeyDisabled,
    KeyActions,       // `actions`; `clientActions` follows it
    KeyClientActions,
    KeyCount
};
// The interned tags of the keys in the events document (XmlDocument::TagKey).
using EventKeyTags = std::array<void const*, KeyCount>;
EventKeyTags EventKeyTagsOf(XmlDocument const& events);

// What a time table's id (as stored) resolves to.
struct TableState {
    std::wstring id;
    bool known = false;     // a day, week or calendar program has that id
    bool allowsAny = false; // it allows some moment of the year checked
};

// The event a rule looks at.
struct EventUnderCheck {
    // name and id: where the event's name and id are written as wide text, buffers kept from
    // one event to the next so that walking 100,000 events allocates nothing for them.
    EventUnderCheck(XmlNode const& event, std::uint32_t position, EventKeyTags const& tags, std::wstring& name,
                    std::wstring& id);

    XmlNode const* Child(EventKey key) const { return keys[key]; }
    std::string_view Utf8(EventKey key) const { return keys[key] ? keys[key]->TextUtf8() : std::string_view(); }
    // Converted here, not with XmlNode::Value, which keeps the wide text in the document.
    std::wstring Wide(EventKey key) const;

    XmlNode const& node;
    std::uint32_t position; // in `events`
    std::array<XmlNode const*, KeyCount> keys{};
    std::wstring const& name;
    std::wstring const& id;
    // What its `timeTable` resolves to, once a rule looked it up (ZoProjectChecker::Context::TableOf).
    mutable TableState const* table = nullptr;
};

// What the check of one formula found: nothing, a fault (the evaluator then holds nothing
// useful) or a mark on a formula that passed.
struct FormulaOutcome {
    bool passed = true;
    bool found = false; // a finding to report
    ZoSeverity severity = ZoSeverity::Error;
    std::string_view rule;
    std::wstring message;
    int column = 0;
};

// Tags interned in one document (XmlDocument::TagKey), so that loops over many elements
// compare tags as pointers instead of looking each key up by its text.
struct DocumentTags {
    DocumentTags() = default;
    explicit DocumentTags(XmlDocument const* document);
    void const* id = nullptr;
    void const* name = nullptr;
    void const* type = nullptr;
    void const* notify = nullptr;
    void const* disabled = nullptr;
    void const* condition = nullptr;
    void const* timeTable = nullptr;
    void const* arguments = nullptr;
    void const* value = nullptr;
    void const* devices = nullptr;
    void const* groups = nullptr;
    void const* sides[2] = {};
    void const* moments[4] = {};
    void const* variable = nullptr;
    // The kinds of action the check reads further.
    void const* force = nullptr;
    void const* device = nullptr;
    void const* screen = nullptr;
    void const* report = nullptr;
    void const* mail = nullptr;
    void const* sms = nullptr;
};

// The text of the element's first child with that tag, empty when there is none.
std::string_view KeyText(XmlNode const& element, void const* tag);
// The element's first child with that tag, or null.
XmlNode const* KeyChild(XmlNode const* element, void const* tag);

// A key's text as wide text, converted without keeping it in the document (XmlNode::Value
// would keep it there for the document's life).
std::wstring WideValue(XmlNode const& element, std::wstring_view key);

// utf8 as wide text, written into buffer (kept from one event to the next, so that walking
// many events allocates nothing for it); returns buffer.
std::wstring const& WideInto(std::wstring& buffer, std::string_view utf8);

// The position of child among its parent's children.
std::uint32_t PositionOf(XmlNode const& child);

} // namespace zo::check

namespace zo::check {
class ProjectPass;
}

struct ZoProjectChecker::Context {
    Context(ZoProjectDocs docs, ZoCheckOptions options);

    ZoProjectDocs docs;
    QDate from; // the year over which time tables are resolved: from .. to
    QDate to;
    std::unique_ptr<ZoDeviceCatalog> ownCatalog;
    ZoDeviceCatalog const* catalog = nullptr;
    // The events pseudo-devices of a catalog of the check's own are built when a text first
    // names one ("R$EVE_..."): most projects' formulas name only devices.
    bool eventsPending = false;
    void NeedEventsIfNamed(std::wstring_view text);
    ZoEvaluator evaluator;
    ZoTimeTableResolution timeTables;
    zo::check::Utf8Set groupIds;
    zo::check::WideSet screens;
    zo::check::WideSet reports;
    zo::check::WideSet users;
    zo::check::WideSet mailLists;
    zo::check::WideSet phoneLists;
    // UTF-8 name -> events holding it; the names are copied into one block (and a renamed
    // event's new name kept apart), so that an event's edit leaves the counts valid.
    zo::check::Utf8Table<int> eventNames;
    std::vector<std::string_view> nameAt; // by position in `events`
    std::vector<int*> countAt;            // the count of the name at that position (entries stay put)
    // How many events hold the name of the event at that position.
    int NameCount(std::uint32_t position, std::string_view name) const;
    std::string nameBlock;
    std::deque<std::string> newNames;
    // Event id -> its registrations; views into the device tree, which the check never
    // changes (the editor checks anew after every save).
    zo::check::Utf8Table<zo::check::Registration> registrations;
    std::uint32_t eventsPosition = 0;                        // of `events` in the root
    XmlDocument::XmlNode const* eventsElement = nullptr;
    zo::check::EventKeyTags keyTags{};
    zo::check::DocumentTags eventsTags;
    zo::check::DocumentTags devicesTags;
    std::vector<ZoFinding>* out = nullptr;
    std::wstring eventName; // the name and id of the event under check (EventUnderCheck)
    std::wstring eventId;
    // Buffers the rules of one event write formulas into, kept for the next event.
    std::wstring conditionText;
    std::wstring formulaText;
    std::wstring valueText;
    std::vector<ZoBasicString<wchar_t>> variables;
    // A check in steps: what the events' walk gathered so far, and the next child of `events`.
    std::unique_ptr<zo::check::ProjectPass> pass;
    XmlDocument::XmlNode const* next = nullptr;
    std::uint32_t nextPosition = 0;

    // A finding about the event, at the field.
    ZoFinding& Add(zo::check::EventUnderCheck const& event, ZoSeverity severity, std::string_view rule,
                   ZoCheckField field, std::wstring message);
    // A finding about another element, at path in file.
    ZoFinding& AddAt(zo::project::ProjectDoc file, std::vector<std::uint32_t> path, ZoCheckSubject subject,
                     std::wstring name, std::wstring id, ZoSeverity severity, std::string_view rule,
                     std::wstring message);

    // What a time table's id (as stored) resolves to over `from` to `to`; each table is
    // resolved once, however many events use it.
    zo::check::TableState const& TableOf(std::string_view utf8Id);
    std::unordered_map<std::string, zo::check::TableState, zo::check::Utf8Hash, std::equal_to<>> tableStates;

    // The judgement of the first delay texts met (delays repeat over many events).
    std::unordered_map<std::string, zo::check::FormulaOutcome, zo::check::Utf8Hash, std::equal_to<>> delayOutcomes;

    // A text of the text table, loaded once per check.
    std::wstring const& Text(unsigned id);
    std::unordered_map<unsigned, std::wstring> texts;
    std::wstring fromText; // `from` and `to` as the messages write them
    std::wstring toText;

    void IndexNames();
    void IndexRegistrations();
    void IndexFolder();
    void IndexUsers();
};

namespace zo::check {

// What the rules over the whole project gather from each event as the events are walked
// for their own rules, so that 100,000 events are walked once (ZoProjectRules.cpp).
class ProjectPass {
public:
    explicit ProjectPass(ZoProjectChecker::Context& context);
    ~ProjectPass();
    ProjectPass(ProjectPass const&) = delete;
    ProjectPass& operator=(ProjectPass const&) = delete;

    void Collect(EventUnderCheck const& event);
    // The findings of every rule over the whole project, in the order of the documents.
    void Report();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// The rules over one event (ZoEventRules.cpp, ZoActionRules.cpp).
void CheckEventIdentity(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventFormulas(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventReferences(ZoProjectChecker::Context& context, EventUnderCheck const& event);
void CheckEventActions(ZoProjectChecker::Context& context, EventUnderCheck const& event);
// The note on stamped events that differ from their template (ZoTemplateRules.cpp).
void CheckTemplateDrift(ZoProjectChecker::Context& context);


} // namespace zo::check
