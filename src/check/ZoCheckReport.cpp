#include "check/ZoCheckReport.h"

#include "platform/tools/ZoUtf.h"

#include <string>

namespace {

std::string_view FieldWord(ZoCheckField field)
{
    switch (field) {
    case ZoCheckField::None: return "";
    case ZoCheckField::Name: return "name";
    case ZoCheckField::Condition: return "condition";
    case ZoCheckField::StopCondition: return "conditionStop";
    case ZoCheckField::DelayActivate: return "delayToActivate";
    case ZoCheckField::DelayDeactivate: return "delayToDeactivate";
    case ZoCheckField::TimeTable: return "timeTable";
    case ZoCheckField::Groups: return "eventsGroups";
    case ZoCheckField::Annotation: return "annotation";
    case ZoCheckField::DeaAnnotation: return "deaAnnotation";
    case ZoCheckField::AckAnnotation: return "ackAnnotation";
    case ZoCheckField::Argument: return "argument";
    case ZoCheckField::Action: return "action";
    case ZoCheckField::Identity: return "id";
    }
    return "";
}

std::string_view SubjectWord(ZoCheckSubject subject)
{
    switch (subject) {
    case ZoCheckSubject::Event: return "event";
    case ZoCheckSubject::Group: return "eventsGroup";
    case ZoCheckSubject::DayProgram: return "day";
    case ZoCheckSubject::WeekProgram: return "week";
    case ZoCheckSubject::Calendar: return "calendar";
    case ZoCheckSubject::Registration: return "device";
    case ZoCheckSubject::Project: return "project";
    }
    return "";
}

// Appends text (UTF-8) as a quoted JSON string.
void AppendJsonString(std::string& out, std::string_view text)
{
    out += '"';
    for (char const c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                static char const kHex[] = "0123456789abcdef";
                out += "\\u00";
                out += kHex[(c >> 4) & 0xF];
                out += kHex[c & 0xF];
            } else {
                out += c;
            }
        }
    }
    out += '"';
}

// The members of one object, written in the order given (by name, as JSON writers sort
// them), indented as an element of the findings array.
class JsonMembers {
public:
    explicit JsonMembers(std::string& out) : m_out(out) { m_out += "        {"; }
    void Text(std::string_view name, std::string_view utf8)
    {
        Name(name);
        AppendJsonString(m_out, utf8);
    }
    void Number(std::string_view name, int value)
    {
        Name(name);
        m_out += std::to_string(value);
    }
    void End() { m_out += "\n        }"; }

private:
    void Name(std::string_view name)
    {
        m_out += m_first ? "\n            \"" : ",\n            \"";
        m_first = false;
        m_out += name;
        m_out += "\": ";
    }
    std::string& m_out;
    bool m_first = true;
};

} // namespace

std::string ZoFindingLine(ZoFinding const& finding)
{
    std::string line = ZoToUtf8(zo::project::FileName(finding.file));
    if (finding.line > 0) {
        line += ':';
        line += std::to_string(finding.line);
    }
    line += ": ";
    line += ZoSeverityWord(finding.severity);
    line += ": ";
    std::wstring place = ZoSubjectText(finding);
    if (std::wstring const field = ZoFieldText(finding); !field.empty())
        place += L": " + field;
    line += ZoToUtf8(place) + ": " + ZoToUtf8(finding.message) + " (";
    line += finding.rule;
    line += ")";
    return line;
}

std::string ZoFindingsJsonHead(std::wstring const& folder)
{
    std::string head = "{\n    \"folder\": ";
    AppendJsonString(head, ZoToUtf8(folder));
    return head + ",\n    \"findings\": [";
}

std::string ZoFindingJson(ZoFinding const& finding, bool first)
{
    std::string item = first ? "\n" : ",\n";
    JsonMembers members(item);
    bool const action = finding.field == ZoCheckField::Action;
    if (finding.column > 0)
        members.Number("column", finding.column);
    members.Text("field", FieldWord(finding.field));
    members.Text("file", ZoToUtf8(zo::project::FileName(finding.file)));
    members.Text("id", ZoToUtf8(finding.id));
    if (action || finding.field == ZoCheckField::Argument)
        members.Number("index", finding.index);
    members.Number("line", finding.line);
    if (action)
        members.Text("list", finding.list == 1 ? "clientActions" : "actions");
    members.Text("message", ZoToUtf8(finding.message));
    if (action) {
        static char const* const kMoments[] = {"activate", "while", "deactivate", "acknowledge"};
        members.Text("moment", finding.moment >= 0 && finding.moment < 4 ? kMoments[finding.moment] : "");
    }
    members.Text("name", ZoToUtf8(finding.name));
    members.Text("rule", finding.rule);
    members.Text("severity", ZoSeverityWord(finding.severity));
    members.Text("subject", SubjectWord(finding.subject));
    members.End();
    return item;
}

std::string ZoFindingsJsonTail(ZoCheckCounts const& counts, bool empty)
{
    return std::string(empty ? "" : "\n    ") + "],\n    \"errors\": " + std::to_string(counts.errors)
        + ",\n    \"warnings\": " + std::to_string(counts.warnings) + ",\n    \"notes\": "
        + std::to_string(counts.notes) + "\n}\n";
}

std::string ZoFindingsJson(std::wstring const& folder, std::vector<ZoFinding> const& findings)
{
    std::string json = ZoFindingsJsonHead(folder);
    for (std::size_t i = 0; i < findings.size(); ++i)
        json += ZoFindingJson(findings[i], i == 0);
    return json + ZoFindingsJsonTail(ZoCountFindings(findings), findings.empty());
}
