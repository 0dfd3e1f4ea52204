#include "EventChoiceModel.h"

#include "config/XmlKeys.h"
#include "platform/tools/ZoKeyOrder.h"
#include "platform/tools/ZoTexts.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <numeric>

using XmlNode = XmlDocument::XmlNode;

EventChoiceModel::EventChoiceModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void EventChoiceModel::Fill(XmlNode const* events)
{
    beginResetModel();
    m_rows.clear();
    m_nameKeys.clear();
    m_nameKey.clear();
    m_descriptionKeys.clear();
    m_descriptionKey.clear();
    m_filter.clear();
    m_needle.clear();
    m_descriptionTag = nullptr;
    m_disabledTag = nullptr;
    if (events) {
        // Tags are compared as the document interns them (see XmlDocument::TagKey).
        events->FirstChild(); // a working copy's element interns its children's tags here
        XmlDocument const& document = *events->Document();
        m_descriptionTag = document.TagKey(L"description");
        m_disabledTag = document.TagKey(L"disabled");
        m_rows.reserve(static_cast<std::size_t>(events->Size()));
        m_nameKey.reserve(static_cast<std::size_t>(events->Size()));
        m_nameKeys.reserve(static_cast<std::size_t>(events->Size()) * 32);
        zo::xml::ForEachKeyText(*events, document.TagKey(L"event"), document.TagKey(L"name"),
                                [this](XmlNode const& event, std::string_view name) {
                                    m_rows.push_back({&event, name});
                                    AppendKey(m_nameKeys, m_nameKey, name);
                                });
    }
    m_sorted = ZoOrderByKeys(m_rows.size(), [this](std::size_t row) { return Key(m_nameKeys, m_nameKey[row]); });
    m_sortColumn = 0;
    m_sortOrder = Qt::AscendingOrder;
    m_shown = m_sorted;
    endResetModel();
}

std::string_view EventChoiceModel::Key(std::string const& keys, KeySpan span) const
{
    return std::string_view(keys).substr(span.offset, span.length);
}

void EventChoiceModel::AppendKey(std::string& keys, std::vector<KeySpan>& spans, std::string_view text)
{
    auto const offset = static_cast<std::uint32_t>(keys.size());
    ZoAppendCaseFoldedKey(keys, text);
    spans.push_back({offset, static_cast<std::uint32_t>(keys.size() - offset)});
}

void EventChoiceModel::FoldDescriptions()
{
    if (m_descriptionKey.size() == m_rows.size())
        return;
    m_descriptionKeys.clear();
    m_descriptionKey.clear();
    m_descriptionKey.reserve(m_rows.size());
    for (Row const& row : m_rows)
        AppendKey(m_descriptionKeys, m_descriptionKey, zo::xml::TextOf(*row.event, m_descriptionTag));
}

void EventChoiceModel::SetFilter(QString const& text)
{
    if (text == m_filter)
        return;
    std::string needle;
    ZoAppendCaseFoldedKey(needle, text.toStdString());
    // A text that holds the previous one keeps only rows that the previous one kept.
    bool const narrowing = !m_needle.empty() && needle.find(m_needle) != std::string::npos;
    beginResetModel();
    m_filter = text;
    m_needle = std::move(needle);
    ApplyFilter(narrowing);
    endResetModel();
}

void EventChoiceModel::ApplyFilter(bool narrowing)
{
    if (m_needle.empty()) {
        m_shown = m_sorted;
        return;
    }
    std::vector<std::uint32_t> kept;
    for (std::uint32_t const row : narrowing ? m_shown : m_sorted)
        if (Key(m_nameKeys, m_nameKey[row]).find(m_needle) != std::string_view::npos)
            kept.push_back(row);
    m_shown = std::move(kept);
}

void EventChoiceModel::sort(int column, Qt::SortOrder order)
{
    if (column < -1 || column >= columnCount() || (column == m_sortColumn && order == m_sortOrder))
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    QModelIndexList const before = persistentIndexList();
    std::vector<int> positions;
    positions.reserve(static_cast<std::size_t>(before.size()));
    for (QModelIndex const& index : before)
        positions.push_back(PositionAt(index.row()));

    bool const flip = column == m_sortColumn;
    m_sortColumn = column;
    m_sortOrder = order;
    if (column < 0) {
        // No sort column: document order, or its reverse.
        std::iota(m_sorted.begin(), m_sorted.end(), 0u);
        if (order == Qt::DescendingOrder)
            std::reverse(m_sorted.begin(), m_sorted.end());
    } else {
        if (column == 1)
            FoldDescriptions();
        std::string const& keys = column == 0 ? m_nameKeys : m_descriptionKeys;
        std::vector<KeySpan> const& key = column == 0 ? m_nameKey : m_descriptionKey;
        auto keyOf = [&](std::uint32_t row) { return Key(keys, key[row]); };
        // A stable sort: rows of equal texts keep the order they had. The other direction of
        // an order is its reverse with each run of equal texts put back as it was.
        auto reverseKeepingTies = [&](std::vector<std::uint32_t>& rows) {
            std::reverse(rows.begin(), rows.end());
            for (auto run = rows.begin(); run != rows.end();) {
                auto const end = std::find_if(run, rows.end(), [&](std::uint32_t row) { return keyOf(row) != keyOf(*run); });
                std::reverse(run, end);
                run = end;
            }
        };
        if (!flip) {
            std::vector<std::uint32_t> const byKey =
                ZoOrderByKeys(m_sorted.size(), [&](std::size_t i) { return keyOf(m_sorted[i]); });
            std::vector<std::uint32_t> sorted(m_sorted.size());
            for (std::size_t i = 0; i < byKey.size(); ++i)
                sorted[i] = m_sorted[byKey[i]];
            m_sorted = std::move(sorted);
        }
        if (flip || order == Qt::DescendingOrder)
            reverseKeepingTies(m_sorted);
    }
    ApplyFilter(false);

    QModelIndexList after;
    after.reserve(before.size());
    for (qsizetype i = 0; i < before.size(); ++i) {
        int const row = RowOf(positions[static_cast<std::size_t>(i)]);
        after.push_back(row < 0 ? QModelIndex() : index(row, before[i].column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int EventChoiceModel::PositionAt(int row) const
{
    return row >= 0 && static_cast<std::size_t>(row) < m_shown.size() ? static_cast<int>(m_shown[static_cast<std::size_t>(row)])
                                                                       : -1;
}

int EventChoiceModel::RowOf(int position) const
{
    auto const found = std::find(m_shown.begin(), m_shown.end(), static_cast<std::uint32_t>(position));
    return position < 0 || found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

int EventChoiceModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int EventChoiceModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant EventChoiceModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    Row const& row = m_rows[m_shown[static_cast<std::size_t>(index.row())]];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        std::string_view const text = index.column() == 0 ? row.name : zo::xml::TextOf(*row.event, m_descriptionTag);
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    if (role == Qt::ForegroundRole && zo::xml::TextOf(*row.event, m_disabledTag) == "T")
        return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

QVariant EventChoiceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? ZoText(60061) : ZoText(60062);
}

XmlNode* NthEvent(XmlNode* events, int n)
{
    if (!events || n < 0)
        return nullptr;
    for (auto it = events->ChildsBegin(); it != events->ChildsEnd(); ++it) {
        if (!(*it)->HasTag(L"event"))
            continue;
        if (n-- == 0)
            return *it;
    }
    return nullptr;
}
