#include "timetables/TimeTablesListModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "timetables/TimeTableKinds.h"
#include <algorithm>

using XmlNode = XmlDocument::XmlNode;

TimeTablesListModel::TimeTablesListModel(XmlDocument* document, QObject* parent)
    : QAbstractTableModel(parent)
    , m_document(document)
{
    for (int kind = 0; kind < kTimeTableKinds; ++kind) {
        m_words[kind] = ZoText(KindInfo(kind).word);
        m_foldedWords[kind] = FoldedName(m_words[kind].toStdWString());
    }
}

TimeTablesListModel::~TimeTablesListModel() = default;

void TimeTablesListModel::UpdateList()
{
    beginResetModel();
    m_rows.clear();
    std::string utf8;
    for (int kind = 0; kind < kTimeTableKinds; ++kind) {
        XmlNode* container = TimeTableContainer(m_document, kind);
        if (!container)
            continue;
        wchar_t const* tag = KindInfo(kind).tag;
        for (XmlNode* child = container->FirstChild(); child; child = child->NextSibling()) {
            if (!child->HasTag(tag))
                continue;
            Entry entry;
            entry.row = Row{static_cast<int>(m_rows.size()), kind, child};
            AppendFoldedName(entry.foldedName, child->ValueUtf8(L"name"));
            m_rows.push_back(std::move(entry));
        }
    }
    Sort();
    endResetModel();
}

void TimeTablesListModel::Clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void TimeTablesListModel::ClickColumn(int column)
{
    if (!m_order.Click(column, ColumnCount))
        return;
    beginResetModel();
    Sort();
    endResetModel();
}

void TimeTablesListModel::Sort()
{
    auto const ascending = [this](Entry const& a, Entry const& b) {
        if (m_order.Column() == KindColumn && a.row.kind != b.row.kind) {
            int const order = m_foldedWords[a.row.kind].compare(m_foldedWords[b.row.kind]);
            if (order != 0)
                return order < 0;
        }
        return a.foldedName < b.foldedName;
    };
    m_order.Sort(m_rows, ascending);
}

TimeTablesListModel::Row const* TimeTablesListModel::RowAt(int row) const
{
    return row >= 0 && row < static_cast<int>(m_rows.size()) ? &m_rows[row].row : nullptr;
}

std::wstring TimeTablesListModel::NameAt(int row) const
{
    Row const* entry = RowAt(row);
    return entry ? entry->element->Value(L"name", L"") : std::wstring();
}

EventNameSet TimeTablesListModel::NameSet() const
{
    EventNameSet names;
    std::size_t bytes = 0;
    for (Entry const& entry : m_rows)
        bytes += entry.foldedName.size();
    names.Reserve(m_rows.size(), bytes);
    for (Entry const& entry : m_rows)
        names.InsertFolded(entry.foldedName);
    return names;
}

int TimeTablesListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TimeTablesListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TimeTablesListModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Row const& row = m_rows[index.row()].row;
    if (role == Qt::DisplayRole) {
        if (index.column() == KindColumn)
            return m_words[row.kind];
        std::string_view const name = row.element->ValueUtf8(L"name");
        return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    }
    if (role == Qt::DecorationRole && index.column() == NameColumn) {
        if (!m_iconsLoaded) {
            for (int kind = 0; kind < kTimeTableKinds; ++kind)
                m_icons[kind] = ZoBitmapStripIcon(2426, kind);
            m_iconsLoaded = true;
        }
        return m_icons[row.kind];
    }
    return {};
}

QVariant TimeTablesListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    if (section == NameColumn)
        return ZoText(355);
    if (section == KindColumn)
        return ZoText(544);
    return {};
}
