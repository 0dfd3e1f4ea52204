#include "groups/GroupNameCheck.h"
#include "platform/tools/ZoIds.h"

unsigned CheckGroupName(std::wstring const& name, XmlDocument::XmlNode const* group,
                        XmlDocument::XmlNode const* groups)
{
    if (name.empty())
        return 32907;
    if (!IsValidId(name.c_str(), true))
        return 32764;
    XmlDocument::XmlNode const* same = groups ? groups->NodeV(L"eventsGroup?name=%s?", name.c_str()) : nullptr;
    if (same && same != group)
        return 32908;
    return 0;
}
