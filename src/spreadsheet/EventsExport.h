#pragma once
#include "config/XmlDocument.h"

#include <cstddef>
#include <string>

// The events sheet: a header of the column names, then one row per event in the order of
// the document, as comma-separated UTF-8 text with a byte-order mark (docs/spreadsheet.md).
// Returns the number of events written.
std::size_t ZoExportEvents(XmlDocument::XmlNode const* eventsRoot, XmlDocument::XmlNode const* timeTablesRoot,
                           std::string& out);
