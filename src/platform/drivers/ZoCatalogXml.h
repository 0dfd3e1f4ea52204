#pragma once
#include "config/XmlDocument.h"
#include "config/XmlKeys.h"

#include <string_view>

// Small readers of catalog keys, on the tree's UTF-8 texts (no wide copy is made).
namespace zo::catalog {

using XmlNode = XmlDocument::XmlNode;

using zo::xml::ChildByKey;
using zo::xml::TextOf;

// The text without blanks (space, tab, CR, LF) at either end.
std::string_view Trimmed(std::string_view text);
// A decimal number (blanks around it allowed, a leading "+" too); false when the text is
// not one number.
bool ReadNumber(std::string_view text, double& value);

} // namespace zo::catalog
