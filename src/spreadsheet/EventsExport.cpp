#include "spreadsheet/EventsExport.h"

#include "spreadsheet/CsvWriter.h"
#include "spreadsheet/SheetColumns.h"

using XmlNode = XmlDocument::XmlNode;

std::size_t ZoExportEvents(XmlNode const* eventsRoot, XmlNode const* timeTablesRoot, std::string& out)
{
    out.clear();
    ZoCsvWriter writer(out);
    writer.Begin();
    for (std::string_view header : kZoSheetHeaders)
        writer.Cell(header);
    writer.EndRow();
    XmlNode const* events = eventsRoot ? eventsRoot->Child(L"events") : nullptr;
    if (!events)
        return 0;
    out.reserve(out.size() + static_cast<std::size_t>(events->Size()) * 400);
    ZoSheetNames const names(eventsRoot, timeTablesRoot);
    ZoSheetCells cells;
    std::size_t count = 0;
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (!event->HasTag(L"event"))
            continue;
        ZoEventSheetCells(*event, names, cells);
        for (std::string const& cell : cells)
            writer.Cell(cell);
        writer.EndRow();
        ++count;
    }
    return count;
}
