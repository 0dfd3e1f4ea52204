#pragma once
#include "config/XmlDocument.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The columns of the events sheet, in the order the export writes them, and the text of
// each cell as the export writes it. The import compares a cell with that text first: a
// cell that reads as it was written changes nothing, whatever the element holds.
enum class ZoSheetColumn {
    Id,
    Name,
    Description,
    Enabled,
    Notify,
    Record,
    Condition,
    StopCondition,
    DelayToActivate,
    DelayToDeactivate,
    TimeTable,
    Groups,
    Annotation,
    DeaAnnotation,
    AckAnnotation,
    Arguments,
    RssActivate,
    RssDeactivate,
    RssAcknowledge,
    Actions, // read only: a summary of the action lists
    Count
};

inline constexpr std::size_t kZoSheetColumnCount = static_cast<std::size_t>(ZoSheetColumn::Count);

// The header of each column: stable names that scripts may rely on (docs/spreadsheet.md).
inline constexpr std::array<std::string_view, kZoSheetColumnCount> kZoSheetHeaders = {
    "id",          "name",           "description",   "enabled",       "notify",
    "record",      "condition",      "conditionStop", "delayToActivate", "delayToDeactivate",
    "timeTable",   "groups",         "annotation",    "deaAnnotation", "ackAnnotation",
    "arguments",   "rssActivate",    "rssDeactivate", "rssAcknowledge", "actions"};

// Items of a list cell (groups, arguments, actions) are separated by this.
inline constexpr std::string_view kZoSheetListSeparator = " | ";

constexpr std::size_t ZoColumnIndex(ZoSheetColumn column)
{
    return static_cast<std::size_t>(column);
}

// The names of the project's time tables and groups by id (UTF-8, as stored), and the ids
// by name. A name borne twice resolves to the first table (days, then weeks, then
// calendars) or group that bears it, as the editor's lists find it.
class ZoSheetNames {
public:
    ZoSheetNames(XmlDocument::XmlNode const* eventsRoot, XmlDocument::XmlNode const* timeTablesRoot);

    std::string_view TimeTableName(std::string_view id) const;
    std::string_view GroupName(std::string_view id) const;
    // Empty when no element bears the name.
    std::string_view TimeTableId(std::string_view name) const;
    std::string_view GroupId(std::string_view name) const;

private:
    using Map = std::unordered_map<std::string_view, std::string_view>;
    static void Add(Map& byId, Map& byName, XmlDocument::XmlNode const* container, wchar_t const* tag);
    static std::string_view Find(Map const& map, std::string_view key);
    Map m_tableNames, m_tableIds, m_groupNames, m_groupIds;
};

using ZoSheetCells = std::array<std::string, kZoSheetColumnCount>;

// The cells of one event as the export writes them (UTF-8).
void ZoEventSheetCells(XmlDocument::XmlNode const& event, ZoSheetNames const& names, ZoSheetCells& cells);

// "T" or "F": the sheet's booleans.
inline std::string_view ZoSheetBool(bool value)
{
    return value ? "T" : "F";
}
