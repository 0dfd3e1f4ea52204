#pragma once
#include "config/XmlDocument.h"

#include <string_view>

// Readers of an element's keys by their interned tags (see XmlDocument::TagKey), on the
// tree's UTF-8 texts: no wide copy is made and no tag is compared as text.
namespace zo::xml {

// The first direct child whose interned tag is key, or null (also when key is null).
inline XmlDocument::XmlNode const* ChildByKey(XmlDocument::XmlNode const& parent, void const* key)
{
    if (!key)
        return nullptr;
    for (XmlDocument::XmlNode const* child = parent.FirstChild(); child; child = child->NextSibling())
        if (child->TagKey() == key)
            return child;
    return nullptr;
}

// The text of that child, empty when there is none.
inline std::string_view TextOf(XmlDocument::XmlNode const& parent, void const* key)
{
    XmlDocument::XmlNode const* child = ChildByKey(parent, key);
    return child ? child->TextUtf8() : std::string_view();
}

// Calls visit(child, text) for every child of parent whose interned tag is childTag, in
// document order, with the text of the child's key keyTag (TextOf). The keys of one child lie
// far from those of the next, and their texts farther: the walk fetches the keys of the child
// four ahead and the key's text of the one two ahead, so that a walk over many thousand
// children does not wait on memory at each one.
template <class Visit>
void ForEachKeyText(XmlDocument::XmlNode const& parent, void const* childTag, void const* keyTag, Visit&& visit)
{
    XmlDocument::XmlNode const* ahead2 = parent.FirstChild();
    XmlDocument::XmlNode const* ahead4 = ahead2;
    for (int i = 0; i < 4 && ahead4; ++i) {
        ahead4 = ahead4->NextSibling();
        if (i == 1)
            ahead2 = ahead4;
    }
    for (XmlDocument::XmlNode const* child = parent.FirstChild(); child; child = child->NextSibling()) {
        if (ahead4) {
            __builtin_prefetch(ahead4->FirstChild());
            ahead4 = ahead4->NextSibling();
        }
        if (ahead2) {
            __builtin_prefetch(TextOf(*ahead2, keyTag).data());
            ahead2 = ahead2->NextSibling();
        }
        if (childTag && child->TagKey() == childTag)
            visit(*child, TextOf(*child, keyTag));
    }
}

} // namespace zo::xml
