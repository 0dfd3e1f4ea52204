#include "XmlFileText.h"

#include "config/XmlDocument.h"

std::string XmlFileText(XmlDocument const& doc)
{
    std::string text;
    if (!doc.Root())
        return text;
    text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    doc.Root()->AppendXmlCode(text, 2);
    text.push_back('\n');
    return text;
}
