#include "actions/ZoActionDuplicates.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

bool IsOther(XmlNode const& sibling, std::string_view id)
{
    return sibling.ValueUtf8(L"id") != id;
}

} // namespace

bool ZoIsForcedElsewhere(XmlNode const* moment, XmlNode const& action, std::wstring_view variable)
{
    if (!moment)
        return false;
    std::string_view const id = action.ValueUtf8(L"id");
    std::wstring const wanted(variable);
    for (XmlNode const* sibling = moment->FirstChild(); sibling; sibling = sibling->NextSibling()) {
        if (sibling->HasTag(L"force") && IsOther(*sibling, id) && sibling->Value(L"variable", L"") == wanted)
            return true;
    }
    return false;
}

bool ZoRepeatsStoredCommand(XmlNode const* moment, XmlNode const& action)
{
    if (!moment)
        return false;
    std::string_view const command = action.ValueUtf8(L"command");
    std::string_view const parameter = action.ValueUtf8(L"parameter");
    std::string_view const id = action.ValueUtf8(L"id");
    for (XmlNode const* sibling = moment->FirstChild(); sibling; sibling = sibling->NextSibling()) {
        if (sibling->HasTag(L"shellExecute") && sibling->ValueUtf8(L"command") == command
            && sibling->ValueUtf8(L"parameter") == parameter && IsOther(*sibling, id))
            return true;
    }
    return false;
}
