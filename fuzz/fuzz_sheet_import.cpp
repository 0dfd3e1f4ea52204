// Any bytes as an events sheet, read and imported into a small project (four generated
// events with their time tables, groups and device registrations). The first byte chooses
// how the input reaches the import: as the whole sheet, as rows after the project's own
// sheet, or spliced into the project's sheet at a position the second byte chooses; the
// third chooses the options. Afterwards:
//   - a text the reader accepts reads back cell for cell once written again;
//   - planning and checking leave the project as it was, byte for byte;
//   - a refused plan applies nothing;
//   - an applied plan leaves events with names no two of which are equal among those the
//     sheet gave, each new event registered once, and exporting the result then importing
//     that sheet changes nothing;
//   - undoing the journals gives the original project back.
#include "EventDocGenerator.h"
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "spreadsheet/CsvReader.h"
#include "spreadsheet/CsvWriter.h"
#include "spreadsheet/EventsExport.h"
#include "spreadsheet/EventsImport.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;

[[noreturn]] void Fail(char const* what)
{
    std::fprintf(stderr, "fuzz_sheet_import: %s\n", what);
    std::abort();
}

struct Project {
    XmlDocument events;
    XmlDocument timeTables;
    XmlDocument devices;
    ZoDeviceCatalog catalog; // built once: the check would build it for every input
    std::string sheet;       // the project's own sheet

    Project()
    {
        zo::docgen::EventDocShape shape;
        shape.events = 4;
        shape.timeTables = 3;
        shape.eventGroups = 2;
        shape.deviceGroupDepth = 2;
        // The catalog in a document of its own: it never changes, and comparing it after
        // every input would cost more than the import.
        std::string const devicesText = "<deviceTree>" + zo::docgen::MakeDeviceGroupsXml(shape) + "</deviceTree>";
        std::string const catalogText = "<deviceTree>" + zo::docgen::MakeDeviceCatalogXml(shape, 9) + "</deviceTree>";
        XmlDocument catalogDocument;
        if (!zo::docgen::LoadGenerated(events, zo::docgen::MakeEventsDocumentXml(shape)) ||
            !zo::docgen::LoadGenerated(timeTables, zo::docgen::MakeTimeTablesXml(shape)) ||
            !zo::docgen::LoadGenerated(devices, devicesText) || !zo::docgen::LoadGenerated(catalogDocument, catalogText))
            Fail("the generated project does not parse");
        ZoExportEvents(events.Root(), timeTables.Root(), sheet);
        catalog.LoadDevices(catalogDocument.Root());
        catalog.LoadEvents(events.Root());
    }

    ZoImportTarget Target()
    {
        ZoImportTarget target;
        target.events = &events;
        target.timeTables = &timeTables;
        target.devices = &devices;
        target.catalog = &catalog;
        return target;
    }

    std::string Text() const
    {
        std::string text;
        events.Root()->CreateXmlCode(text);
        std::string more;
        devices.Root()->CreateXmlCode(more);
        return text + more;
    }
};

Project& TheProject()
{
    static Project* project = new Project;
    return *project;
}

void CheckReader(std::string const& sheet)
{
    ZoCsvTable table;
    if (!table.Read(sheet))
        return;
    std::string written;
    ZoCsvWriter writer(written);
    writer.Begin(); // without the mark, a first cell that starts with U+FEFF would read as one
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        for (std::size_t cell = 0; cell < table.CellCount(row); ++cell)
            writer.Cell(table.Cell(row, cell));
        writer.EndRow();
    }
    ZoCsvTable again;
    if (!again.Read(written))
        Fail("written cells do not read back");
    // Rows of one empty cell are no rows: compare the rows that hold something.
    std::size_t j = 0;
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        if (table.CellCount(row) == 1 && table.Cell(row, 0).empty())
            continue;
        if (j >= again.RowCount() || again.CellCount(j) != table.CellCount(row))
            Fail("a row reads back with other cells");
        for (std::size_t cell = 0; cell < table.CellCount(row); ++cell)
            if (again.Cell(j, cell) != table.Cell(row, cell))
                Fail("a cell reads back otherwise");
        ++j;
    }
}

void CheckApplied(Project& project, ZoImportPlan const& plan, std::vector<ZoAppliedEvent> const& applied)
{
    if (applied.size() != plan.modified.size() + plan.added.size())
        Fail("not every imported row was applied");
    std::set<std::string_view> names;
    for (ZoAppliedEvent const& event : applied)
        if (!names.insert(event.event->ValueUtf8(L"name")).second)
            Fail("two imported events bear one name");
    XmlNode const* deviceGroups = project.devices.Root()->Child(L"deviceGroups");
    for (std::size_t i = plan.modified.size(); i < applied.size(); ++i) {
        std::string_view const id = applied[i].event->ValueUtf8(L"id");
        int registered = 0;
        if (XmlNode const* devices = deviceGroups ? deviceGroups->Child(L"devices") : nullptr)
            for (XmlNode const* device = devices->FirstChild(); device; device = device->NextSibling())
                registered += device->ValueUtf8(L"id") == id;
        if (registered != 1)
            Fail("a new event is not registered once");
    }
    std::string sheet;
    ZoExportEvents(project.events.Root(), project.timeTables.Root(), sheet);
    ZoImportPlan const again = ZoPlanImport(sheet, project.Target(), {});
    if (again.Refused() || again.ChangesAnything())
        Fail("the sheet of the imported project does not import as unchanged");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < 3)
        return 0;
    Project& project = TheProject();
    std::string const input(reinterpret_cast<char const*>(data) + 3, size - 3);
    std::string sheet;
    switch (data[0] % 3) {
    case 0: sheet = input; break;
    case 1: sheet = project.sheet + input; break;
    default: {
        // The input replaces as many bytes of the sheet (up to 8) at a position in it.
        std::size_t const at = project.sheet.size() * data[1] / 256;
        std::size_t const replaced = std::min<std::size_t>({input.size(), 8, project.sheet.size() - at});
        sheet = project.sheet.substr(0, at) + input + project.sheet.substr(at + replaced);
    }
    }
    CheckReader(sheet);

    ZoImportOptions options;
    options.deleteMissing = data[2] & 1;
    options.createGroups = data[2] & 2;
    std::string const before = project.Text();
    ZoImportPlan plan = ZoPlanImport(sheet, project.Target(), options);
    ZoCheckImport(plan, project.Target());
    if (project.Text() != before)
        Fail("planning or checking changed the project");

    project.events.BeginJournal();
    project.devices.BeginJournal();
    std::vector<ZoAppliedEvent> const applied = ZoApplyImport(plan, project.Target());
    if (plan.Refused() && (!applied.empty() || project.events.JournalHasChanges() || project.devices.JournalHasChanges()))
        Fail("a refused plan changed the project");
    if (!plan.Refused())
        CheckApplied(project, plan, applied);
    project.events.UndoJournal();
    project.devices.UndoJournal();
    if (project.Text() != before)
        Fail("undoing the import did not give the project back");
    return 0;
}
