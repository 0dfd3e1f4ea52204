#include "editor/ZoNumberedListModel.h"

#include <algorithm>
#include <unordered_map>

ZoNumberedListModel::ZoNumberedListModel(QString textHeading, QObject* parent)
    : QAbstractTableModel(parent)
    , m_heading(std::move(textHeading))
{
}

void ZoNumberedListModel::SetRows(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    Sort();
    endResetModel();
}

void ZoNumberedListModel::ClickColumn(int column)
{
    if (column < 0 || column >= ColumnCount)
        return;
    m_descending = column == m_sortColumn ? !m_descending : false;
    m_sortColumn = column;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    // The selection follows its rows: rows are told apart by their position, unique in a list.
    QModelIndexList const before = persistentIndexList();
    std::vector<int> positions;
    for (QModelIndex const& index : before)
        positions.push_back(m_rows[std::size_t(index.row())].position);
    Sort();
    std::unordered_map<int, int> rowOfPosition;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        rowOfPosition[m_rows[row].position] = int(row);
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after << index(rowOfPosition[positions[std::size_t(i)]], before[i].column());
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ZoNumberedListModel::Sort()
{
    if (m_sortColumn < 0)
        return;
    auto const byPosition = [](Row const& a, Row const& b) { return a.position < b.position; };
    auto const byText = [](Row const& a, Row const& b) {
        int const order = a.text.compare(b.text, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a.position < b.position;
    };
    if (m_sortColumn == NumberColumn)
        std::sort(m_rows.begin(), m_rows.end(), byPosition);
    else
        std::sort(m_rows.begin(), m_rows.end(), byText);
    if (m_descending)
        std::reverse(m_rows.begin(), m_rows.end());
}

std::vector<std::wstring> ZoNumberedListModel::Texts() const
{
    std::vector<std::wstring> texts;
    texts.reserve(m_rows.size());
    for (Row const& row : m_rows)
        texts.push_back(row.text.toStdWString());
    return texts;
}

int ZoNumberedListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ZoNumberedListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZoNumberedListModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= ColumnCount)
        return {};
    Row const& row = m_rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        if (index.column() == NumberColumn)
            return role == Qt::DisplayRole ? QVariant(QString::number(row.position + 1)) : QVariant();
        return row.text;
    }
    if (role == Qt::TextAlignmentRole && index.column() == NumberColumn)
        return QVariant(int(Qt::AlignRight | Qt::AlignVCenter));
    return {};
}

QVariant ZoNumberedListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == TextColumn ? QVariant(m_heading) : QVariant(QString());
}
