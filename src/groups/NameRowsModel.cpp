#include "groups/NameRowsModel.h"
#include "platform/tools/ZoTexts.h"
#include <algorithm>
#include <numeric>

std::vector<std::size_t> NameOrder(std::vector<QString> const& names, bool descending)
{
    std::vector<QString> folded;
    folded.reserve(names.size());
    for (QString const& name : names)
        folded.push_back(name.toCaseFolded());
    auto const less = [&](std::size_t a, std::size_t b) {
        int const order = folded[a].compare(folded[b]);
        return order != 0 ? order < 0 : names[a].compare(names[b]) < 0;
    };
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    if (descending)
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return less(b, a); });
    else
        std::stable_sort(order.begin(), order.end(), less);
    return order;
}

NameRowsModel::NameRowsModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_heading(ZoText(355))
{
}

void NameRowsModel::SetNames(std::vector<QString> names)
{
    beginResetModel();
    if (m_sorted) {
        std::vector<std::size_t> const order = NameOrder(names);
        m_names.clear();
        m_names.reserve(names.size());
        for (std::size_t i : order)
            m_names.push_back(std::move(names[i]));
    } else {
        m_names = std::move(names);
    }
    endResetModel();
}

int NameRowsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_names.size());
}

int NameRowsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant NameRowsModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return m_names[std::size_t(index.row())];
    if (role == Qt::DecorationRole && !m_icon.isNull())
        return m_icon;
    return {};
}

QVariant NameRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section == 0 && role == Qt::DisplayRole)
        return m_heading;
    return {};
}
