#pragma once
#include "check/ZoCheckFinding.h"
#include "check/ZoProjectChecker.h"

#include <string>
#include <vector>

// The findings as the `zoevents check` program writes them (UTF-8).

// "Events.zocfg:12: error: event "Pump 1 fault": condition, column 14: message (rule)",
// the form compilers use, so that editors and build logs can jump to the place. A finding
// without a line leaves it out ("Events.zocfg: note: ...").
std::string ZoFindingLine(ZoFinding const& finding);

// One JSON object: the folder, the counts and the findings, each with file, line,
// severity, rule, subject, name, id, field (and for an action its list, moment and
// index), column and message.
std::string ZoFindingsJson(std::wstring const& folder, std::vector<ZoFinding> const& findings);
// The same object in pieces, for a program that writes each finding as it is found: the
// head, each finding (the first without a comma before it), then the tail with
// the counts of them all (empty: no finding was written).
std::string ZoFindingsJsonHead(std::wstring const& folder);
std::string ZoFindingJson(ZoFinding const& finding, bool first);
std::string ZoFindingsJsonTail(ZoCheckCounts const& counts, bool empty);
