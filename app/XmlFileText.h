#pragma once
#include <functional>
#include <string>
#include <string_view>

class XmlDocument;

// The text a project file holds for a document: its XML with a declaration, indented for
// people who read the files or compare them in version control (the tree's own indented
// form, which reads back as the same tree).
std::string XmlFileText(XmlDocument const& doc);
// The same text handed to write in blocks as it is made (a large project is never held
// whole as text); false as soon as write fails.
bool WriteXmlFileText(XmlDocument const& doc, std::function<bool(std::string_view)> const& write);
