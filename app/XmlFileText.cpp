#include "XmlFileText.h"

#include "config/XmlDocument.h"

#include <pugixml.hpp>

namespace {

struct StringWriter : pugi::xml_writer {
    std::string* out;
    explicit StringWriter(std::string* target) : out(target) {}
    void write(void const* data, std::size_t size) override
    {
        out->append(static_cast<char const*>(data), size);
    }
};

std::string Indented(std::string const& compact)
{
    pugi::xml_document doc;
    unsigned const flags = pugi::parse_default | pugi::parse_ws_pcdata_single;
    if (!doc.load_buffer(compact.data(), compact.size(), flags, pugi::encoding_utf8))
        return {};
    std::string out;
    out.reserve(compact.size() + compact.size() / 2);
    StringWriter writer(&out);
    doc.save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
    return out;
}

} // namespace

std::string XmlFileText(XmlDocument const& doc)
{
    std::string compact;
    if (!doc.Root())
        return compact;
    doc.Root()->CreateXmlCode(compact);

    std::string indented = Indented(compact);
    if (indented.empty())
        return compact;
    XmlDocument check;
    if (!check.Parse(indented.c_str(), indented.size()) || !check.Root())
        return compact;
    std::string again;
    check.Root()->CreateXmlCode(again);
    return again == compact ? indented : compact;
}
