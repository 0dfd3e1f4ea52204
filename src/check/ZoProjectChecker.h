#pragma once
#include "check/ZoCheckFinding.h"
#include "config/XmlDocument.h"

#include <QDate>

#include <memory>
#include <string>
#include <vector>

class ZoDeviceCatalog;

// The documents of one project, as the check reads them (none is changed). Any root may
// be null: a missing document holds nothing.
struct ZoProjectDocs {
    XmlDocument::XmlNode const* events = nullptr;     // Events.zocfg's root
    XmlDocument::XmlNode const* timeTables = nullptr; // TimeTables.zocfg's root
    XmlDocument::XmlNode const* devices = nullptr;    // Devices.zocfg's root
    XmlDocument::XmlNode const* users = nullptr;      // Users.zocfg's root; null: no users
    std::wstring folder;                              // for the screen and report files
};

struct ZoCheckOptions {
    // The first day of the year over which time tables are resolved; invalid: today.
    QDate from;
    // The catalog formulas resolve in; null: one is built from the documents.
    ZoDeviceCatalog const* catalog = nullptr;
};

struct ZoCheckCounts {
    int errors = 0;
    int warnings = 0;
    int notes = 0;
};

ZoCheckCounts ZoCountFindings(std::vector<ZoFinding> const& findings);

// The whole-project check: every rule of docs/check.md over every element, in the order
// of the documents (events first, in their order, each event's fields in the editor's
// order; then the groups, the time tables and the device registrations; the project-wide
// notes last).
//
// A checker reads the project once into its indexes (names, ids, time tables, the
// catalog, screens and reports, users, registrations). CheckEvent then checks one event
// again after an edit without reading the rest of the project: the indexes are those of
// the last CheckProject, except the event's own name, kept up to date.
class ZoProjectChecker {
public:
    ZoProjectChecker(ZoProjectDocs docs, ZoCheckOptions options = {});
    ~ZoProjectChecker();
    ZoProjectChecker(ZoProjectChecker const&) = delete;
    ZoProjectChecker& operator=(ZoProjectChecker const&) = delete;

    std::vector<ZoFinding> CheckProject();
    // The same check in steps, for a caller that must stay responsive: BeginProject, then
    // StepProject until it returns true. Each step checks up to `events` events and appends
    // their findings (the project-wide ones come with the last step), in the order
    // CheckProject gives them. The documents must not change between the steps.
    void BeginProject();
    bool StepProject(std::size_t events, std::vector<ZoFinding>& findings);
    // The findings of the event at that position of `events` (its element is looked up
    // there, so the position must be current).
    std::vector<ZoFinding> CheckEvent(std::uint32_t position);

    struct Context;

private:
    std::unique_ptr<Context> m_context;
};

// The same in one call.
std::vector<ZoFinding> ZoCheckProject(ZoProjectDocs const& docs, ZoCheckOptions const& options = {});
