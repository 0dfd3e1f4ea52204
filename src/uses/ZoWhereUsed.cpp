#include "uses/ZoWhereUsed.h"

#include "platform/tools/ZoUtf.h"
#include "uses/ZoEventFields.h"
#include "uses/ZoFormulaReferences.h"

#include <string>

using namespace zo::uses;

namespace {

bool NamesDevice(ZoUseKind kind)
{
    return kind == ZoUseKind::Device || kind == ZoUseKind::Variable || kind == ZoUseKind::Event;
}

// The field kind whose whole text is the target's name or id, for the targets stored so.
bool WholeTextMatches(ZoUseTarget const& target, FieldKind kind, std::string_view text, std::string const& name,
                      std::string const& id)
{
    switch (kind) {
    case FieldKind::DeviceName: return target.kind == ZoUseKind::Device && text == name;
    case FieldKind::ScreenName: return target.kind == ZoUseKind::Screen && text == name;
    case FieldKind::ReportName: return target.kind == ZoUseKind::Report && text == name;
    case FieldKind::Recipient: return target.kind == ZoUseKind::Recipient && text == id;
    case FieldKind::TimeTable: return target.kind == ZoUseKind::TimeTable && text == id;
    case FieldKind::Group: return target.kind == ZoUseKind::Group && text == id;
    case FieldKind::EventName:
    case FieldKind::Formula: return false;
    }
    return false;
}

// The entries of week programs (day1..day7) and calendars (year/monthN/dayN) that name
// the time table of that id.
void FindTimeTableEntries(XmlDocument::XmlNode const* root, std::string const& id, std::vector<ZoFinding>& uses)
{
    using XmlNode = XmlDocument::XmlNode;
    if (!root)
        return;
    auto const add = [&](ZoCheckSubject subject, XmlNode const& table, std::vector<XmlNode const*> const& chain,
                         std::wstring message) {
        ZoFinding& use = uses.emplace_back();
        use.severity = ZoSeverity::Note;
        use.rule = "use";
        use.file = zo::project::ProjectDoc::TimeTables;
        use.subject = subject;
        use.name = ZoFromUtf8(table.ValueUtf8(L"name"));
        use.id = ZoFromUtf8(table.ValueUtf8(L"id"));
        for (XmlNode const* step : chain)
            use.path.push_back(PositionIn(*step));
        use.message = std::move(message);
    };
    if (XmlNode const* weeks = root->Child(L"weeks"))
        for (XmlNode const* week = weeks->FirstChild(); week; week = week->NextSibling())
            for (XmlNode const* day = week->FirstChild(); day; day = day->NextSibling())
                if (day->TextUtf8() == id && !day->HasTag(L"id"))
                    add(ZoCheckSubject::WeekProgram, *week, {weeks, week, day}, day->Tag());
    if (XmlNode const* calendars = root->Child(L"calendars"))
        for (XmlNode const* calendar = calendars->FirstChild(); calendar; calendar = calendar->NextSibling())
            for (XmlNode const* year = calendar->FirstChild(); year; year = year->NextSibling())
                for (XmlNode const* month = year->FirstChild(); month; month = month->NextSibling())
                    for (XmlNode const* day = month->FirstChild(); day; day = day->NextSibling())
                        if (day->TextUtf8() == id)
                            add(ZoCheckSubject::Calendar, *calendar, {calendars, calendar, year, month, day},
                                ZoFromUtf8(year->ValueUtf8(L"year")) + L" " + month->Tag() + L" " + day->Tag());
}

} // namespace

std::vector<ZoFinding> ZoFindUses(ZoUseDocs const& docs, ZoUseTarget const& target)
{
    std::vector<ZoFinding> uses;
    std::string const name = ZoToUtf8(NamesDevice(target.kind) ? target.device : target.name);
    std::string const id = ZoToUtf8(target.id);
    ForEachEventField(docs.events, [&](FieldPlace const& place, FieldKind kind, XmlDocument::XmlNode const& node) {
        std::string_view const text = node.TextUtf8();
        if (kind != FieldKind::Formula) {
            if (WholeTextMatches(target, kind, text, name, id)) {
                ZoFinding& use = uses.emplace_back(PlaceFinding(docs.events, place));
                use.rule = "use";
                use.message = ZoFromUtf8(text);
            }
            return;
        }
        if (!NamesDevice(target.kind) || text.find(name) == std::string_view::npos)
            return;
        std::wstring const formula = ZoFromUtf8(text);
        ZoForEachReference(formula, [&](ZoFormulaReference const& reference) {
            if (reference.device != target.device ||
                (target.kind == ZoUseKind::Variable && reference.code != target.code))
                return;
            ZoFinding& use = uses.emplace_back(PlaceFinding(docs.events, place));
            use.rule = "use";
            use.column = static_cast<int>(reference.pos) + 1;
            use.message = formula;
        });
    });
    if (target.kind == ZoUseKind::TimeTable)
        FindTimeTableEntries(docs.timeTables, id, uses);
    return uses;
}
