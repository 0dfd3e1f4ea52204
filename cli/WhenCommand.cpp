#include "WhenCommand.h"

#include "CliText.h"
#include "ProjectFolder.h"
#include "platform/tools/ZoUtf.h"
#include "timeline/ZoEventTimelines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using XmlNode = XmlDocument::XmlNode;
using Kind = ZoTimeTableResolution::Kind;

namespace {

// A span longer than this is refused: ten years of a day program is already 3,650 lines.
constexpr qint64 kMaxDays = 3660;

struct WhenArguments {
    bool json = false;
    QDate from;
    QDate to;
    bool hasAt = false;
    ZoMoment at = 0;
    QStringList positional; // FOLDER [EVENT]
};

bool ParseDate(QString const& text, QDate& date)
{
    date = QDate::fromString(text, Qt::ISODate);
    return date.isValid();
}

// Reads the command line; false with the reason in error.
bool ParseArguments(QStringList const& arguments, WhenArguments& parsed, QString& error)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        QString const value = i + 1 < arguments.size() ? arguments[i + 1] : QString();
        if (argument == "--format") {
            if (value != "text" && value != "json")
                return error = "--format takes text or json", false;
            parsed.json = value == "json";
            ++i;
        } else if (argument == "--from" || argument == "--to") {
            if (!ParseDate(value, argument == "--from" ? parsed.from : parsed.to))
                return error = argument + " takes a date written YYYY-MM-DD", false;
            ++i;
        } else if (argument == "--at") {
            if (!ZoParseMoment(value.toStdWString(), parsed.at))
                return error = "--at takes a moment written \"YYYY-MM-DD HH:MM\"", false;
            parsed.hasAt = true;
            ++i;
        } else if (argument.startsWith("--")) {
            return error = "unknown option " + argument, false;
        } else {
            parsed.positional.append(argument);
        }
    }
    if (parsed.positional.isEmpty())
        return error = "no project folder given", false;
    if (parsed.hasAt && (parsed.positional.size() != 1 || parsed.from.isValid() || parsed.to.isValid()))
        return error = "--at takes the folder alone, without an event, --from or --to", false;
    if (!parsed.hasAt && parsed.positional.size() != 2)
        return error = parsed.positional.size() < 2 ? "no event given" : "one folder and one event only", false;
    if (!parsed.from.isValid())
        parsed.from = parsed.to.isValid() ? parsed.to.addDays(-27) : QDate::currentDate();
    if (!parsed.to.isValid())
        parsed.to = parsed.from.addDays(27);
    if (parsed.to < parsed.from)
        return error = "--to is before --from", false;
    if (parsed.from.daysTo(parsed.to) >= kMaxDays)
        return error = "the span is longer than ten years", false;
    return true;
}

QString Text(std::wstring const& text)
{
    return QString::fromStdWString(text);
}

QString MomentText(ZoMoment moment)
{
    return Text(ZoMomentText(moment));
}

char const* KindWord(Kind kind)
{
    switch (kind) {
    case Kind::Day: return "day program";
    case Kind::Week: return "week program";
    case Kind::Calendar: return "calendar";
    case Kind::None: break;
    }
    return "none";
}

void WriteJson(std::FILE* out, QJsonObject const& object)
{
    QByteArray const json = QJsonDocument(object).toJson(QJsonDocument::Indented);
    std::fwrite(json.constData(), 1, static_cast<std::size_t>(json.size()), out);
    if (!json.endsWith('\n'))
        std::fputc('\n', out);
}

int ListIntervals(ProjectFolder& project, WhenArguments const& parsed, std::FILE* out, std::FILE* err)
{
    XmlNode const* events = project.Events().Root()->Child(L"events");
    QString const wanted = parsed.positional[1];
    XmlNode const* event = ZoFindEvent(events, wanted.toStdWString());
    if (!event) {
        WriteLine(err, "zoevents when: no event is named \"" + wanted.toStdString() + "\"");
        return 2;
    }
    XmlNode const* root = project.TimeTables().Root();
    ZoTimeTableResolution const tables(root);
    std::wstring const reference = event->Value(L"timeTable", L"");
    std::vector<ZoInterval> const intervals = ZoAllowedIntervals(tables, reference, parsed.from, parsed.to);
    ZoTableElement const table = ZoFindTimeTable(root, reference);
    QString const tableName = table.element ? Text(table.element->Value(L"name", L"")) : QString();
    QString const eventName = Text(event->Value(L"name", L""));
    if (parsed.json) {
        QJsonArray list;
        for (ZoInterval const& interval : intervals)
            list.append(QJsonObject{{"from", MomentText(interval.from)}, {"to", MomentText(interval.to)}});
        QJsonObject timeTable{{"id", Text(reference)}, {"name", tableName}, {"kind", KindWord(table.kind)}};
        WriteJson(out, QJsonObject{{"event", eventName},
                                   {"id", Text(event->Value(L"id", L""))},
                                   {"timeTable", reference.empty() ? QJsonValue() : QJsonValue(timeTable)},
                                   {"from", parsed.from.toString(Qt::ISODate)},
                                   {"to", parsed.to.toString(Qt::ISODate)},
                                   {"intervals", list}});
    } else {
        for (ZoInterval const& interval : intervals)
            WriteLine(out, (MomentText(interval.from) + "\t" + MomentText(interval.to)).toStdString());
    }
    std::fflush(out);
    if (!parsed.json) {
        QString const what = reference.empty() ? QString("no time table")
                             : table.element ? QString("%1 \"%2\"").arg(KindWord(table.kind), tableName)
                                             : QString("a deleted time table");
        WriteLine(err, QString("event \"%1\" (%2): %3 interval%4 from %5 to %6")
                           .arg(eventName, what)
                           .arg(intervals.size())
                           .arg(intervals.size() == 1 ? "" : "s")
                           .arg(parsed.from.toString(Qt::ISODate), parsed.to.toString(Qt::ISODate))
                           .toStdString());
    }
    return intervals.empty() ? 1 : 0;
}

int ListEventsAt(ProjectFolder& project, WhenArguments const& parsed, std::FILE* out, std::FILE* err)
{
    XmlNode const* events = project.Events().Root()->Child(L"events");
    XmlNode const* root = project.TimeTables().Root();
    ZoTimeTableResolution const tables(root);
    std::vector<XmlNode const*> const allowed = ZoEventsAllowedAt(events, tables, parsed.at);
    if (parsed.json) {
        QJsonArray list;
        for (XmlNode const* event : allowed) {
            ZoTableElement const table = ZoFindTimeTable(root, event->Value(L"timeTable", L""));
            list.append(QJsonObject{{"name", Text(event->Value(L"name", L""))},
                                    {"id", Text(event->Value(L"id", L""))},
                                    {"timeTable", table.element ? Text(table.element->Value(L"name", L"")) : QString()},
                                    {"notify", event->ValueUtf8(L"notify") == "T"}});
        }
        WriteJson(out, QJsonObject{{"at", MomentText(parsed.at)}, {"events", list}});
    } else {
        for (XmlNode const* event : allowed)
            WriteLine(out, ZoToUtf8(event->Value(L"name", L"")));
    }
    std::fflush(out);
    if (!parsed.json)
        WriteLine(err, QString("%1 event%2 allowed at %3")
                           .arg(allowed.size())
                           .arg(allowed.size() == 1 ? "" : "s")
                           .arg(MomentText(parsed.at))
                           .toStdString());
    return allowed.empty() ? 1 : 0;
}

} // namespace

int RunWhenCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    WhenArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage)) {
        WriteLine(err, "zoevents when: " + usage.toStdString());
        WriteLine(err, kWhenUsage);
        return 2;
    }
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(parsed.positional[0], error);
    if (!project) {
        WriteLine(err, "zoevents when: " + ZoCliText(error));
        return 2;
    }
    return parsed.hasAt ? ListEventsAt(*project, parsed, out, err) : ListIntervals(*project, parsed, out, err);
}
