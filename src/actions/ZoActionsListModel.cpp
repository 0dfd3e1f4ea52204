#include "actions/ZoActionsListModel.h"
#include "actions/ZoActionKinds.h"
#include "events/EventNames.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include <algorithm>
#include <bit>

using XmlNode = XmlDocument::XmlNode;

ZoActionsListModel::ZoActionsListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    std::array<std::string, kActionKindCount> folded;
    for (int index = 0; index < kActionKindCount; ++index) {
        m_kindTexts[index] = ZoText(ZoActionKindAt(index).nameText);
        folded[index] = FoldedName(m_kindTexts[index].toStdWString());
    }
    for (int index = 0; index < kActionKindCount; ++index)
        m_kindRanks[index] = static_cast<int>(std::count_if(folded.begin(), folded.end(), [&](std::string const& other) {
            return other < folded[index];
        }));
}

ZoActionsListModel::~ZoActionsListModel() = default;

// The kinds are single bits in table order: the bit's position is the table index.
int ZoActionsListModel::KindIndex(unsigned kind) const
{
    return kind ? std::countr_zero(kind) : 0;
}

void ZoActionsListModel::Fill(XmlNode* moment, bool sorted)
{
    beginResetModel();
    m_rows.clear();
    if (moment) {
        m_rows.reserve(static_cast<std::size_t>(moment->Size()));
        for (XmlNode* child = moment->FirstChild(); child; child = child->NextSibling()) {
            unsigned const kind = ZoActionKindOf(*child);
            if (!kind)
                continue;
            Entry entry;
            entry.row = Row{static_cast<int>(m_rows.size()), child, kind};
            ZoAppendActionSummary(entry.summary, *child, kind);
            AppendFoldedName(entry.foldedSummary, entry.summary);
            m_rows.push_back(std::move(entry));
        }
    }
    if (sorted)
        Sort();
    endResetModel();
}

void ZoActionsListModel::Clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void ZoActionsListModel::ClickColumn(int column)
{
    m_order.Click(column, ColumnCount);
}

void ZoActionsListModel::Sort()
{
    auto const ascending = [this](Entry const& a, Entry const& b) {
        if (m_order.Column() == KindColumn) {
            int const rankA = m_kindRanks[KindIndex(a.row.kind)];
            int const rankB = m_kindRanks[KindIndex(b.row.kind)];
            if (rankA != rankB)
                return rankA < rankB;
        }
        return a.foldedSummary < b.foldedSummary;
    };
    m_order.Sort(m_rows, ascending);
}

ZoActionsListModel::Row const* ZoActionsListModel::RowAt(int row) const
{
    return row >= 0 && row < static_cast<int>(m_rows.size()) ? &m_rows[row].row : nullptr;
}

int ZoActionsListModel::RowOf(XmlNode const* element) const
{
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].row.element == element)
            return static_cast<int>(row);
    return -1;
}

int ZoActionsListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ZoActionsListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZoActionsListModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Entry const& entry = m_rows[index.row()];
    int const kindIndex = KindIndex(entry.row.kind);
    if (role == Qt::DisplayRole) {
        if (index.column() == KindColumn)
            return m_kindTexts[kindIndex];
        return QString::fromUtf8(entry.summary.data(), static_cast<qsizetype>(entry.summary.size()));
    }
    if (role == Qt::DecorationRole && index.column() == KindColumn) {
        if (!m_iconsLoaded) {
            for (int kind = 0; kind < kActionKindCount; ++kind) {
                ZoActionKindInfo const& info = ZoActionKindAt(kind);
                m_icons[kind] = info.bitmap ? ZoBitmapIcon(info.bitmap) : ZoImageIcon(info.image);
            }
            m_iconsLoaded = true;
        }
        return m_icons[kindIndex];
    }
    return {};
}

QVariant ZoActionsListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    if (section == KindColumn)
        return ZoText(544);
    if (section == SummaryColumn)
        return ZoText(284);
    return {};
}
