#include "timetables/DaySlotsModel.h"
#include "platform/tools/ZoTexts.h"

DaySlotsModel::DaySlotsModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void DaySlotsModel::Load(XmlDocument::XmlNode const* day)
{
    m_map.Clear();
    m_map.MarkSlotsOf(day);
    Rebuild();
}

void DaySlotsModel::Add(DaySlot slot)
{
    m_map.Mark(slot);
    Rebuild();
}

void DaySlotsModel::Replace(DaySlot old, DaySlot slot)
{
    m_map.Unmark(old);
    m_map.Mark(slot);
    Rebuild();
}

void DaySlotsModel::Remove(std::vector<int> const& rows)
{
    for (int row : rows)
        if (row >= 0 && row < static_cast<int>(m_slots.size()))
            m_map.Unmark(m_slots[row]);
    Rebuild();
}

void DaySlotsModel::Rebuild()
{
    beginResetModel();
    m_slots = m_map.Slots();
    endResetModel();
}

DaySlot DaySlotsModel::SlotAt(int row) const
{
    return row >= 0 && row < static_cast<int>(m_slots.size()) ? m_slots[row] : DaySlot{};
}

int DaySlotsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_slots.size());
}

int DaySlotsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DaySlotsModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role != Qt::DisplayRole)
        return {};
    DaySlot const& slot = m_slots[index.row()];
    return QString::fromStdWString(SlotTimeText(index.column() == FromColumn ? slot.from : slot.to));
}

QVariant DaySlotsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == FromColumn ? ZoText(462) : ZoText(463);
}
