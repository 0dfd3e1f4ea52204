#include "spreadsheet/SheetColumns.h"

#include "editor/ZoEventFields.h"
#include "platform/tools/ZoUtf.h"

using XmlNode = XmlDocument::XmlNode;

ZoSheetNames::ZoSheetNames(XmlNode const* eventsRoot, XmlNode const* timeTablesRoot)
{
    if (timeTablesRoot) {
        Add(m_tableNames, m_tableIds, timeTablesRoot->Child(L"days"), L"day");
        Add(m_tableNames, m_tableIds, timeTablesRoot->Child(L"weeks"), L"week");
        Add(m_tableNames, m_tableIds, timeTablesRoot->Child(L"calendars"), L"calendar");
    }
    if (eventsRoot)
        Add(m_groupNames, m_groupIds, eventsRoot->Child(L"eventsGroups"), L"eventsGroup");
}

void ZoSheetNames::Add(Map& byId, Map& byName, XmlNode const* container, wchar_t const* tag)
{
    if (!container)
        return;
    for (XmlNode const* child = container->FirstChild(); child; child = child->NextSibling()) {
        if (!child->HasTag(tag))
            continue;
        std::string_view const id = child->ValueUtf8(L"id");
        std::string_view const name = child->ValueUtf8(L"name");
        byId.emplace(id, name); // the first keeps its place
        byName.emplace(name, id);
    }
}

std::string_view ZoSheetNames::Find(Map const& map, std::string_view key)
{
    auto const found = map.find(key);
    return found == map.end() ? std::string_view() : found->second;
}

std::string_view ZoSheetNames::TimeTableName(std::string_view id) const
{
    return Find(m_tableNames, id);
}

std::string_view ZoSheetNames::GroupName(std::string_view id) const
{
    return Find(m_groupNames, id);
}

std::string_view ZoSheetNames::TimeTableId(std::string_view name) const
{
    return name.empty() ? std::string_view() : Find(m_tableIds, name);
}

std::string_view ZoSheetNames::GroupId(std::string_view name) const
{
    return name.empty() ? std::string_view() : Find(m_groupIds, name);
}

namespace {

void AppendItem(std::string& cell, std::string_view item)
{
    if (!cell.empty())
        cell.append(kZoSheetListSeparator);
    cell.append(item);
}

// "a1=[PLC1.LEVEL]:.1 | a2=...": each argument by its placeholder's name.
void ArgumentsCell(XmlNode const* arguments, std::string& cell)
{
    if (!arguments)
        return;
    int number = 0;
    for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling()) {
        if (!argument->HasTag(L"argument"))
            continue;
        if (!cell.empty())
            cell.append(kZoSheetListSeparator);
        cell.append("a").append(std::to_string(++number)).append("=");
        cell.append(argument->ValueUtf8(L"value")).append(":").append(argument->ValueUtf8(L"format"));
    }
}

// "activate: force, mail | client activate: screen": the kinds of the actions of each list
// that holds any.
void ActionsCell(XmlNode const& event, std::string& cell)
{
    for (int side = 0; side < 2; ++side) {
        XmlNode const* lists = event.Child(kZoActionSides[side]);
        if (!lists)
            continue;
        for (int moment = 0; moment < 4; ++moment) {
            XmlNode const* list = lists->Child(kZoActionMoments[moment]);
            if (!list || !list->FirstChild())
                continue;
            std::string item = side ? "client " : "";
            item.append(ZoToUtf8(kZoActionMoments[moment])).append(":");
            char const* separator = " ";
            for (XmlNode const* action = list->FirstChild(); action; action = action->NextSibling()) {
                item.append(separator).append(ZoToUtf8(action->Tag()));
                separator = ", ";
            }
            AppendItem(cell, item);
        }
    }
}

// Booleans are "T" only when stored "T"; `enabled` is "T" only when `disabled` is "F".
std::string_view IsT(XmlNode const* key)
{
    return ZoSheetBool(key && key->TextUtf8() == "T");
}

} // namespace

void ZoEventSheetCells(XmlNode const& event, ZoSheetNames const& names, ZoSheetCells& cells)
{
    for (std::string& cell : cells)
        cell.clear();
    auto const text = [&](ZoSheetColumn column) -> std::string& { return cells[ZoColumnIndex(column)]; };
    XmlNode const* disabled = nullptr;
    XmlNode const* arguments = nullptr;
    XmlNode const* groups = nullptr;
    // One pass over the keys; the first of each tag counts, as Value finds it.
    auto const key = [&](XmlNode const* child, ZoSheetColumn column, bool& seen) {
        if (!seen)
            text(column) = child->TextUtf8();
        seen = true;
    };
    std::array<bool, kZoSheetColumnCount> seen{};
    bool stopSeen = false;
    for (XmlNode const* child = event.FirstChild(); child; child = child->NextSibling()) {
        std::wstring const& tag = child->Tag();
        auto const plain = [&](wchar_t const* name, ZoSheetColumn column) {
            if (tag != name)
                return false;
            key(child, column, seen[ZoColumnIndex(column)]);
            return true;
        };
        auto const flag = [&](wchar_t const* name, ZoSheetColumn column) {
            if (tag != name)
                return false;
            if (!seen[ZoColumnIndex(column)])
                text(column) = IsT(child);
            seen[ZoColumnIndex(column)] = true;
            return true;
        };
        if (plain(L"id", ZoSheetColumn::Id) || plain(L"name", ZoSheetColumn::Name)
            || plain(L"description", ZoSheetColumn::Description) || plain(L"condition", ZoSheetColumn::Condition)
            || plain(L"delayToActivate", ZoSheetColumn::DelayToActivate)
            || plain(L"delayToDeactivate", ZoSheetColumn::DelayToDeactivate)
            || plain(L"annotation", ZoSheetColumn::Annotation) || plain(L"deaAnnotation", ZoSheetColumn::DeaAnnotation)
            || plain(L"ackAnnotation", ZoSheetColumn::AckAnnotation) || flag(L"notify", ZoSheetColumn::Notify)
            || flag(L"record", ZoSheetColumn::Record) || flag(L"rssActivate", ZoSheetColumn::RssActivate)
            || flag(L"rssDeactivate", ZoSheetColumn::RssDeactivate)
            || flag(L"rssAcknowledge", ZoSheetColumn::RssAcknowledge))
            continue;
        if (tag == L"conditionStop" && !stopSeen) {
            stopSeen = true;
            text(ZoSheetColumn::StopCondition) = child->TextUtf8();
        } else if (tag == L"disabled" && !disabled) {
            disabled = child;
        } else if (tag == L"timeTable" && !seen[ZoColumnIndex(ZoSheetColumn::TimeTable)]) {
            seen[ZoColumnIndex(ZoSheetColumn::TimeTable)] = true;
            text(ZoSheetColumn::TimeTable) = names.TimeTableName(child->TextUtf8());
        } else if (tag == L"arguments" && !arguments) {
            arguments = child;
        } else if (tag == L"eventsGroups" && !groups) {
            groups = child;
        }
    }
    for (ZoSheetColumn column : {ZoSheetColumn::Notify, ZoSheetColumn::Record, ZoSheetColumn::RssActivate,
                                 ZoSheetColumn::RssDeactivate, ZoSheetColumn::RssAcknowledge})
        if (!seen[ZoColumnIndex(column)])
            text(column) = "F";
    text(ZoSheetColumn::Enabled) = ZoSheetBool(disabled && disabled->TextUtf8() == "F");
    if (groups)
        for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
            if (group->HasTag(L"eventsGroup")) {
                // A reference to a deleted group is not shown, as in the editor.
                std::string_view const name = names.GroupName(group->TextUtf8());
                if (!name.empty())
                    AppendItem(text(ZoSheetColumn::Groups), name);
            }
    ArgumentsCell(arguments, text(ZoSheetColumn::Arguments));
    ActionsCell(event, text(ZoSheetColumn::Actions));
}
