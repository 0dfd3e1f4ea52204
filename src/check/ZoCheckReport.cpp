#include "check/ZoCheckReport.h"

#include "platform/tools/ZoUtf.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

QString Latin(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QJsonObject ToJson(ZoFinding const& finding)
{
    QJsonObject object{
        {"file", QString::fromWCharArray(zo::project::FileName(finding.file))},
        {"line", finding.line},
        {"severity", Latin(ZoSeverityWord(finding.severity))},
        {"rule", Latin(finding.rule)},
        {"subject", Latin(SubjectWord(finding.subject))},
        {"name", QString::fromStdWString(finding.name)},
        {"id", QString::fromStdWString(finding.id)},
        {"field", Latin(FieldWord(finding.field))},
        {"message", QString::fromStdWString(finding.message)},
    };
    if (finding.field == ZoCheckField::Action) {
        static char const* const kLists[] = {"actions", "clientActions"};
        static char const* const kMoments[] = {"activate", "while", "deactivate", "acknowledge"};
        object.insert("list", kLists[finding.list == 1 ? 1 : 0]);
        object.insert("moment", finding.moment >= 0 && finding.moment < 4 ? kMoments[finding.moment] : "");
    }
    if (finding.field == ZoCheckField::Action || finding.field == ZoCheckField::Argument)
        object.insert("index", finding.index);
    if (finding.column > 0)
        object.insert("column", finding.column);
    return object;
}

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

namespace {

// A JSON string, quoted and escaped.
std::string JsonString(QString const& text)
{
    QByteArray const array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2).toStdString(); // without the brackets
}

} // namespace

std::string ZoFindingsJsonHead(std::wstring const& folder)
{
    return "{\n    \"folder\": " + JsonString(QString::fromStdWString(folder)) + ",\n    \"findings\": [";
}

std::string ZoFindingJson(ZoFinding const& finding, bool first)
{
    // Indented as an element of the findings array.
    QByteArray const object = QJsonDocument(ToJson(finding)).toJson(QJsonDocument::Indented).trimmed();
    std::string item = first ? "\n" : ",\n";
    item.reserve(item.size() + static_cast<std::size_t>(object.size()) * 5 / 4);
    for (QByteArray const& line : object.split('\n')) {
        if (item.size() > 2)
            item += '\n';
        item += "        ";
        item.append(line.constData(), static_cast<std::size_t>(line.size()));
    }
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
