// Reading the sheet into a plan: the header, the rows matched by id, each cell compared
// with what the export writes and, when it differs, read and checked.
#include "spreadsheet/EventsImport.h"

#include "editor/ZoEventFields.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "spreadsheet/CsvReader.h"
#include "spreadsheet/SheetValues.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

using XmlNode = XmlDocument::XmlNode;

ZoFieldChange const* ZoImportedEvent::Change(ZoSheetColumn column) const
{
    for (ZoFieldChange const& change : changes)
        if (change.column == column)
            return &change;
    return nullptr;
}

namespace {

constexpr int kNoColumn = -1;

class Planner {
public:
    Planner(ZoCsvTable const& table, ZoImportTarget const& target, ZoImportOptions const& options, ZoImportPlan& plan)
        : m_table(table), m_target(target), m_options(options), m_plan(plan),
          m_names(target.events ? target.events->Root() : nullptr,
                  target.timeTables ? target.timeTables->Root() : nullptr)
    {
        m_columns.fill(kNoColumn);
    }

    void Run()
    {
        if (!ReadHeader())
            return;
        IndexEvents();
        for (std::size_t row = 1; row < m_table.RowCount(); ++row)
            ReadRow(row);
        if (m_options.deleteMissing)
            FindDeleted();
        CheckNames();
    }

private:
    void Fault(int line, int column, std::wstring reason)
    {
        ZoSheetFault& fault = m_plan.faults.emplace_back();
        fault.line = line;
        fault.column = column;
        if (column > 0 && static_cast<std::size_t>(column) <= m_table.CellCount(0))
            fault.header = m_table.Cell(0, static_cast<std::size_t>(column - 1));
        fault.reason = std::move(reason);
    }

    void Fault(std::size_t row, ZoSheetColumn column, std::wstring reason)
    {
        Fault(m_table.Line(row), m_columns[ZoColumnIndex(column)] + 1, std::move(reason));
    }

    bool ReadHeader()
    {
        if (m_table.RowCount() == 0) {
            Fault(1, 0, ZoFormat(ZoLoadString(64608).c_str(), L"id"));
            return false;
        }
        for (std::size_t cell = 0; cell < m_table.CellCount(0); ++cell) {
            std::string_view const header = ZoTrimBlanks(m_table.Cell(0, cell));
            int column = kNoColumn;
            for (std::size_t known = 0; known < kZoSheetColumnCount; ++known)
                if (ZoEqualsNoCase(header, kZoSheetHeaders[known]))
                    column = static_cast<int>(known);
            if (column == kNoColumn) {
                m_plan.ignoredColumns.push_back(std::to_string(cell + 1) + " (" + std::string(header) + ")");
            } else if (m_columns[static_cast<std::size_t>(column)] != kNoColumn) {
                Fault(m_table.Line(0), static_cast<int>(cell + 1),
                      ZoFormat(ZoLoadString(64609).c_str(), ZoFromUtf8(header).c_str()));
            } else {
                m_columns[static_cast<std::size_t>(column)] = static_cast<int>(cell);
            }
        }
        for (ZoSheetColumn required : {ZoSheetColumn::Id, ZoSheetColumn::Name})
            if (m_columns[ZoColumnIndex(required)] == kNoColumn)
                Fault(m_table.Line(0), 0,
                      ZoFormat(ZoLoadString(64608).c_str(),
                               ZoFromUtf8(kZoSheetHeaders[ZoColumnIndex(required)]).c_str()));
        return m_plan.faults.empty();
    }

    void IndexEvents()
    {
        XmlNode* root = m_target.events ? m_target.events->Root() : nullptr;
        m_events = root ? root->Child(L"events") : nullptr;
        if (!m_events)
            return;
        m_byId.reserve(static_cast<std::size_t>(m_events->Size()));
        for (XmlNode* event = m_events->FirstChild(); event; event = event->NextSibling())
            if (event->HasTag(L"event"))
                m_byId.emplace(event->ValueUtf8(L"id"), Match{event, 0});
    }

    std::string_view CellOf(std::size_t row, ZoSheetColumn column) const
    {
        int const cell = m_columns[ZoColumnIndex(column)];
        return cell == kNoColumn ? std::string_view() : m_table.Cell(row, static_cast<std::size_t>(cell));
    }

    void ReadRow(std::size_t row)
    {
        // Spreadsheet programs write rows of empty cells below the data: no event.
        bool empty = true;
        for (std::size_t cell = 0; empty && cell < m_table.CellCount(row); ++cell)
            empty = ZoTrimBlanks(m_table.Cell(row, cell)).empty();
        if (empty)
            return;
        if (m_table.CellCount(row) > m_table.CellCount(0)) {
            for (std::size_t cell = m_table.CellCount(0); cell < m_table.CellCount(row); ++cell)
                if (!m_table.Cell(row, cell).empty()) {
                    Fault(m_table.Line(row), static_cast<int>(cell + 1), ZoLoadString(64622));
                    return;
                }
        }
        std::string_view const id = ZoTrimBlanks(CellOf(row, ZoSheetColumn::Id));
        if (id.empty()) {
            ReadNewRow(row);
            return;
        }
        auto const found = m_byId.find(id);
        if (found == m_byId.end()) {
            Fault(row, ZoSheetColumn::Id, ZoLoadString(64610));
            return;
        }
        if (found->second.line != 0) {
            Fault(row, ZoSheetColumn::Id, ZoFormat(ZoLoadString(64611).c_str(), found->second.line));
            return;
        }
        found->second.line = m_table.Line(row);
        ReadEventRow(row, *found->second.event);
    }

    // Each cell that reads otherwise than the export writes it is read as a value; a value
    // that is the same once read (TRUE for T) changes nothing.
    void ReadEventRow(std::size_t row, XmlNode& event)
    {
        ZoEventSheetCells(event, m_names, m_cells);
        ZoImportedEvent imported;
        imported.line = m_table.Line(row);
        imported.event = &event;
        bool faulty = false;
        for (std::size_t column = 0; column < kZoSheetColumnCount; ++column) {
            auto const which = static_cast<ZoSheetColumn>(column);
            if (which == ZoSheetColumn::Id || which == ZoSheetColumn::Actions || m_columns[column] == kNoColumn)
                continue;
            std::string_view const cell = CellOf(row, which);
            if (cell == m_cells[column])
                continue;
            faulty |= !ReadCell(row, which, cell, m_cells[column], imported);
        }
        imported.name = imported.Change(ZoSheetColumn::Name) ? imported.Change(ZoSheetColumn::Name)->after
                                                             : m_cells[ZoColumnIndex(ZoSheetColumn::Name)];
        if (faulty)
            return;
        if (imported.changes.empty())
            ++m_plan.unchanged;
        else
            m_plan.modified.push_back(std::move(imported));
    }

    void ReadNewRow(std::size_t row)
    {
        ZoImportedEvent imported;
        imported.line = m_table.Line(row);
        bool faulty = false;
        for (std::size_t column = 0; column < kZoSheetColumnCount; ++column) {
            auto const which = static_cast<ZoSheetColumn>(column);
            if (which == ZoSheetColumn::Id || which == ZoSheetColumn::Actions)
                continue;
            std::string_view const cell = CellOf(row, which);
            // A new event must have a name and a condition, even when the sheet lacks the column.
            bool const required = which == ZoSheetColumn::Name || which == ZoSheetColumn::Condition;
            if (cell.empty() && !required)
                continue;
            faulty |= !ReadCell(row, which, cell, std::string(), imported);
        }
        if (ZoFieldChange const* name = imported.Change(ZoSheetColumn::Name))
            imported.name = name->after;
        if (!faulty)
            m_plan.added.push_back(std::move(imported));
    }

    // Reads one cell that differs from `before`; false with a fault when it is refused.
    bool ReadCell(std::size_t row, ZoSheetColumn column, std::string_view cell, std::string_view before,
                  ZoImportedEvent& imported)
    {
        ZoSheetValue value = ZoReadSheetValue(column, cell, m_names);
        if (value.fault.empty() && column == ZoSheetColumn::Groups)
            ResolveGroups(value);
        if (!value.fault.empty()) {
            Fault(row, column, std::move(value.fault));
            return false;
        }
        if (value.text == before)
            return true;
        if (column == ZoSheetColumn::TimeTable)
            imported.timeTableId = value.timeTableId;
        else if (column == ZoSheetColumn::Groups)
            imported.groups = std::move(value.items);
        else if (column == ZoSheetColumn::Arguments)
            for (std::size_t i = 0; i + 1 < value.items.size(); i += 2)
                imported.arguments.push_back({std::move(value.items[i]), std::move(value.items[i + 1])});
        imported.changes.push_back({column, std::string(before), std::move(value.text)});
        return true;
    }

    // Unknown groups are refused, or noted for creation when asked.
    void ResolveGroups(ZoSheetValue& value)
    {
        for (std::string const& name : value.items) {
            if (!m_names.GroupId(name).empty() || m_newGroups.count(name))
                continue;
            if (!m_options.createGroups) {
                value.fault = ZoFormat(ZoLoadString(64619).c_str(), ZoFromUtf8(name).c_str());
                return;
            }
            if (!IsValidId(ZoFromUtf8(name).c_str(), true)) {
                value.fault = ZoFormat(ZoLoadString(64623).c_str(), ZoFromUtf8(name).c_str());
                return;
            }
            m_newGroups.insert(name);
            m_plan.newGroups.push_back(name);
        }
    }

    void FindDeleted()
    {
        if (!m_events)
            return;
        for (XmlNode* event = m_events->FirstChild(); event; event = event->NextSibling()) {
            if (!event->HasTag(L"event"))
                continue;
            auto const found = m_byId.find(event->ValueUtf8(L"id"));
            if (found != m_byId.end() && found->second.event == event && found->second.line != 0)
                continue;
            m_plan.deleted.push_back({event, std::string(event->ValueUtf8(L"name"))});
        }
    }

    // A name that a row gives (a new event's, or a changed one) must be no other event's
    // after the import. Names the rows leave as they are never refuse a row.
    void CheckNames()
    {
        std::unordered_map<std::string_view, int> count;
        std::unordered_set<XmlNode const*> renamedOrGone;
        for (ZoImportedEvent const& event : m_plan.modified)
            if (event.Change(ZoSheetColumn::Name))
                renamedOrGone.insert(event.event);
        for (ZoImportPlan::Deleted const& deleted : m_plan.deleted)
            renamedOrGone.insert(deleted.event);
        if (m_events)
            for (XmlNode const* event = m_events->FirstChild(); event; event = event->NextSibling())
                if (event->HasTag(L"event") && !renamedOrGone.count(event))
                    ++count[event->ValueUtf8(L"name")];
        auto const named = [&](std::vector<ZoImportedEvent> const& events, bool all) {
            for (ZoImportedEvent const& event : events)
                if (all || event.Change(ZoSheetColumn::Name))
                    ++count[event.name];
        };
        named(m_plan.modified, false);
        named(m_plan.added, true);
        auto const check = [&](std::vector<ZoImportedEvent> const& events, bool all) {
            for (ZoImportedEvent const& event : events)
                if ((all || event.Change(ZoSheetColumn::Name)) && count[event.name] > 1)
                    Fault(event.line, m_columns[ZoColumnIndex(ZoSheetColumn::Name)] + 1,
                          ZoFormat(ZoLoadString(64614).c_str(), ZoFromUtf8(event.name).c_str()));
        };
        check(m_plan.modified, false);
        check(m_plan.added, true);
    }

    struct Match {
        XmlNode* event;
        int line; // of the row that names it; 0 before
    };

    ZoCsvTable const& m_table;
    ZoImportTarget const& m_target;
    ZoImportOptions const& m_options;
    ZoImportPlan& m_plan;
    ZoSheetNames const m_names;
    std::array<int, kZoSheetColumnCount> m_columns{};
    XmlNode* m_events = nullptr;
    std::unordered_map<std::string_view, Match> m_byId;
    std::unordered_set<std::string> m_newGroups;
    ZoSheetCells m_cells;
};

} // namespace

ZoImportPlan ZoPlanImport(std::string_view sheet, ZoImportTarget const& target, ZoImportOptions const& options)
{
    ZoImportPlan plan;
    plan.deleteMissing = options.deleteMissing;
    ZoCsvTable table;
    if (!table.Read(sheet)) {
        ZoSheetFault& fault = plan.faults.emplace_back();
        fault.line = table.Error().line;
        fault.column = table.Error().column;
        fault.reason = ZoCsvFaultText(table.Error().fault);
        return plan;
    }
    Planner(table, target, options, plan).Run();
    return plan;
}
