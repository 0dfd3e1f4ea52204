#include "check/ZoCheckContext.h"

#include "actions/ZoScreenReportNames.h"
#include "config/XmlKeys.h"
#include "editor/ZoEventFields.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "platform/drivers/ZoEventVariables.h"
#include "project/ProjectFiles.h"

#include <limits>

using namespace zo::check;
using zo::project::ProjectDoc;

namespace zo::check {

std::uint32_t PositionOf(XmlNode const& child)
{
    std::uint32_t position = 0;
    XmlNode const* parent = child.Parent();
    for (XmlNode const* node = parent ? parent->FirstChild() : nullptr; node && node != &child;
         node = node->NextSibling())
        ++position;
    return position;
}

EventKeyTags EventKeyTagsOf(XmlDocument const& events)
{
    static constexpr wchar_t const* kTags[KeyCount] = {
        L"name",       L"id",           L"condition",     L"conditionStop", L"delayToActivate", L"delayToDeactivate",
        L"timeTable",  L"annotation",   L"deaAnnotation", L"ackAnnotation", L"arguments",       L"eventsGroups",
        L"notify",     L"disabled",     kZoActionSides[0], kZoActionSides[1]};
    EventKeyTags tags{};
    for (int key = 0; key < KeyCount; ++key)
        tags[key] = events.TagKey(kTags[key]);
    return tags;
}

DocumentTags::DocumentTags(XmlDocument const* document)
{
    if (!document)
        return;
    auto const tag = [document](wchar_t const* text) { return document->TagKey(text); };
    id = tag(L"id");
    name = tag(L"name");
    type = tag(L"type");
    notify = tag(L"notify");
    disabled = tag(L"disabled");
    condition = tag(L"condition");
    timeTable = tag(L"timeTable");
    arguments = tag(L"arguments");
    value = tag(L"value");
    devices = tag(L"devices");
    groups = tag(L"groups");
    for (int list = 0; list < 2; ++list)
        sides[list] = tag(kZoActionSides[list]);
    for (int moment = 0; moment < 4; ++moment)
        moments[moment] = tag(kZoActionMoments[moment]);
    variable = tag(L"variable");
    force = tag(L"force");
    device = tag(L"device");
    screen = tag(L"screen");
    report = tag(L"report");
    mail = tag(L"mail");
    sms = tag(L"sms");
}

std::string_view KeyText(XmlNode const& element, void const* tag)
{
    return zo::xml::TextOf(element, tag);
}

XmlNode const* KeyChild(XmlNode const* element, void const* tag)
{
    return element ? zo::xml::ChildByKey(*element, tag) : nullptr;
}

std::wstring WideValue(XmlNode const& element, std::wstring_view key)
{
    return ZoFromUtf8(element.ValueUtf8(key));
}

std::wstring const& WideInto(std::wstring& buffer, std::string_view utf8)
{
    buffer.clear();
    ZoAppendUtf8AsWide(buffer, utf8);
    return buffer;
}

std::wstring EventUnderCheck::Wide(EventKey key) const
{
    return keys[key] ? ZoFromUtf8(keys[key]->TextUtf8()) : std::wstring();
}

// The first child of each key, as Value and Child find it.
EventUnderCheck::EventUnderCheck(XmlNode const& event, std::uint32_t position_, EventKeyTags const& tags,
                                 std::wstring& nameText, std::wstring& idText)
    : node(event), position(position_), name(nameText), id(idText)
{
    for (XmlNode const* child = event.FirstChild(); child; child = child->NextSibling()) {
        void const* const tag = child->TagKey();
        for (int key = 0; key < KeyCount; ++key)
            if (tag == tags[key] && tag && !keys[key]) {
                keys[key] = child;
                break;
            }
    }
    WideInto(nameText, Utf8(KeyName));
    WideInto(idText, Utf8(KeyId));
}

} // namespace zo::check

namespace {

}

// Every device of the device groups element and of its nested groups, breadth first.
template <class Visit>
void ForEachRegisteredDevice(XmlNode const* deviceGroups, DocumentTags const& tags, Visit const& visit)
{
    std::vector<XmlNode const*> pending{deviceGroups};
    for (std::size_t i = 0; i < pending.size(); ++i) {
        XmlNode const* group = pending[i];
        if (!group)
            continue;
        if (XmlNode const* devices = KeyChild(group, tags.devices))
            for (XmlNode const* device = devices->FirstChild(); device; device = device->NextSibling())
                if (device->HasTag(L"device"))
                    visit(*device);
        if (XmlNode const* groups = KeyChild(group, tags.groups))
            for (XmlNode const* child = groups->FirstChild(); child; child = child->NextSibling())
                pending.push_back(child);
    }
}

namespace {

template <class Set, class Id>
void InsertIds(Set& ids, XmlNode const* container, wchar_t const* tag, Id const& id)
{
    if (!container)
        return;
    for (XmlNode const* element = container->FirstChild(); element; element = element->NextSibling())
        if (element->HasTag(tag))
            ids.emplace(id(*element));
}

std::wstring WideId(XmlNode const& element)
{
    return element.Value(L"id", L"");
}

std::string_view Utf8Id(XmlNode const& element)
{
    return element.ValueUtf8(L"id");
}

} // namespace

ZoProjectChecker::Context::Context(ZoProjectDocs givenDocs, ZoCheckOptions options)
    : docs(std::move(givenDocs))
    , from(options.from.isValid() ? options.from : QDate::currentDate())
    , to(from.addYears(1).addDays(-1))
    , catalog(options.catalog)
    , timeTables(docs.timeTables)
    , fromText(from.toString(Qt::ISODate).toStdWString())
    , toText(to.toString(Qt::ISODate).toStdWString())
{
    if (!catalog) {
        ownCatalog = std::make_unique<ZoDeviceCatalog>();
        ownCatalog->LoadDevices(docs.devices);
        eventsPending = docs.events != nullptr;
        catalog = ownCatalog.get();
    }
    evaluator.SetCatalog(catalog);
    eventsElement = docs.events ? docs.events->Child(L"events") : nullptr;
    if (docs.events) {
        keyTags = EventKeyTagsOf(*docs.events->Document());
        eventsTags = DocumentTags(docs.events->Document());
    }
    if (docs.devices)
        devicesTags = DocumentTags(docs.devices->Document());
    if (eventsElement)
        eventsPosition = PositionOf(*eventsElement);
    if (docs.events)
        InsertIds(groupIds, docs.events->Child(L"eventsGroups"), L"eventsGroup", Utf8Id);
    IndexNames();
    IndexRegistrations();
    IndexFolder();
    IndexUsers();
}

void ZoProjectChecker::Context::NeedEventsIfNamed(std::wstring_view text)
{
    if (eventsPending && text.find(kZoEventsDevicePrefix) != std::wstring_view::npos) {
        ownCatalog->LoadEvents(docs.events);
        eventsPending = false;
    }
}

TableState const& ZoProjectChecker::Context::TableOf(std::string_view utf8Id)
{
    auto found = tableStates.find(utf8Id);
    if (found == tableStates.end()) {
        TableState state;
        state.id = ZoFromUtf8(utf8Id);
        state.known = timeTables.KindOf(state.id) != ZoTimeTableResolution::Kind::None;
        state.allowsAny = state.known && timeTables.AllowsAny(state.id, from, to);
        found = tableStates.emplace(std::string(utf8Id), std::move(state)).first;
    }
    return found->second;
}

std::wstring const& ZoProjectChecker::Context::Text(unsigned id)
{
    auto found = texts.find(id);
    if (found == texts.end())
        found = texts.emplace(id, ZoLoadString(id)).first;
    return found->second;
}

void ZoProjectChecker::Context::IndexNames()
{
    eventNames.Clear();
    nameAt.clear();
    countAt.clear();
    if (!eventsElement)
        return;
    std::size_t bytes = 0;
    for (XmlNode const* event = eventsElement->FirstChild(); event; event = event->NextSibling())
        bytes += KeyText(*event, eventsTags.name).size();
    nameBlock.reserve(bytes); // never grows past this, so the views stay valid
    nameAt.reserve(static_cast<std::size_t>(eventsElement->Size()));
    countAt.reserve(static_cast<std::size_t>(eventsElement->Size()));
    for (XmlNode const* event = eventsElement->FirstChild(); event; event = event->NextSibling()) {
        std::string_view const name = event->HasTag(L"event") ? KeyText(*event, eventsTags.name) : std::string_view();
        std::size_t const at = nameBlock.size();
        nameBlock.append(name);
        nameAt.emplace_back(nameBlock.data() + at, name.size());
    }
    eventNames.Enter(nameAt, [this](std::size_t i, int& count) {
        countAt.push_back(nameAt[i].empty() ? nullptr : &++count);
    });
}

int ZoProjectChecker::Context::NameCount(std::uint32_t position, std::string_view name) const
{
    if (position < countAt.size() && countAt[position] && nameAt[position] == name)
        return *countAt[position];
    int const* count = eventNames.Find(name);
    return count ? *count : 0;
}

void ZoProjectChecker::Context::IndexRegistrations()
{
    registrations.Clear();
    XmlNode const* deviceGroups = docs.devices ? docs.devices->Child(zo::project::kDeviceGroupsTag) : nullptr;
    std::vector<std::string_view> ids;
    if (eventsElement)
        ids.reserve(static_cast<std::size_t>(eventsElement->Size()));
    ForEachRegisteredDevice(deviceGroups, devicesTags, [this, &ids](XmlNode const& device) {
        if (KeyText(device, devicesTags.type) == zo::project::kEventDeviceTypeText)
            ids.push_back(KeyText(device, devicesTags.id));
    });
    registrations.Enter(ids, [](std::size_t, zo::check::Registration& registration) { ++registration.count; });
}

void ZoProjectChecker::Context::IndexFolder()
{
    if (docs.folder.empty())
        return;
    for (auto& name : ZoListProjectNames(docs.folder, ZoProjectFileKind::Screen))
        screens.insert(std::move(name));
    for (auto& name : ZoListProjectNames(docs.folder, ZoProjectFileKind::Report))
        reports.insert(std::move(name));
}

void ZoProjectChecker::Context::IndexUsers()
{
    if (!docs.users)
        return;
    InsertIds(users, docs.users->Child(L"users"), L"user", WideId);
    InsertIds(mailLists, docs.users->Child(L"mailLists"), L"mailList", WideId);
    InsertIds(phoneLists, docs.users->Child(L"phoneLists"), L"phoneList", WideId);
}

ZoFinding& ZoProjectChecker::Context::Add(EventUnderCheck const& event, ZoSeverity severity, std::string_view rule,
                                          ZoCheckField field, std::wstring message)
{
    ZoFinding& finding = AddAt(ProjectDoc::Events, {eventsPosition, event.position}, ZoCheckSubject::Event,
                               event.name, event.id, severity, rule, std::move(message));
    finding.field = field;
    finding.perEvent = true;
    return finding;
}

ZoFinding& ZoProjectChecker::Context::AddAt(ProjectDoc file, std::vector<std::uint32_t> path,
                                            ZoCheckSubject subject, std::wstring name, std::wstring id,
                                            ZoSeverity severity, std::string_view rule, std::wstring message)
{
    ZoFinding& finding = out->emplace_back();
    finding.severity = severity;
    finding.rule = rule;
    finding.file = file;
    finding.path = std::move(path);
    finding.subject = subject;
    finding.name = std::move(name);
    finding.id = std::move(id);
    finding.message = std::move(message);
    return finding;
}

namespace {

void CheckOneEvent(ZoProjectChecker::Context& context, EventUnderCheck const& event)
{
    CheckEventIdentity(context, event);
    CheckEventFormulas(context, event);
    CheckEventReferences(context, event);
    CheckEventActions(context, event);
}

} // namespace

ZoProjectChecker::ZoProjectChecker(ZoProjectDocs docs, ZoCheckOptions options)
    : m_context(std::make_unique<Context>(std::move(docs), options))
{
}

ZoProjectChecker::~ZoProjectChecker() = default;

std::vector<ZoFinding> ZoProjectChecker::CheckProject()
{
    std::vector<ZoFinding> findings;
    // Most projects have fewer findings than events: one allocation for most of them.
    if (m_context->eventsElement)
        findings.reserve(static_cast<std::size_t>(m_context->eventsElement->Size()));
    BeginProject();
    StepProject(std::numeric_limits<std::size_t>::max(), findings);
    return findings;
}

void ZoProjectChecker::BeginProject()
{
    Context& context = *m_context;
    context.delayOutcomes.clear(); // the catalog may have changed since the last check
    context.pass.reset();            // gathered over documents that may have changed since
    context.pass = std::make_unique<zo::check::ProjectPass>(context);
    context.next = context.eventsElement ? context.eventsElement->FirstChild() : nullptr;
    context.nextPosition = 0;
}

bool ZoProjectChecker::StepProject(std::size_t events, std::vector<ZoFinding>& findings)
{
    Context& context = *m_context;
    if (!context.pass)
        return true;
    context.out = &findings;
    for (std::size_t checked = 0; context.next && checked < events;
         context.next = context.next->NextSibling(), ++context.nextPosition) {
        if (context.next->HasTag(L"event")) {
            EventUnderCheck const event(*context.next, context.nextPosition, context.keyTags, context.eventName,
                                        context.eventId);
            CheckOneEvent(context, event);
            context.pass->Collect(event);
            ++checked;
        }
    }
    bool const finished = context.next == nullptr;
    if (finished) {
        context.pass->Report();
        context.pass.reset();
    }
    context.out = nullptr;
    return finished;
}

std::vector<ZoFinding> ZoProjectChecker::CheckEvent(std::uint32_t position)
{
    std::vector<ZoFinding> findings;
    Context& context = *m_context;
    XmlNode const* event = context.eventsElement ? context.eventsElement->FirstChild() : nullptr;
    for (std::uint32_t i = 0; event && i < position; ++i)
        event = event->NextSibling();
    if (!event || !event->HasTag(L"event"))
        return findings;
    // The event's name may have changed: the count of names follows.
    if (position < context.nameAt.size()) {
        std::string_view& old = context.nameAt[position];
        std::string_view const name = event->ValueUtf8(L"name");
        if (old != name) {
            // Only this position points at a count that falls to nothing.
            if (!old.empty())
                --context.eventNames[old];
            old = context.newNames.emplace_back(name);
            context.countAt[position] = old.empty() ? nullptr : &++context.eventNames[old];
        }
    }
    // The edit may have brought the document's first element of a tag (a first stop
    // condition, a first SMS action): the tags are interned again.
    context.keyTags = EventKeyTagsOf(*context.docs.events->Document());
    context.eventsTags = DocumentTags(context.docs.events->Document());
    context.out = &findings;
    context.delayOutcomes.clear(); // the edit may have renamed an event that a formula names
    CheckOneEvent(context, EventUnderCheck(*event, position, context.keyTags, context.eventName, context.eventId));
    context.out = nullptr;
    return findings;
}

std::vector<ZoFinding> ZoCheckProject(ZoProjectDocs const& docs, ZoCheckOptions const& options)
{
    return ZoProjectChecker(docs, options).CheckProject();
}

ZoCheckCounts ZoCountFindings(std::vector<ZoFinding> const& findings)
{
    ZoCheckCounts counts;
    for (ZoFinding const& finding : findings) {
        if (finding.severity == ZoSeverity::Error)
            ++counts.errors;
        else if (finding.severity == ZoSeverity::Warning)
            ++counts.warnings;
        else
            ++counts.notes;
    }
    return counts;
}
