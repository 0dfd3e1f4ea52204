#pragma once
#include "config/XmlDocument.h"

#include <string_view>

// Small readers of catalog keys, on the tree's UTF-8 texts (no wide copy is made).
namespace zo::catalog {

using XmlNode = XmlDocument::XmlNode;

// The first direct child whose interned tag is key (see XmlDocument::TagKey), or null.
inline XmlNode const* ChildByKey(XmlNode const& parent, void const* key)
{
    if (!key)
        return nullptr;
    for (XmlNode const* child = parent.FirstChild(); child; child = child->NextSibling())
        if (child->TagKey() == key)
            return child;
    return nullptr;
}

inline std::string_view TextOf(XmlNode const& parent, void const* key)
{
    XmlNode const* child = ChildByKey(parent, key);
    return child ? child->TextUtf8() : std::string_view();
}

// The text without blanks (space, tab, CR, LF) at either end.
std::string_view Trimmed(std::string_view text);
// A decimal number (blanks around it allowed, a leading "+" too); false when the text is
// not one number.
bool ReadNumber(std::string_view text, double& value);

} // namespace zo::catalog
