#pragma once
#include "XmlDocument.h"

#include <string_view>

namespace zo::xml {

// The element the path designates from start (see XmlNode::Node), or null.
XmlDocument::XmlNode* FindPath(XmlDocument::XmlNode const* start, wchar_t const* path);
// The first child holding property `key` (a tag of node's document), read through a lazy
// element without making it grow. The result may lie in another document: read it only.
XmlDocument::XmlNode const* PropertyNode(XmlDocument::XmlNode const* node, std::string_view key);
// Whether a key names a property directly (no "/" or "?").
bool IsPlainKey(wchar_t const* key);

} // namespace zo::xml
