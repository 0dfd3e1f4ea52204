#include "groups/EventGroupsModel.h"
#include "groups/NameRowsModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include <algorithm>

EventGroupsModel::EventGroupsModel(XmlDocument* eventsCfg, QObject* parent)
    : QAbstractTableModel(parent)
    , m_eventsCfg(eventsCfg)
    , m_heading(ZoText(355))
{
}

EventGroupsModel::~EventGroupsModel() = default;

void EventGroupsModel::UpdateList()
{
    beginResetModel();
    m_records = CollectGroupMembers(m_eventsCfg ? m_eventsCfg->Root() : nullptr);
    SortRows();
    endResetModel();
}

void EventGroupsModel::Clear()
{
    beginResetModel();
    m_records.clear();
    m_order.clear();
    endResetModel();
}

void EventGroupsModel::SortRows()
{
    std::vector<QString> names;
    names.reserve(m_records.size());
    for (GroupRecord const& record : m_records)
        names.push_back(record.name);
    m_order = NameOrder(names, m_descending);
}

GroupRecord* EventGroupsModel::RecordAt(int row)
{
    return row >= 0 && std::size_t(row) < m_order.size() ? &m_records[m_order[std::size_t(row)]] : nullptr;
}

GroupRecord const* EventGroupsModel::RecordAt(int row) const
{
    return row >= 0 && std::size_t(row) < m_order.size() ? &m_records[m_order[std::size_t(row)]] : nullptr;
}

XmlDocument::XmlNode* EventGroupsModel::GroupAt(int row) const
{
    GroupRecord const* record = RecordAt(row);
    return record ? record->group : nullptr;
}

int EventGroupsModel::FindGroup(XmlDocument::XmlNode const* group) const
{
    for (std::size_t row = 0; row < m_order.size(); ++row)
        if (m_records[m_order[row]].group == group)
            return int(row);
    return -1;
}

int EventGroupsModel::FindName(QString const& name) const
{
    for (std::size_t row = 0; row < m_order.size(); ++row)
        if (m_records[m_order[row]].name == name)
            return int(row);
    return -1;
}

int EventGroupsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int EventGroupsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant EventGroupsModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole)
        return RecordAt(index.row())->name;
    if (role == Qt::DecorationRole) {
        if (m_icon.isNull())
            m_icon = ZoBitmapIcon(2408);
        return m_icon;
    }
    return {};
}

QVariant EventGroupsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section == 0 && role == Qt::DisplayRole)
        return m_heading;
    return {};
}
