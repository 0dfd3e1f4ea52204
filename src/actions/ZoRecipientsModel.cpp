#include "actions/ZoRecipientsModel.h"

#include <QFont>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

QString ToQ(std::wstring const& text)
{
    return QString::fromStdWString(text);
}

QString Utf8ToQ(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool IsBlankText(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t'; });
}

// Sorted by name ignoring case: each name is folded once, not at every comparison.
void SortByName(std::vector<ZoRecipientsModel::Row>& rows)
{
    std::vector<std::pair<QString, std::size_t>> keys;
    keys.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        keys.emplace_back(rows[i].name.toCaseFolded(), i);
    std::stable_sort(keys.begin(), keys.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    std::vector<ZoRecipientsModel::Row> sorted;
    sorted.reserve(rows.size());
    for (auto const& key : keys)
        sorted.push_back(std::move(rows[key.second]));
    rows = std::move(sorted);
}

} // namespace

ZoRecipientsModel::ZoRecipientsModel(ZoRecipientTexts texts, QObject* parent)
    : QAbstractTableModel(parent)
    , m_texts(std::move(texts))
{
}

void ZoRecipientsModel::SetRows(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void ZoRecipientsModel::LoadUsers(XmlNode const* usersRoot, wchar_t const* contactKey)
{
    std::vector<Row> rows;
    XmlNode const* users = usersRoot ? usersRoot->Child(L"users") : nullptr;
    for (XmlNode const* user = users ? users->FirstChild() : nullptr; user; user = user->NextSibling()) {
        if (!user->HasTag(L"user"))
            continue;
        Row row;
        row.id = user->Value(L"id", L"");
        row.name = Utf8ToQ(user->ValueUtf8(L"name"));
        std::string_view const contact = user->ValueUtf8(contactKey);
        row.missingContact = IsBlankText(contact);
        row.detail = row.missingContact ? m_texts.missingDetail : Utf8ToQ(contact);
        // A user without an id could not be named by the action.
        row.available = !row.missingContact && !row.id.empty();
        rows.push_back(std::move(row));
    }
    SortByName(rows);
    SetRows(std::move(rows));
}

void ZoRecipientsModel::LoadLists(XmlNode const* usersRoot, wchar_t const* listsTag)
{
    std::unordered_map<std::string_view, std::string_view> names;
    XmlNode const* users = usersRoot ? usersRoot->Child(L"users") : nullptr;
    for (XmlNode const* user = users ? users->FirstChild() : nullptr; user; user = user->NextSibling())
        names.emplace(user->ValueUtf8(L"id"), user->ValueUtf8(L"name"));

    std::vector<Row> rows;
    XmlNode const* lists = usersRoot ? usersRoot->Child(listsTag) : nullptr;
    for (XmlNode const* list = lists ? lists->FirstChild() : nullptr; list; list = list->NextSibling()) {
        Row row;
        row.id = list->Value(L"id", L"");
        row.name = Utf8ToQ(list->ValueUtf8(L"name"));
        std::string members;
        bool any = false;
        XmlNode const* memberIds = list->Child(L"users");
        for (XmlNode const* member = memberIds ? memberIds->FirstChild() : nullptr; member;
             member = member->NextSibling()) {
            if (member->TextUtf8().empty())
                continue;
            if (any)
                members += ", ";
            any = true;
            auto const found = names.find(member->TextUtf8());
            if (found != names.end())
                members += found->second;
            else
                members += m_texts.unknownName.toStdString();
        }
        row.detail = any ? QString::fromStdString(members) : m_texts.noMembers;
        rows.push_back(std::move(row));
    }
    SortByName(rows);
    SetRows(std::move(rows));
}

void ZoRecipientsModel::CheckIds(XmlNode const* container)
{
    std::vector<std::wstring> const ids = ZoRecipientIds(container);
    beginResetModel();
    // Unknown ids are appended below; room is made first so that the views of the ids taken
    // here stay valid.
    m_rows.reserve(m_rows.size() + ids.size());
    std::unordered_map<std::wstring_view, std::size_t> rowOfId;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        rowOfId.emplace(m_rows[row].id, row);
    std::vector<Row>& rows = m_rows;
    for (Row& row : rows)
        row.checked = false;
    std::unordered_set<std::wstring_view> added;
    for (std::wstring const& id : ids) {
        auto const found = rowOfId.find(id);
        if (found != rowOfId.end()) {
            rows[found->second].checked = true;
        } else if (added.insert(id).second) {
            Row unknown;
            unknown.id = id;
            unknown.name = m_texts.unknownName;
            unknown.detail = ToQ(id);
            unknown.unknown = true;
            unknown.available = false;
            unknown.checked = true;
            rows.push_back(std::move(unknown));
        }
    }
    endResetModel();
}

std::vector<std::wstring> ZoRecipientsModel::CheckedIds() const
{
    std::vector<std::wstring> ids;
    for (Row const& row : m_rows)
        if (row.checked)
            ids.push_back(row.id);
    return ids;
}

bool ZoRecipientsModel::HasAvailableRows() const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [](Row const& row) { return row.available; });
}

int ZoRecipientsModel::RowOfId(std::wstring const& id) const
{
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].id == id)
            return static_cast<int>(row);
    return -1;
}

bool ZoRecipientsModel::IsRowIndex(QModelIndex const& index) const
{
    return index.isValid() && index.model() == this && !index.parent().isValid()
        && index.row() < static_cast<int>(m_rows.size()) && index.column() < 2;
}

int ZoRecipientsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ZoRecipientsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant ZoRecipientsModel::data(QModelIndex const& index, int role) const
{
    if (!IsRowIndex(index))
        return {};
    Row const& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == 0 ? row.name : row.detail;
    case Qt::CheckStateRole:
        if (index.column() == 0)
            return row.checked ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::ToolTipRole:
        if (row.unknown)
            return m_texts.unknownTip;
        if (row.missingContact)
            return m_texts.missingTip;
        return index.column() == 1 ? row.detail : QVariant();
    case Qt::FontRole:
        if (row.unknown || (row.missingContact && index.column() == 1)) {
            QFont font;
            font.setItalic(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}

bool ZoRecipientsModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != 0 || !IsRowIndex(index))
        return false;
    Row& row = m_rows[static_cast<std::size_t>(index.row())];
    bool const checked = value.value<Qt::CheckState>() == Qt::Checked;
    // A row that cannot be chosen may still be cleared (an unknown id, a user who lost his
    // address), never checked again.
    if (checked && !row.available)
        return false;
    if (row.checked == checked)
        return true;
    row.checked = checked;
    emit dataChanged(index, index.siblingAtColumn(1), {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags ZoRecipientsModel::flags(QModelIndex const& index) const
{
    if (!IsRowIndex(index))
        return Qt::NoItemFlags;
    Row const& row = m_rows[static_cast<std::size_t>(index.row())];
    if (!row.available && !row.checked)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == 0)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant ZoRecipientsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    if (section == 0)
        return m_texts.nameHeader;
    if (section == 1)
        return m_texts.detailHeader;
    return {};
}

std::vector<std::wstring> ZoRecipientIds(XmlNode const* container)
{
    std::vector<std::wstring> ids;
    for (XmlNode const* item = container ? container->FirstChild() : nullptr; item; item = item->NextSibling())
        if (!item->Value().empty())
            ids.push_back(item->Value());
    return ids;
}

bool ZoSameRecipientIds(std::vector<std::wstring> a, std::vector<std::wstring> b)
{
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    a.erase(std::unique(a.begin(), a.end()), a.end());
    b.erase(std::unique(b.begin(), b.end()), b.end());
    return a == b;
}

void ZoWriteRecipientIds(XmlNode& action, wchar_t const* containerTag, wchar_t const* itemTag,
                         std::vector<std::wstring> const& ids)
{
    XmlNode* container = action.Child(containerTag);
    if (ids.empty()) {
        if (container)
            action.RemoveChild(container);
        return;
    }
    if (container)
        container->Reset();
    else
        container = action.NewChild(containerTag);
    for (std::wstring const& id : ids)
        container->NewChild(itemTag)->SetValue(id);
}
