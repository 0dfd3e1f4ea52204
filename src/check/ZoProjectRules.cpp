// The rules over the project as a whole: ids and names shared between elements, the time
// tables, the device registrations, likely duplicates and the flood bound.
#include "check/ZoCheckContext.h"
#include "check/ZoFormulaShape.h"
#include "timeline/ZoTimeline.h"

#include "editor/ZoEventFields.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <type_traits>

namespace zo::check {

namespace {

using Context = ZoProjectChecker::Context;
using zo::project::ProjectDoc;

// What a first holder of an id or a name is, to name it in the finding of the next one.
struct Holder {
    std::vector<std::uint32_t> path;
    ZoCheckSubject subject;
    std::wstring name;
};

std::wstring SubjectOf(Holder const& holder)
{
    ZoFinding finding;
    finding.subject = holder.subject;
    finding.name = holder.name;
    return ZoSubjectText(finding);
}

// The path of an element from its document's root, read upwards (for the few elements
// that have a finding).
std::vector<std::uint32_t> PathOf(XmlNode const& element)
{
    std::vector<std::uint32_t> path;
    for (XmlNode const* node = &element; node->Parent(); node = node->Parent())
        path.push_back(PositionOf(*node));
    std::reverse(path.begin(), path.end());
    return path;
}

// Where an id stands, cheap to keep for every id of the project: the element that names
// the finding (an event, a group, a time table) and, for an argument or an action, its
// place in that event. The path and the name are read only for a finding.
struct IdPlace {
    XmlNode const* holder = nullptr;
    ZoCheckSubject subject = ZoCheckSubject::Event;
    ZoCheckField field = ZoCheckField::Identity;
    std::int8_t list = -1;
    std::int8_t moment = -1;
    int index = 0;
};

Holder HolderOf(IdPlace const& place)
{
    return {PathOf(*place.holder), place.subject, WideValue(*place.holder, L"name")};
}

// Keys (hash, index) of values, in any order: each index whose value an earlier index holds
// too, paired with the first index that holds it, as (later, first), in the order of the
// later ones. The keys are sorted in place; value(index) is read only where hashes meet,
// once for each such index.
template <class Value>
std::vector<std::pair<std::uint32_t, std::uint32_t>> RepeatedValues(std::vector<std::pair<std::size_t, std::uint32_t>>& keys,
                                                                    Value const& value)
{
    std::sort(keys.begin(), keys.end());
    std::vector<std::pair<std::uint32_t, std::uint32_t>> twice;
    std::vector<std::decay_t<std::invoke_result_t<Value const&, std::uint32_t>>> values;
    for (std::size_t start = 0; start < keys.size();) {
        std::size_t end = start + 1;
        while (end < keys.size() && keys[end].first == keys[start].first)
            ++end;
        if (end - start > 1) {
            values.clear();
            for (std::size_t i = start; i < end; ++i)
                values.push_back(value(keys[i].second));
            for (std::size_t later = 1; later < values.size(); ++later)
                for (std::size_t first = 0; first < later; ++first)
                    if (values[first] == values[later]) {
                        twice.emplace_back(keys[start + later].second, keys[start + first].second);
                        break;
                    }
        }
        start = end;
    }
    std::sort(twice.begin(), twice.end());
    return twice;
}

// Finds ids used twice among elements of one kind; each later holder is reported, in the
// order of the document. The ids are collected and sorted by their hash (one allocation
// for all, however many ids the project has), and compared only where hashes meet.
class IdRegister {
public:
    IdRegister(Context& context, ProjectDoc file, std::size_t expected = 0) : m_context(context), m_file(file)
    {
        m_entries.reserve(expected);
    }
    IdRegister(IdRegister const&) = delete;
    IdRegister& operator=(IdRegister const&) = delete;

    void Enter(std::string_view id, IdPlace const& place)
    {
        if (!id.empty())
            m_entries.push_back({std::hash<std::string_view>()(id), static_cast<std::uint32_t>(m_entries.size()), id,
                                 place});
    }

    // Reports each later holder of an id, in the order of the document, and empties the register.
    void Report()
    {
        // (hash, order): 16 bytes a key, sorted without reaching into the entries.
        std::vector<std::pair<std::size_t, std::uint32_t>> keys;
        keys.reserve(m_entries.size());
        for (Entry const& entry : m_entries)
            keys.emplace_back(entry.hash, entry.order);
        auto const twice = RepeatedValues(keys, [this](std::uint32_t order) { return m_entries[order].id; });
        for (auto const& [later, first] : twice)
            Add(m_entries[later], m_entries[first]);
        m_entries.clear();
    }

private:
    struct Entry {
        std::size_t hash;
        std::uint32_t order;
        std::string_view id;
        IdPlace place;
    };

    void Add(Entry const& later, Entry const& first)
    {
        Holder holder = HolderOf(later.place);
        std::wstring const other = SubjectOf(HolderOf(first.place));
        ZoFinding& finding = m_context.AddAt(m_file, std::move(holder.path), holder.subject, std::move(holder.name),
                                             ZoFromUtf8(later.id), ZoSeverity::Error, "duplicate-id",
                                             ZoFormat(ZoLoadString(64533).c_str(), other.c_str()));
        finding.field = later.place.field;
        finding.list = later.place.list;
        finding.moment = later.place.moment;
        finding.index = later.place.index;
    }

    Context& m_context;
    ProjectDoc m_file;
    std::vector<Entry> m_entries;
};

template <class Visit>
void ForEachChild(XmlNode const* container, wchar_t const* tag, Visit const& visit)
{
    std::uint32_t position = 0;
    for (XmlNode const* child = container ? container->FirstChild() : nullptr; child;
         child = child->NextSibling(), ++position)
        if (child->HasTag(tag))
            visit(*child, position);
}

struct TimeTableKind {
    wchar_t const* container;
    wchar_t const* tag;
    ZoCheckSubject subject;
};
constexpr TimeTableKind kTimeTableKinds[] = {{L"days", L"day", ZoCheckSubject::DayProgram},
                                             {L"weeks", L"week", ZoCheckSubject::WeekProgram},
                                             {L"calendars", L"calendar", ZoCheckSubject::Calendar}};

template <class Visit>
void ForEachTimeTable(Context& context, Visit const& visit)
{
    XmlNode const* root = context.docs.timeTables;
    if (!root)
        return;
    for (TimeTableKind const& kind : kTimeTableKinds) {
        XmlNode const* container = root->Child(kind.container);
        if (!container)
            continue;
        std::uint32_t const containerPosition = PositionOf(*container);
        ForEachChild(container, kind.tag, [&](XmlNode const& table, std::uint32_t position) {
            visit(table, Holder{{containerPosition, position}, kind.subject, WideValue(table, L"name")});
        });
    }
}

// Names: valid, and not used twice among elements of one kind (time tables: of all three
// kinds together, as their editors compare them).
class NameRegister {
public:
    NameRegister(Context& context, ProjectDoc file) : m_context(context), m_file(file) {}

    void Enter(XmlNode const& element, Holder const& holder)
    {
        std::wstring message;
        if (holder.name.empty())
            message = ZoLoadString(64530);
        else if (!IsValidId(holder.name.c_str(), true))
            message = ZoLoadString(32764);
        if (!message.empty()) {
            Add(element, holder, "invalid-name", message);
            return;
        }
        auto const [first, inserted] = m_first.try_emplace(holder.name, holder);
        if (!inserted)
            Add(element, holder, "duplicate-name", ZoFormat(ZoLoadString(64560).c_str(), SubjectOf(first->second).c_str()));
    }

private:
    void Add(XmlNode const& element, Holder const& holder, std::string_view rule, std::wstring const& message)
    {
        ZoFinding& finding = m_context.AddAt(m_file, holder.path, holder.subject, holder.name,
                                             WideValue(element, L"id"), ZoSeverity::Error, rule, message);
        finding.field = ZoCheckField::Name;
    }

    Context& m_context;
    ProjectDoc m_file;
    std::unordered_map<std::wstring, Holder> m_first;
};

void CheckDayReference(Context& context, XmlNode const& table, Holder const& holder, std::wstring const& where,
                       std::wstring const& dayId)
{
    if (dayId.empty() || context.timeTables.HasDayProgram(dayId))
        return;
    context.AddAt(ProjectDoc::TimeTables, holder.path, holder.subject, holder.name, WideValue(table, L"id"),
                  ZoSeverity::Warning, "unknown-day-program",
                  ZoFormat(ZoLoadString(64539).c_str(), where.c_str(), dayId.c_str()));
}

void CheckCalendarDates(Context& context, XmlNode const& calendar, Holder const& holder)
{
    for (XmlNode const* year = calendar.FirstChild(); year; year = year->NextSibling()) {
        if (!year->HasTag(L"year"))
            continue;
        std::wstring const number = WideValue(*year, L"year");
        for (XmlNode const* month = year->FirstChild(); month; month = month->NextSibling()) {
            std::wstring const& tag = month->Tag();
            if (!tag.starts_with(L"month"))
                continue;
            for (XmlNode const* day = month->FirstChild(); day; day = day->NextSibling())
                CheckDayReference(context, calendar, holder,
                                  number + L"-" + tag.substr(5) + L"-" + day->Tag().substr(3), ZoFromUtf8(day->TextUtf8()));
        }
    }
}

void CheckTimeTableIds(Context& context)
{
    IdRegister tables(context, ProjectDoc::TimeTables);
    ForEachTimeTable(context, [&](XmlNode const& table, Holder const& holder) {
        tables.Enter(table.ValueUtf8(L"id"), {&table, holder.subject});
    });
    tables.Report();
}

void CheckGroups(Context& context)
{
    XmlNode const* groups = context.docs.events ? context.docs.events->Child(L"eventsGroups") : nullptr;
    if (!groups)
        return;
    std::uint32_t const groupsPosition = PositionOf(*groups);
    IdRegister ids(context, ProjectDoc::Events);
    NameRegister names(context, ProjectDoc::Events);
    ForEachChild(groups, L"eventsGroup", [&](XmlNode const& group, std::uint32_t position) {
        Holder const holder{{groupsPosition, position}, ZoCheckSubject::Group, WideValue(group, L"name")};
        ids.Enter(group.ValueUtf8(L"id"), {&group, ZoCheckSubject::Group});
        names.Enter(group, holder);
    });
    ids.Report();
}

void CheckTimeTables(Context& context)
{
    NameRegister names(context, ProjectDoc::TimeTables);
    ForEachTimeTable(context, [&](XmlNode const& table, Holder const& holder) {
        names.Enter(table, holder);
        if (holder.subject == ZoCheckSubject::WeekProgram)
            for (int day = 1; day <= 7; ++day)
                CheckDayReference(context, table, holder, ZoFormat(ZoLoadString(64561).c_str(), day),
                                  WideValue(table, L"day" + std::to_wstring(day)));
        if (holder.subject == ZoCheckSubject::Calendar)
            CheckCalendarDates(context, table, holder);
        TableState const& state = context.TableOf(table.ValueUtf8(L"id"));
        if (!state.allowsAny)
            context.AddAt(ProjectDoc::TimeTables, holder.path, holder.subject, holder.name, state.id, ZoSeverity::Warning,
                          "time-table-never",
                          ZoFormat(ZoLoadString(64543).c_str(), context.fromText.c_str(), context.toText.c_str()));
    });
}

// A device of type "R$EVE" stands for an event: its id must be one.
void CheckRegistrations(Context& context)
{
    XmlNode const* deviceGroups =
        context.docs.devices ? context.docs.devices->Child(zo::project::kDeviceGroupsTag) : nullptr;
    if (!deviceGroups)
        return;
    // The events' pass marked every registration an event has.
    std::vector<XmlNode const*> pending{deviceGroups};
    for (std::size_t i = 0; i < pending.size(); ++i) {
        if (XmlNode const* devices = KeyChild(pending[i], context.devicesTags.devices))
            ForEachChild(devices, L"device", [&](XmlNode const& device, std::uint32_t) {
                if (KeyText(device, context.devicesTags.type) != zo::project::kEventDeviceTypeText)
                    return;
                Registration const* found = context.registrations.Find(KeyText(device, context.devicesTags.id));
                if (!found || found->matched)
                    return;
                std::wstring const id = WideValue(device, L"id");
                context.AddAt(ProjectDoc::Devices, PathOf(device), ZoCheckSubject::Registration, id, id,
                              ZoSeverity::Error, "orphan-registration", ZoFormat(ZoLoadString(64536).c_str(), id.c_str()));
            });
        if (XmlNode const* groups = KeyChild(pending[i], context.devicesTags.groups))
            for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
                pending.push_back(group);
    }
}

// The largest number of notifying, enabled events that their time tables let fire at one
// moment of the coming year: events without a time table count at every moment, those
// whose table resolves to nothing never (ZoPeakAllowed).
void CheckFloodBound(Context& context, int always, std::unordered_map<TableState const*, int> const& byTable)
{
    if (always == 0 && byTable.empty())
        return;
    std::vector<ZoCountedTable> counted;
    counted.reserve(byTable.size());
    for (auto const& [table, count] : byTable)
        counted.push_back({table->id, count});
    ZoPeak const peak = ZoPeakAllowed(context.timeTables, counted, always, context.from, context.to);
    if (peak.count == 0)
        return;
    int const minute = ZoMinuteOf(peak.moment);
    QDateTime const moment(ZoDateOf(peak.moment), QTime(minute / 60, minute % 60));
    // The day's name in the language of the messages.
    std::wstring const when = QLocale().toString(moment, QStringLiteral("ddd yyyy-MM-dd HH:mm")).toStdWString();
    context.AddAt(ProjectDoc::Events, {context.eventsPosition}, ZoCheckSubject::Project, L"", L"", ZoSeverity::Note,
                  "flood-bound", ZoFormat(ZoLoadString(64552).c_str(), peak.count, when.c_str()));
}

} // namespace

struct ProjectPass::State {
    explicit State(Context& context_, std::size_t events)
        : context(context_)
        , eventIds(context_, ProjectDoc::Events, events)
        , argumentIds(context_, ProjectDoc::Events, events)
        , actionIds(context_, ProjectDoc::Events, events * 4)
    {
    }

    Context& context;
    IdRegister eventIds;
    IdRegister argumentIds;
    IdRegister actionIds;
    // The notifying events with a condition, and the hash of each normalised condition:
    // only hashes are kept and sorted, and conditions are normalised again where hashes
    // meet.
    struct Notifying {
        XmlNode const* event;
        std::uint32_t position;
    };
    std::vector<Notifying> notifying;
    std::vector<std::pair<std::size_t, std::uint32_t>> conditionHashes; // (hash, index in notifying)
    void ReportDuplicates();
    // The notifying, enabled events: those without a time table, and the others by table.
    int always = 0;
    std::unordered_map<TableState const*, int> byTable;

    void CollectIds(EventUnderCheck const& event);
    void CollectDuplicate(EventUnderCheck const& event);
    void CollectFlood(EventUnderCheck const& event);
};

ProjectPass::ProjectPass(Context& context)
    : m_state(std::make_unique<State>(
          context, context.eventsElement ? static_cast<std::size_t>(context.eventsElement->Size()) : 0))
{
}

ProjectPass::~ProjectPass() = default;

void ProjectPass::State::CollectIds(EventUnderCheck const& event)
{
    eventIds.Enter(event.Utf8(KeyId), {&event.node});
    int number = 0;
    if (XmlNode const* arguments = event.Child(KeyArguments))
        for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling())
            if (argument->HasTag(L"argument"))
                argumentIds.Enter(KeyText(*argument, context.eventsTags.id),
                                  {&event.node, ZoCheckSubject::Event, ZoCheckField::Argument, -1, -1, ++number});
    for (int list = 0; list < 2; ++list) {
        XmlNode const* side = event.Child(static_cast<EventKey>(KeyActions + list));
        for (int moment = 0; side && moment < 4; ++moment) {
            XmlNode const* actionsOfMoment = KeyChild(side, context.eventsTags.moments[moment]);
            int index = 0;
            for (XmlNode const* action = actionsOfMoment ? actionsOfMoment->FirstChild() : nullptr; action;
                 action = action->NextSibling())
                actionIds.Enter(KeyText(*action, context.eventsTags.id),
                                {&event.node, ZoCheckSubject::Event, ZoCheckField::Action, static_cast<std::int8_t>(list),
                                 static_cast<std::int8_t>(moment), ++index});
        }
    }
}

// Two notifying events with the same condition (once normalised) most likely tell the
// operator the same thing twice.
void ProjectPass::State::CollectDuplicate(EventUnderCheck const& event)
{
    if (event.Utf8(KeyNotify) != "T")
        return;
    std::string_view const condition = event.Utf8(KeyCondition);
    if (condition.empty())
        return;
    conditionHashes.emplace_back(std::hash<std::string>()(ZoNormalisedFormula(condition)),
                                 static_cast<std::uint32_t>(notifying.size()));
    notifying.push_back({&event.node, event.position});
}

void ProjectPass::State::ReportDuplicates()
{
    DocumentTags const& tags = context.eventsTags;
    auto const normalised = [&](std::uint32_t index) {
        return ZoNormalisedFormula(KeyText(*notifying[index].event, tags.condition));
    };
    auto const twice = RepeatedValues(conditionHashes, normalised); // indexes in notifying
    for (auto const& [later, first] : twice) {
        XmlNode const& event = *notifying[later].event;
        std::wstring const other = ZoFromUtf8(KeyText(*notifying[first].event, tags.name));
        ZoFinding& finding = context.AddAt(ProjectDoc::Events, {context.eventsPosition, notifying[later].position},
                                           ZoCheckSubject::Event, ZoFromUtf8(KeyText(event, tags.name)),
                                           ZoFromUtf8(KeyText(event, tags.id)), ZoSeverity::Warning,
                                           "likely-duplicate", ZoFormat(ZoLoadString(64551).c_str(), other.c_str()));
        finding.field = ZoCheckField::Condition;
    }
}

void ProjectPass::State::CollectFlood(EventUnderCheck const& event)
{
    if (!ZoNotifiesWhenAllowed(event.Utf8(KeyNotify), event.Utf8(KeyDisabled)))
        return;
    std::string_view const table = event.Utf8(KeyTimeTable);
    if (table.empty()) {
        ++always;
        return;
    }
    // The event's rules looked its table up already.
    ++byTable[event.table ? event.table : &context.TableOf(table)];
}

void ProjectPass::Collect(EventUnderCheck const& event)
{
    m_state->CollectIds(event);
    m_state->CollectDuplicate(event);
    m_state->CollectFlood(event);
}

void ProjectPass::Report()
{
    State& state = *m_state;
    Context& context = state.context;
    state.eventIds.Report();
    state.actionIds.Report();
    state.argumentIds.Report();
    CheckTimeTableIds(context);
    CheckGroups(context);
    CheckTimeTables(context);
    CheckRegistrations(context);
    state.ReportDuplicates();
    CheckFloodBound(context, state.always, state.byTable);
    CheckTemplateDrift(context);
}

} // namespace zo::check
