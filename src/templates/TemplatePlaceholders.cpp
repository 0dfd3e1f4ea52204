#include "templates/TemplatePlaceholders.h"

#include "platform/tools/ZoUtf.h"

#include <algorithm>

namespace zo::templates {

using XmlNode = XmlDocument::XmlNode;

namespace {

// The next element of the subtree below root in document order, or null.
XmlNode* NextInTree(XmlNode const* node, XmlNode const* root)
{
    if (XmlNode* child = node->FirstChild())
        return child;
    for (; node && node != root; node = node->Parent()) {
        if (XmlNode* next = node->NextSibling())
            return next;
    }
    return nullptr;
}

} // namespace

bool HasPlaceholder(std::string_view text)
{
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
        std::string_view const rest = text.substr(at);
        if (rest.starts_with(kDevicePlaceholder) || rest.starts_with(kDescriptionPlaceholder))
            return true;
    }
    return false;
}

void AppendFilledIn(std::string& out, std::string_view text, DeviceTexts const& device)
{
    std::size_t from = 0;
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
        std::string_view const rest = text.substr(at);
        std::string_view placeholder;
        std::string const* value = nullptr;
        if (rest.starts_with(kDevicePlaceholder)) {
            placeholder = kDevicePlaceholder;
            value = &device.name;
        } else if (rest.starts_with(kDescriptionPlaceholder)) {
            placeholder = kDescriptionPlaceholder;
            value = &device.description;
        } else {
            continue;
        }
        out.append(text.substr(from, at - from));
        out.append(*value);
        from = at + placeholder.size();
        at = from - 1;
    }
    out.append(text.substr(from));
}

std::string FilledIn(std::string_view text, DeviceTexts const& device)
{
    std::string out;
    AppendFilledIn(out, text, device);
    return out;
}

std::wstring FilledIn(std::wstring_view text, DeviceTexts const& device)
{
    return ZoFromUtf8(FilledIn(ZoToUtf8(text), device));
}

void FillInTree(XmlNode& element, DeviceTexts const& device)
{
    std::string buffer;
    for (XmlNode* node = &element; node; node = NextInTree(node, &element)) {
        std::string_view const text = node->TextUtf8();
        if (!HasPlaceholder(text))
            continue;
        buffer.clear();
        AppendFilledIn(buffer, text, device);
        node->SetValueUtf8(buffer);
    }
}

std::vector<std::wstring> UsedVariables(XmlNode const& element)
{
    static constexpr std::string_view kOpening = "[{device}.";
    std::vector<std::string> codes;
    for (XmlNode const* node = &element; node; node = NextInTree(node, &element)) {
        std::string_view const text = node->TextUtf8();
        for (std::size_t at = text.find(kOpening); at != std::string_view::npos;
             at = text.find(kOpening, at + 1)) {
            std::size_t const start = at + kOpening.size();
            std::size_t const end = text.find(']', start);
            if (end == std::string_view::npos || end == start)
                continue;
            std::string_view const code = text.substr(start, end - start);
            if (std::find(codes.begin(), codes.end(), code) == codes.end())
                codes.emplace_back(code);
        }
    }
    std::vector<std::wstring> result;
    result.reserve(codes.size());
    for (std::string const& code : codes)
        result.push_back(ZoFromUtf8(code));
    return result;
}

} // namespace zo::templates
