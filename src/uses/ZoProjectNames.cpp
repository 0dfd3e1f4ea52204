#include "uses/ZoProjectNames.h"

#include "platform/tools/ZoUtf.h"
#include "uses/ZoEventFields.h"

#include <QString>

namespace zo::uses {

namespace {

using XmlNode = XmlDocument::XmlNode;

// The first child with tag `tag` of container whose `key` is name (UTF-8, exact).
XmlNode const* ChildNamed(XmlNode const* container, wchar_t const* tag, wchar_t const* key, std::string_view name)
{
    for (XmlNode const* child = container ? container->FirstChild() : nullptr; child; child = child->NextSibling())
        if (child->HasTag(tag) && child->ValueUtf8(key) == name)
            return child;
    return nullptr;
}

std::wstring IdOf(XmlNode const* element)
{
    return element ? ZoFromUtf8(element->ValueUtf8(L"id")) : std::wstring();
}

} // namespace

XmlNode const* FindDriver(XmlNode const* deviceTree, std::wstring_view name)
{
    XmlNode const* catalog = deviceTree ? deviceTree->Child(L"catalog") : nullptr;
    return ChildNamed(catalog, L"driver", L"name", ZoToUtf8(name));
}

XmlNode const* FindVariable(XmlNode const* driver, std::wstring_view code)
{
    return ChildNamed(driver, L"variable", L"code", ZoToUtf8(code));
}

XmlNode const* FindEvent(XmlNode const* eventsRoot, std::wstring_view name)
{
    return ChildNamed(EventsElement(eventsRoot), L"event", L"name", ZoToUtf8(name));
}

XmlNode const* FindEventFolded(XmlNode const* eventsRoot, std::wstring_view name, XmlNode const* except)
{
    QString const wanted = QString::fromWCharArray(name.data(), static_cast<qsizetype>(name.size()));
    XmlNode const* events = EventsElement(eventsRoot);
    for (XmlNode const* event = events ? events->FirstChild() : nullptr; event; event = event->NextSibling()) {
        if (event == except || !event->HasTag(L"event"))
            continue;
        std::string_view const stored = event->ValueUtf8(L"name");
        if (QString::fromUtf8(stored.data(), static_cast<qsizetype>(stored.size()))
                .compare(wanted, Qt::CaseInsensitive) == 0)
            return event;
    }
    return nullptr;
}

std::wstring FindTimeTableId(XmlNode const* timeTablesRoot, std::wstring_view name)
{
    std::string const wanted = ZoToUtf8(name);
    for (auto [container, tag] : {std::pair{L"days", L"day"}, {L"weeks", L"week"}, {L"calendars", L"calendar"}}) {
        XmlNode const* parent = timeTablesRoot ? timeTablesRoot->Child(container) : nullptr;
        if (XmlNode const* table = ChildNamed(parent, tag, L"name", wanted))
            return IdOf(table);
    }
    return {};
}

std::wstring FindGroupId(XmlNode const* eventsRoot, std::wstring_view name)
{
    XmlNode const* groups = eventsRoot ? eventsRoot->Child(L"eventsGroups") : nullptr;
    return IdOf(ChildNamed(groups, L"eventsGroup", L"name", ZoToUtf8(name)));
}

std::wstring FindRecipientId(XmlNode const* usersRoot, std::wstring_view kind, std::wstring_view name)
{
    QString const which = QString::fromWCharArray(kind.data(), static_cast<qsizetype>(kind.size())).toLower();
    wchar_t const* container = L"users";
    wchar_t const* tag = L"user";
    if (which == QLatin1String("maillist")) {
        container = L"mailLists";
        tag = L"mailList";
    } else if (which == QLatin1String("phonelist")) {
        container = L"phoneLists";
        tag = L"phoneList";
    }
    XmlNode const* parent = usersRoot ? usersRoot->Child(container) : nullptr;
    return IdOf(ChildNamed(parent, tag, L"name", ZoToUtf8(name)));
}

} // namespace zo::uses
