#include "templatedialogs/TemplateRowsModel.h"

#include <QTreeView>

TemplateRowsModel::TemplateRowsModel(QStringList headings, bool checkable, QObject* parent)
    : QAbstractTableModel(parent), m_headings(std::move(headings)), m_checkable(checkable)
{
}

void TemplateRowsModel::SetRows(std::vector<QStringList> rows, std::vector<bool> checked)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_checked = std::move(checked);
    m_checked.resize(m_rows.size(), false);
    endResetModel();
    emit CheckedChanged();
}

void TemplateRowsModel::SetChecked(int row, bool checked)
{
    if (row < 0 || row >= rowCount() || m_checked[std::size_t(row)] == checked)
        return;
    m_checked[std::size_t(row)] = checked;
    emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
    emit CheckedChanged();
}

void TemplateRowsModel::SetAllChecked(bool checked)
{
    if (m_rows.empty())
        return;
    m_checked.assign(m_rows.size(), checked);
    emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
    emit CheckedChanged();
}

bool TemplateRowsModel::IsChecked(int row) const
{
    return row >= 0 && row < rowCount() && m_checked[std::size_t(row)];
}

std::vector<int> TemplateRowsModel::CheckedRows() const
{
    std::vector<int> rows;
    for (std::size_t i = 0; i < m_checked.size(); ++i) {
        if (m_checked[i])
            rows.push_back(int(i));
    }
    return rows;
}

int TemplateRowsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int TemplateRowsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_headings.size());
}

QVariant TemplateRowsModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    QStringList const& row = m_rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return index.column() < row.size() ? row[index.column()] : QString();
    if (role == Qt::CheckStateRole && m_checkable && index.column() == 0)
        return m_checked[std::size_t(index.row())] ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool TemplateRowsModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || !m_checkable || index.column() != 0)
        return false;
    SetChecked(index.row(), value.value<Qt::CheckState>() == Qt::Checked);
    return true;
}

Qt::ItemFlags TemplateRowsModel::flags(QModelIndex const& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (m_checkable && index.isValid() && index.column() == 0)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant TemplateRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < m_headings.size())
        return m_headings[section];
    return {};
}

void FitTemplateColumns(QTreeView* list)
{
    int const columns = list->model()->columnCount();
    for (int column = 0; column + 1 < columns; ++column)
        list->resizeColumnToContents(column);
}
