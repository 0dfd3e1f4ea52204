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
    if (finding.line > 0)
        line += ":" + std::to_string(finding.line);
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

std::string ZoFindingsJson(std::wstring const& folder, std::vector<ZoFinding> const& findings)
{
    QJsonArray list;
    for (ZoFinding const& finding : findings)
        list.append(ToJson(finding));
    ZoCheckCounts const counts = ZoCountFindings(findings);
    QJsonObject const root{
        {"folder", QString::fromStdWString(folder)},
        {"errors", counts.errors},
        {"warnings", counts.warnings},
        {"notes", counts.notes},
        {"findings", list},
    };
    return QJsonDocument(root).toJson(QJsonDocument::Indented).toStdString();
}
