#pragma once
#include "check/ZoCheckFinding.h"
#include "config/XmlDocument.h"
#include "spreadsheet/SheetColumns.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Importing the events sheet (docs/spreadsheet.md) in three steps, each usable alone:
//   ZoPlanImport    reads the sheet, matches its rows to the events by id, compares every
//                   cell with what the export writes for the event and checks the values;
//                   nothing is changed;
//   ZoCheckImport   applies the plan inside the documents' journals, runs the project
//                   check on the imported events and undoes it;
//   ZoApplyImport   applies it for good (the caller wraps it in its journals and saves).
// A plan with a fault is refused: it is never applied. Applying keeps everything the
// sheet does not hold: the actions, the ids and thousand separators of the arguments, the
// order of the keys, other elements.

struct ZoImportOptions {
    bool deleteMissing = false; // delete the events that no row names
    bool createGroups = false;  // create the groups that the sheet names and the project lacks
};

class ZoDeviceCatalog;

// The documents an import reads and changes.
struct ZoImportTarget {
    XmlDocument* events = nullptr;           // Events.zocfg
    XmlDocument const* timeTables = nullptr; // TimeTables.zocfg
    XmlDocument* devices = nullptr;          // Devices.zocfg (new events are registered there)
    XmlDocument::XmlNode const* users = nullptr;
    std::wstring folder;                     // for the check's screens and reports
    ZoDeviceCatalog const* catalog = nullptr; // the check's; null: built from the documents
};

// A row (or the whole sheet) that is refused.
struct ZoSheetFault {
    int line = 0;
    int column = 0; // from 1; 0 for the row as a whole
    std::string header; // the column's header, when known
    std::wstring reason;
};

struct ZoFieldChange {
    ZoSheetColumn column;
    std::string before; // as the export writes it
    std::string after;
};

// A row that changes an event, or adds one.
struct ZoImportedEvent {
    int line = 0;
    XmlDocument::XmlNode* event = nullptr; // null for a new event
    std::string name;                      // the name it bears after the import
    std::vector<ZoFieldChange> changes;    // for a new event, every cell given
    std::string timeTableId;               // when the time table changes
    std::vector<std::string> groups;       // names, when the groups change
    struct Argument {
        std::string value;
        std::string format;
    };
    std::vector<Argument> arguments; // when the arguments change

    ZoFieldChange const* Change(ZoSheetColumn column) const;
};

struct ZoImportPlan {
    std::vector<ZoSheetFault> faults;
    std::vector<std::string> ignoredColumns; // "7 (comment)": headers the import does not know
    std::vector<ZoImportedEvent> modified;
    std::vector<ZoImportedEvent> added;
    struct Deleted {
        XmlDocument::XmlNode* event;
        std::string name;
    };
    std::vector<Deleted> deleted;
    std::size_t unchanged = 0;
    std::vector<std::string> newGroups;
    // The check's findings on the imported events, with the line of the row.
    struct Finding {
        int line;
        ZoFinding finding;
    };
    std::vector<Finding> findings;
    bool deleteMissing = false;

    bool Refused() const { return !faults.empty(); }
    bool ChangesAnything() const { return !modified.empty() || !added.empty() || !deleted.empty(); }
};

ZoImportPlan ZoPlanImport(std::string_view sheet, ZoImportTarget const& target, ZoImportOptions const& options);

// Fills plan.findings. The documents must not be in a journal already; they are left as
// they were.
void ZoCheckImport(ZoImportPlan& plan, ZoImportTarget const& target);

// Applies a plan that is not refused, made on the documents as they are. Returns the
// imported events (modified and added) with the line of their row.
struct ZoAppliedEvent {
    XmlDocument::XmlNode const* event;
    int line;
};
std::vector<ZoAppliedEvent> ZoApplyImport(ZoImportPlan const& plan, ZoImportTarget const& target);

// The plan as lines for the user: the counts, the columns not imported, the faults
// ("line 4, column 3 (name): ..."), each change, the findings of the check.
std::vector<std::wstring> ZoImportReport(ZoImportPlan const& plan);
// "2 added, 1 modified, 40 unchanged" (and deleted, when asked for).
std::wstring ZoImportCounts(ZoImportPlan const& plan);

// "line 4, column 3 (name): the name is empty."
std::wstring ZoSheetFaultText(ZoSheetFault const& fault);
// "description: "old" → "new""
std::wstring ZoFieldChangeText(ZoFieldChange const& change);
// "line 4: error: event "Pump": condition, column 2: message (rule)"
std::wstring ZoImportFindingText(ZoImportPlan::Finding const& finding);
