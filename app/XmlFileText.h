#pragma once
#include <string>

class XmlDocument;

// The text a project file holds for a document: its XML with a declaration, indented for
// people who read the files or compare them in version control (the tree's own indented
// form, which reads back as the same tree).
std::string XmlFileText(XmlDocument const& doc);
