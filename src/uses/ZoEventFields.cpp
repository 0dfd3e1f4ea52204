#include "uses/ZoEventFields.h"

#include "platform/tools/ZoUtf.h"

#include <array>

namespace zo::uses {

namespace {

// The interned tags the walk compares, looked up once per walk.
struct Tags {
    explicit Tags(XmlDocument const& document)
    {
        auto const key = [&](wchar_t const* tag) { return document.TagKey(tag); };
        event = key(L"event");
        name = key(L"name");
        condition = key(L"condition");
        conditionStop = key(L"conditionStop");
        delayActivate = key(L"delayToActivate");
        delayDeactivate = key(L"delayToDeactivate");
        timeTable = key(L"timeTable");
        eventsGroups = key(L"eventsGroups");
        eventsGroup = key(L"eventsGroup");
        arguments = key(L"arguments");
        argument = key(L"argument");
        value = key(L"value");
        variable = key(L"variable");
        lists = {key(L"actions"), key(L"clientActions")};
        moments = {key(L"activate"), key(L"while"), key(L"deactivate"), key(L"acknowledge")};
        force = key(L"force");
        device = key(L"device");
        screen = key(L"screen");
        report = key(L"report");
        users = key(L"users");
        mailLists = key(L"mailLists");
        phoneLists = key(L"phoneLists");
    }
    void const* event;
    void const* name;
    void const* condition;
    void const* conditionStop;
    void const* delayActivate;
    void const* delayDeactivate;
    void const* timeTable;
    void const* eventsGroups;
    void const* eventsGroup;
    void const* arguments;
    void const* argument;
    void const* value;
    void const* variable;
    std::array<void const*, 2> lists;
    std::array<void const*, 4> moments;
    void const* force;
    void const* device;
    void const* screen;
    void const* report;
    void const* users;
    void const* mailLists;
    void const* phoneLists;
};

using Visit = std::function<void(FieldPlace const&, FieldKind, XmlNode const&)>;

XmlNode const* ChildWith(XmlNode const& parent, void const* tag)
{
    if (!tag)
        return nullptr;
    for (XmlNode const* child = parent.FirstChild(); child; child = child->NextSibling())
        if (child->TagKey() == tag)
            return child;
    return nullptr;
}

// Each child of every container of `containers` under action is a recipient id.
void VisitRecipients(XmlNode const& action, Tags const& tags, FieldPlace const& place, Visit const& visit)
{
    for (void const* containerTag : {tags.users, tags.mailLists, tags.phoneLists}) {
        if (XmlNode const* container = ChildWith(action, containerTag))
            for (XmlNode const* recipient = container->FirstChild(); recipient; recipient = recipient->NextSibling())
                visit(place, FieldKind::Recipient, *recipient);
    }
}

void VisitAction(XmlNode const& action, Tags const& tags, FieldPlace const& place, Visit const& visit)
{
    void const* const kind = action.TagKey();
    if (kind == tags.force) {
        if (XmlNode const* variable = ChildWith(action, tags.variable))
            visit(place, FieldKind::Formula, *variable);
        if (XmlNode const* value = ChildWith(action, tags.value))
            visit(place, FieldKind::Formula, *value);
        return;
    }
    FieldKind named = FieldKind::DeviceName;
    if (kind == tags.screen)
        named = FieldKind::ScreenName;
    else if (kind == tags.report)
        named = FieldKind::ReportName;
    else if (kind != tags.device) {
        VisitRecipients(action, tags, place, visit);
        return;
    }
    if (XmlNode const* name = ChildWith(action, tags.name))
        visit(place, named, *name);
}

void VisitActions(XmlNode const& event, Tags const& tags, FieldPlace place, Visit const& visit)
{
    place.field = ZoCheckField::Action;
    for (int list = 0; list < 2; ++list) {
        XmlNode const* actions = ChildWith(event, tags.lists[list]);
        if (!actions)
            continue;
        place.list = list;
        for (int moment = 0; moment < 4; ++moment) {
            XmlNode const* actionsOfMoment = ChildWith(*actions, tags.moments[moment]);
            if (!actionsOfMoment)
                continue;
            place.moment = moment;
            place.index = 0;
            for (XmlNode const* action = actionsOfMoment->FirstChild(); action; action = action->NextSibling()) {
                ++place.index;
                VisitAction(*action, tags, place, visit);
            }
        }
    }
}

// The event's keys in the editor's order; each event's children are read once.
enum Key { KName, KCondition, KConditionStop, KDelayActivate, KDelayDeactivate, KTimeTable, KGroups, KArguments,
           KCount };

void VisitEvent(XmlNode const& event, Tags const& tags, FieldPlace place, Visit const& visit)
{
    void const* const keyTags[KCount] = {tags.name,          tags.condition,       tags.conditionStop,
                                         tags.delayActivate, tags.delayDeactivate, tags.timeTable,
                                         tags.eventsGroups,  tags.arguments};
    std::array<XmlNode const*, KCount> keys{};
    for (XmlNode const* child = event.FirstChild(); child; child = child->NextSibling())
        for (int key = 0; key < KCount; ++key)
            if (child->TagKey() == keyTags[key] && keyTags[key]) {
                if (!keys[key])
                    keys[key] = child;
                break;
            }
    static constexpr struct {
        Key key;
        ZoCheckField field;
        FieldKind kind;
    } kSimple[] = {
        {KName, ZoCheckField::Name, FieldKind::EventName},
        {KCondition, ZoCheckField::Condition, FieldKind::Formula},
        {KConditionStop, ZoCheckField::StopCondition, FieldKind::Formula},
        {KDelayActivate, ZoCheckField::DelayActivate, FieldKind::Formula},
        {KDelayDeactivate, ZoCheckField::DelayDeactivate, FieldKind::Formula},
        {KTimeTable, ZoCheckField::TimeTable, FieldKind::TimeTable},
    };
    for (auto const& simple : kSimple) {
        if (XmlNode const* node = keys[simple.key]) {
            place.field = simple.field;
            visit(place, simple.kind, *node);
        }
    }
    if (XmlNode const* groups = keys[KGroups]) {
        place.field = ZoCheckField::Groups;
        for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
            if (group->TagKey() == tags.eventsGroup)
                visit(place, FieldKind::Group, *group);
    }
    if (XmlNode const* arguments = keys[KArguments]) {
        place.field = ZoCheckField::Argument;
        place.index = 0;
        for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling()) {
            ++place.index;
            if (XmlNode const* value = ChildWith(*argument, tags.value))
                visit(place, FieldKind::Formula, *value);
        }
        place.index = 0;
    }
    VisitActions(event, tags, place, visit);
}

} // namespace

void ForEachEventField(XmlNode const* eventsRoot, Visit const& visit)
{
    XmlNode const* events = EventsElement(eventsRoot);
    if (!events)
        return;
    Tags const tags(*eventsRoot->Document());
    FieldPlace place;
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling(), ++place.position) {
        if (event->TagKey() != tags.event)
            continue;
        place.event = event;
        VisitEvent(*event, tags, place, visit);
    }
}

ZoFinding PlaceFinding(XmlNode const* eventsRoot, FieldPlace const& place)
{
    ZoFinding finding;
    finding.severity = ZoSeverity::Note;
    finding.file = zo::project::ProjectDoc::Events;
    finding.subject = ZoCheckSubject::Event;
    XmlNode const* events = EventsElement(eventsRoot);
    finding.path = {events ? PositionIn(*events) : 0u, place.position};
    if (place.event) {
        finding.name = ZoFromUtf8(place.event->ValueUtf8(L"name"));
        finding.id = ZoFromUtf8(place.event->ValueUtf8(L"id"));
    }
    finding.field = place.field;
    finding.list = place.list;
    finding.moment = place.moment;
    finding.index = place.index;
    return finding;
}

XmlNode const* EventsElement(XmlNode const* eventsRoot)
{
    if (!eventsRoot)
        return nullptr;
    return eventsRoot->HasTag(L"events") ? eventsRoot : eventsRoot->Child(L"events");
}

std::uint32_t PositionIn(XmlNode const& child)
{
    std::uint32_t position = 0;
    XmlNode const* parent = child.Parent();
    for (XmlNode const* sibling = parent ? parent->FirstChild() : nullptr; sibling && sibling != &child;
         sibling = sibling->NextSibling())
        ++position;
    return position;
}

} // namespace zo::uses
