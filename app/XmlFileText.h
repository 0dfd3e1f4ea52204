#pragma once
#include <string>

class XmlDocument;

// The text a project file holds for a document: the document's own XML, indented for
// people who read the files or compare them in version control. The indented form is used
// only when parsing it gives back exactly the same tree; otherwise the compact text that
// the document writes itself is used.
std::string XmlFileText(XmlDocument const& doc);
