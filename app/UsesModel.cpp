#include "UsesModel.h"

#include "platform/tools/ZoTexts.h"

UsesModel::UsesModel(QObject* parent) : QAbstractTableModel(parent) {}

void UsesModel::SetUses(std::vector<ZoFinding> uses)
{
    beginResetModel();
    m_uses = std::move(uses);
    endResetModel();
}

int UsesModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_uses.size());
}

int UsesModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant UsesModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    ZoFinding const& use = UseAt(index.row());
    switch (index.column()) {
    case ElementColumn: return QString::fromStdWString(ZoSubjectText(use));
    case FieldColumn: return QString::fromStdWString(ZoFieldText(use));
    case TextColumn: return QString::fromStdWString(use.message);
    default: return {};
    }
}

QVariant UsesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    static constexpr unsigned kHeaders[] = {64740, 64741, 64742};
    return ZoText(kHeaders[section]);
}
