// The import plan in words, for the preview dialog and the program.
#include "spreadsheet/EventsImport.h"

#include "check/ZoCheckFinding.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

namespace {

std::wstring Wide(std::string_view utf8)
{
    return ZoFromUtf8(utf8);
}

int Count(std::size_t n)
{
    return static_cast<int>(n);
}

} // namespace

std::wstring ZoImportCounts(ZoImportPlan const& plan)
{
    if (plan.deleteMissing)
        return ZoFormat(ZoLoadString(64625).c_str(), Count(plan.added.size()), Count(plan.modified.size()),
                        Count(plan.unchanged), Count(plan.deleted.size()));
    return ZoFormat(ZoLoadString(64624).c_str(), Count(plan.added.size()), Count(plan.modified.size()),
                    Count(plan.unchanged));
}

std::wstring ZoSheetFaultText(ZoSheetFault const& fault)
{
    if (fault.column <= 0)
        return ZoFormat(ZoLoadString(64627).c_str(), fault.line, fault.reason.c_str());
    if (fault.header.empty())
        return ZoFormat(ZoLoadString(64626).c_str(), fault.line, fault.column, fault.reason.c_str());
    return ZoFormat(ZoLoadString(64628).c_str(), fault.line, fault.column, Wide(fault.header).c_str(),
                    fault.reason.c_str());
}

std::wstring ZoFieldChangeText(ZoFieldChange const& change)
{
    return ZoFormat(ZoLoadString(64629).c_str(), Wide(kZoSheetHeaders[ZoColumnIndex(change.column)]).c_str(),
                    Wide(change.before).c_str(), Wide(change.after).c_str());
}

std::wstring ZoImportFindingText(ZoImportPlan::Finding const& found)
{
    ZoFinding const& finding = found.finding;
    std::wstring place = ZoSubjectText(finding);
    if (std::wstring const field = ZoFieldText(finding); !field.empty())
        place += L": " + field;
    return ZoFormat(ZoLoadString(64632).c_str(), found.line, Wide(ZoSeverityWord(finding.severity)).c_str(),
                    place.c_str(), finding.message.c_str(), Wide(finding.rule).c_str());
}

std::vector<std::wstring> ZoImportReport(ZoImportPlan const& plan)
{
    std::vector<std::wstring> lines;
    lines.push_back(ZoImportCounts(plan));
    for (std::string const& column : plan.ignoredColumns)
        lines.push_back(ZoFormat(ZoLoadString(64633).c_str(), Wide(column).c_str()));
    for (ZoSheetFault const& fault : plan.faults)
        lines.push_back(ZoSheetFaultText(fault));
    for (std::string const& group : plan.newGroups)
        lines.push_back(ZoFormat(ZoLoadString(64634).c_str(), Wide(group).c_str()));
    for (ZoImportedEvent const& event : plan.modified)
        for (ZoFieldChange const& change : event.changes)
            lines.push_back(ZoFormat(ZoLoadString(64630).c_str(), event.line, Wide(event.name).c_str(),
                                     ZoFieldChangeText(change).c_str()));
    for (ZoImportedEvent const& event : plan.added)
        lines.push_back(ZoFormat(ZoLoadString(64631).c_str(), event.line, Wide(event.name).c_str()));
    for (ZoImportPlan::Deleted const& deleted : plan.deleted)
        lines.push_back(ZoFormat(ZoLoadString(64635).c_str(), Wide(deleted.name).c_str()));
    for (ZoImportPlan::Finding const& finding : plan.findings)
        lines.push_back(ZoImportFindingText(finding));
    return lines;
}
