// The rules over the project as a whole: ids and names shared between elements, the time
// tables, the device registrations, likely duplicates and the flood bound.
#include "check/ZoCheckContext.h"
#include "check/ZoFormulaShape.h"

#include "editor/ZoEventFields.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QDateTime>

#include <algorithm>
#include <map>

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

// Finds ids used twice among elements of one kind; the second holder is reported.
class IdRegister {
public:
    IdRegister(Context& context, ProjectDoc file) : m_context(context), m_file(file) {}

    // True when the id was new.
    bool Enter(std::string_view id, Holder holder, ZoCheckField field = ZoCheckField::Identity, int list = -1,
               int moment = -1, int index = 0)
    {
        if (id.empty())
            return true;
        auto const [first, inserted] = m_first.try_emplace(id, m_holders.size());
        if (inserted) {
            m_holders.push_back(std::move(holder));
            return true;
        }
        std::wstring const other = SubjectOf(m_holders[first->second]);
        ZoFinding& finding = m_context.AddAt(m_file, std::move(holder.path), holder.subject, holder.name,
                                             ZoFromUtf8(id), ZoSeverity::Error, "duplicate-id",
                                             ZoFormat(ZoLoadString(64533).c_str(), other.c_str()));
        finding.field = field;
        finding.list = list;
        finding.moment = moment;
        finding.index = index;
        return false;
    }

private:
    Context& m_context;
    ProjectDoc m_file;
    std::unordered_map<std::string_view, std::size_t> m_first; // views into the document
    std::vector<Holder> m_holders;
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

void CheckEventChildIds(Context& context)
{
    IdRegister arguments(context, ProjectDoc::Events);
    IdRegister actions(context, ProjectDoc::Events);
    ForEachChild(context.eventsElement, L"event", [&](XmlNode const& event, std::uint32_t position) {
        std::wstring const name = event.Value(L"name", L"");
        std::vector<std::uint32_t> const path{context.eventsPosition, position};
        int number = 0;
        ForEachChild(event.Child(L"arguments"), L"argument", [&](XmlNode const& argument, std::uint32_t) {
            arguments.Enter(argument.ValueUtf8(L"id"), {path, ZoCheckSubject::Event, name}, ZoCheckField::Argument,
                            -1, -1, ++number);
        });
        for (int list = 0; list < 2; ++list) {
            XmlNode const* side = event.Child(kZoActionSides[list]);
            for (int moment = 0; side && moment < 4; ++moment) {
                XmlNode const* moment_ = side->Child(kZoActionMoments[moment]);
                int index = 0;
                for (XmlNode const* action = moment_ ? moment_->FirstChild() : nullptr; action;
                     action = action->NextSibling())
                    actions.Enter(action->ValueUtf8(L"id"), {path, ZoCheckSubject::Event, name},
                                  ZoCheckField::Action, list, moment, ++index);
            }
        }
    });
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
            visit(table, Holder{{containerPosition, position}, kind.subject, table.Value(L"name", L"")});
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
                                             element.Value(L"id", L""), ZoSeverity::Error, rule, message);
        finding.field = ZoCheckField::Name;
    }

    Context& m_context;
    ProjectDoc m_file;
    std::unordered_map<std::wstring, Holder> m_first;
};

std::wstring DateText(QDate date)
{
    return date.toString(Qt::ISODate).toStdWString();
}

void CheckDayReference(Context& context, XmlNode const& table, Holder const& holder, std::wstring const& where,
                       std::wstring const& dayId)
{
    if (dayId.empty() || context.timeTables.HasDayProgram(dayId))
        return;
    context.AddAt(ProjectDoc::TimeTables, holder.path, holder.subject, holder.name, table.Value(L"id", L""),
                  ZoSeverity::Warning, "unknown-day-program",
                  ZoFormat(ZoLoadString(64539).c_str(), where.c_str(), dayId.c_str()));
}

void CheckCalendarDates(Context& context, XmlNode const& calendar, Holder const& holder)
{
    for (XmlNode const* year = calendar.FirstChild(); year; year = year->NextSibling()) {
        if (!year->HasTag(L"year"))
            continue;
        std::wstring const number = year->Value(L"year", L"");
        for (XmlNode const* month = year->FirstChild(); month; month = month->NextSibling()) {
            std::wstring const& tag = month->Tag();
            if (!tag.starts_with(L"month"))
                continue;
            for (XmlNode const* day = month->FirstChild(); day; day = day->NextSibling())
                CheckDayReference(context, calendar, holder,
                                  number + L"-" + tag.substr(5) + L"-" + day->Tag().substr(3), day->Value());
        }
    }
}

} // namespace

void CheckDuplicateIds(Context& context)
{
    IdRegister events(context, ProjectDoc::Events);
    ForEachChild(context.eventsElement, L"event", [&](XmlNode const& event, std::uint32_t position) {
        events.Enter(event.ValueUtf8(L"id"), {{context.eventsPosition, position}, ZoCheckSubject::Event,
                                              event.Value(L"name", L"")});
    });
    CheckEventChildIds(context);
    IdRegister tables(context, ProjectDoc::TimeTables);
    ForEachTimeTable(context, [&](XmlNode const& table, Holder holder) {
        tables.Enter(table.ValueUtf8(L"id"), std::move(holder));
    });
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
        Holder const holder{{groupsPosition, position}, ZoCheckSubject::Group, group.Value(L"name", L"")};
        ids.Enter(group.ValueUtf8(L"id"), holder);
        names.Enter(group, holder);
    });
}

void CheckTimeTables(Context& context)
{
    NameRegister names(context, ProjectDoc::TimeTables);
    ForEachTimeTable(context, [&](XmlNode const& table, Holder const& holder) {
        names.Enter(table, holder);
        if (holder.subject == ZoCheckSubject::WeekProgram)
            for (int day = 1; day <= 7; ++day)
                CheckDayReference(context, table, holder, ZoFormat(ZoLoadString(64561).c_str(), day),
                                  table.Value((L"day" + std::to_wstring(day)).c_str(), L""));
        if (holder.subject == ZoCheckSubject::Calendar)
            CheckCalendarDates(context, table, holder);
        std::wstring const id = table.Value(L"id", L"");
        if (!context.timeTables.AllowsAny(id, context.from, context.to))
            context.AddAt(ProjectDoc::TimeTables, holder.path, holder.subject, holder.name, id, ZoSeverity::Warning,
                          "time-table-never",
                          ZoFormat(ZoLoadString(64543).c_str(), DateText(context.from).c_str(),
                                   DateText(context.to).c_str()));
    });
}

// A device of type "R$EVE" stands for an event: its id must be one.
void CheckRegistrations(Context& context)
{
    XmlNode const* deviceGroups =
        context.docs.devices ? context.docs.devices->Child(zo::project::kDeviceGroupsTag) : nullptr;
    if (!deviceGroups)
        return;
    std::unordered_set<std::string_view> eventIds;
    ForEachChild(context.eventsElement, L"event", [&](XmlNode const& event, std::uint32_t) {
        eventIds.insert(event.ValueUtf8(L"id"));
    });
    std::vector<XmlNode const*> pending{deviceGroups};
    for (std::size_t i = 0; i < pending.size(); ++i) {
        if (XmlNode const* devices = pending[i]->Child(L"devices"))
            ForEachChild(devices, L"device", [&](XmlNode const& device, std::uint32_t) {
                if (device.ValueUtf8(L"type") != zo::project::kEventDeviceTypeText
                    || eventIds.contains(device.ValueUtf8(L"id")))
                    return;
                std::wstring const id = device.Value(L"id", L"");
                context.AddAt(ProjectDoc::Devices, PathOf(device), ZoCheckSubject::Registration, id, id,
                              ZoSeverity::Error, "orphan-registration", ZoFormat(ZoLoadString(64536).c_str(), id.c_str()));
            });
        if (XmlNode const* groups = pending[i]->Child(L"groups"))
            for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
                pending.push_back(group);
    }
}

// Two notifying events with the same condition (once normalised) most likely tell the
// operator the same thing twice.
void CheckLikelyDuplicates(Context& context)
{
    std::unordered_map<std::wstring, std::wstring> firstByCondition;
    ForEachChild(context.eventsElement, L"event", [&](XmlNode const& event, std::uint32_t position) {
        if (!IsTrue(event, L"notify"))
            return;
        std::wstring const condition = event.Value(L"condition", L"");
        if (condition.empty())
            return;
        std::wstring name = event.Value(L"name", L"");
        auto const [first, inserted] = firstByCondition.try_emplace(ZoNormalisedFormula(condition), name);
        if (inserted)
            return;
        ZoFinding& finding = context.AddAt(ProjectDoc::Events, {context.eventsPosition, position},
                                           ZoCheckSubject::Event, std::move(name), event.Value(L"id", L""),
                                           ZoSeverity::Warning, "likely-duplicate",
                                           ZoFormat(ZoLoadString(64551).c_str(), first->second.c_str()));
        finding.field = ZoCheckField::Condition;
    });
}

// The largest number of notifying, enabled events that their time tables let fire at one
// moment of the coming year: events without a time table count at every moment, those
// whose table resolves to nothing never. One sweep over the periods of each table used.
void CheckFloodBound(Context& context)
{
    int always = 0;
    std::map<std::wstring, int> byTable;
    ForEachChild(context.eventsElement, L"event", [&](XmlNode const& event, std::uint32_t) {
        if (!IsTrue(event, L"notify") || event.ValueUtf8(L"disabled") != "F")
            return;
        std::wstring const table = event.Value(L"timeTable", L"");
        if (table.empty())
            ++always;
        else
            ++byTable[table];
    });
    if (always == 0 && byTable.empty())
        return;
    // (minute from the first day, change in the count)
    std::vector<std::pair<long long, int>> changes;
    for (auto const& [table, count] : byTable) {
        for (auto const& period : context.timeTables.AllowedPeriods(table, context.from, context.to)) {
            long long const day = context.from.daysTo(period.date) * 1440LL;
            changes.emplace_back(day + period.slot.from, count);
            changes.emplace_back(day + period.slot.to, -count);
        }
    }
    std::sort(changes.begin(), changes.end()); // ends before starts at one minute
    int current = always;
    int best = always;
    long long bestMinute = 0;
    for (auto const& [minute, change] : changes) {
        current += change;
        if (current > best) {
            best = current;
            bestMinute = minute;
        }
    }
    if (best == 0)
        return;
    QDateTime const moment = QDateTime(context.from, QTime(0, 0)).addSecs(bestMinute * 60);
    std::wstring const when = moment.toString(QStringLiteral("ddd yyyy-MM-dd HH:mm")).toStdWString();
    context.AddAt(ProjectDoc::Events, {context.eventsPosition}, ZoCheckSubject::Project, L"", L"", ZoSeverity::Note,
                  "flood-bound", ZoFormat(ZoLoadString(64552).c_str(), best, when.c_str()));
}

} // namespace zo::check
