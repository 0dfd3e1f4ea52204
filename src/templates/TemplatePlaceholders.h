#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <string_view>
#include <vector>

// The placeholders of an event template and how a device fills them in.
//
// Any text of a template (name, description, conditions, delays, argument values,
// annotations, force variables and values, action texts) may hold `{device}`, which
// becomes the device's name, and `{description}`, which becomes its description. A formula
// therefore names a variable of the device being stamped as `[{device}.CODE]`. Every other
// brace is left as it is. Ids never hold a placeholder (a GUID text has only hex digits
// between its braces), so a template's whole tree is filled in without a list of keys.
namespace zo::templates {

inline constexpr std::string_view kDevicePlaceholder = "{device}";
inline constexpr std::string_view kDescriptionPlaceholder = "{description}";

// What the placeholders become for one device, as stored (UTF-8).
struct DeviceTexts {
    std::string name;
    std::string description;
};

// True when the text holds a placeholder.
bool HasPlaceholder(std::string_view text);

// The text with every placeholder replaced, appended to out.
void AppendFilledIn(std::string& out, std::string_view text, DeviceTexts const& device);
std::string FilledIn(std::string_view text, DeviceTexts const& device);
std::wstring FilledIn(std::wstring_view text, DeviceTexts const& device);

// Fills in every text of the element's subtree (itself included), in place.
void FillInTree(XmlDocument::XmlNode& element, DeviceTexts const& device);

// The codes of the device's variables that the texts of the template's subtree name as
// `[{device}.CODE]`, each once, in the order first met. A device lacking one of them
// cannot be stamped.
std::vector<std::wstring> UsedVariables(XmlDocument::XmlNode const& element);

} // namespace zo::templates
