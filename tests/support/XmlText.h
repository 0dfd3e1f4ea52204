#pragma once
// The compact XML text of an element, as the tree tests compare trees.
#include "config/XmlDocument.h"

#include <string>

inline std::string Xml(XmlDocument::XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}
