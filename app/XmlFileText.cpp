#include "XmlFileText.h"

#include "config/XmlDocument.h"

namespace {

constexpr int kIndent = 2;
constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

} // namespace

bool WriteXmlFileText(XmlDocument const& doc, std::function<bool(std::string_view)> const& write)
{
    if (!doc.Root())
        return true;
    return write(kDeclaration) && doc.Root()->WriteXmlCode(write, kIndent) && write("\n");
}

std::string XmlFileText(XmlDocument const& doc)
{
    std::string text;
    WriteXmlFileText(doc, [&text](std::string_view block) {
        text.append(block);
        return true;
    });
    return text;
}
