#include "SheetImportModel.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <QBrush>
#include <QPalette>

namespace {

QString Utf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

unsigned KindText(SheetImportModel::Kind kind, ZoSeverity severity)
{
    using Kind = SheetImportModel::Kind;
    switch (kind) {
    case Kind::Refused: return 64650;
    case Kind::NotImported: return 64651;
    case Kind::NewGroup: return 64655;
    case Kind::Modified: return 64652;
    case Kind::Added: return 64653;
    case Kind::Deleted: return 64654;
    case Kind::Finding:
        return severity == ZoSeverity::Error ? 64656 : severity == ZoSeverity::Warning ? 64657 : 64658;
    }
    return 0;
}

} // namespace

SheetImportModel::SheetImportModel(std::string sheet, ZoImportTarget target, QObject* parent)
    : QAbstractTableModel(parent), m_sheet(std::move(sheet)), m_target(std::move(target))
{
}

void SheetImportModel::Plan(ZoImportOptions const& options)
{
    beginResetModel();
    m_plan = ZoPlanImport(m_sheet, m_target, options);
    ZoCheckImport(m_plan, m_target);
    FillRows();
    endResetModel();
}

void SheetImportModel::FillRows()
{
    m_rows.clear();
    auto const add = [this](Kind kind, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            m_rows.push_back({kind, static_cast<std::uint32_t>(i), 0});
    };
    add(Kind::Refused, m_plan.faults.size());
    add(Kind::NotImported, m_plan.ignoredColumns.size());
    add(Kind::NewGroup, m_plan.newGroups.size());
    for (std::size_t i = 0; i < m_plan.modified.size(); ++i)
        for (std::size_t part = 0; part < m_plan.modified[i].changes.size(); ++part)
            m_rows.push_back({Kind::Modified, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(part)});
    add(Kind::Added, m_plan.added.size());
    add(Kind::Deleted, m_plan.deleted.size());
    add(Kind::Finding, m_plan.findings.size());
}

int SheetImportModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int SheetImportModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

int SheetImportModel::LineOf(Row const& row) const
{
    switch (row.kind) {
    case Kind::Refused: return m_plan.faults[row.item].line;
    case Kind::Modified: return m_plan.modified[row.item].line;
    case Kind::Added: return m_plan.added[row.item].line;
    case Kind::Finding: return m_plan.findings[row.item].line;
    default: return 0;
    }
}

QString SheetImportModel::EventOf(Row const& row) const
{
    switch (row.kind) {
    case Kind::Modified: return Utf8(m_plan.modified[row.item].name);
    case Kind::Added: return Utf8(m_plan.added[row.item].name);
    case Kind::Deleted: return Utf8(m_plan.deleted[row.item].name);
    case Kind::NewGroup: return Utf8(m_plan.newGroups[row.item]);
    case Kind::Finding: return QString::fromStdWString(m_plan.findings[row.item].finding.name);
    default: return {};
    }
}

QString SheetImportModel::DetailsOf(Row const& row) const
{
    switch (row.kind) {
    case Kind::Refused: {
        // The line is a column of its own here: the reason, after the cell's column.
        ZoSheetFault const& fault = m_plan.faults[row.item];
        QString const reason = QString::fromStdWString(fault.reason);
        if (fault.column <= 0)
            return reason;
        QString column = QString::fromStdWString(ZoFormat(ZoLoadString(64664).c_str(), fault.column));
        if (!fault.header.empty())
            column += " (" + Utf8(fault.header) + ")";
        return column + ": " + reason;
    }
    case Kind::NotImported: return Utf8(m_plan.ignoredColumns[row.item]);
    case Kind::Modified:
        return QString::fromStdWString(ZoFieldChangeText(m_plan.modified[row.item].changes[row.part]));
    case Kind::Finding: {
        ZoFinding const& finding = m_plan.findings[row.item].finding;
        QString const field = QString::fromStdWString(ZoFieldText(finding));
        QString const message = QString::fromStdWString(finding.message);
        return field.isEmpty() ? message : field + ": " + message;
    }
    default: return {};
    }
}

QVariant SheetImportModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    Row const& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::ForegroundRole && index.column() == KindColumn
        && (row.kind == Kind::Refused
            || (row.kind == Kind::Finding && m_plan.findings[row.item].finding.severity == ZoSeverity::Error)))
        return QBrush(Qt::darkRed);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case LineColumn: {
        int const line = LineOf(row);
        return line > 0 ? QVariant(line) : QVariant();
    }
    case KindColumn: {
        ZoSeverity const severity =
            row.kind == Kind::Finding ? m_plan.findings[row.item].finding.severity : ZoSeverity::Error;
        return ZoText(KindText(row.kind, severity));
    }
    case EventColumn: return EventOf(row);
    case DetailsColumn: return DetailsOf(row);
    default: return {};
    }
}

QVariant SheetImportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    static constexpr unsigned kHeaders[ColumnCount] = {64660, 64661, 64662, 64663};
    return ZoText(kHeaders[section]);
}
