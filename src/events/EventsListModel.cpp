#include "events/EventsListModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "platform/ui/ZoIcons.h"
#include <algorithm>
#include <unordered_map>

using XmlNode = XmlDocument::XmlNode;

namespace {

std::string FoldedText(QString const& text)
{
    return FoldedName(text.toStdWString());
}

// Time-table id -> index of its name, for one fill. The same id space covers days, weeks
// and calendars; they are read in that order and the first element with an id wins.
using TimeTableIds = std::unordered_map<std::string_view, int>;

constexpr int kPrefetchDistance = 4;

// The first 8 bytes of a folded name, big-endian and zero-padded: comparing two of them
// as integers orders the names as their first bytes do, without touching the texts.
std::uint64_t Prefix(std::string_view key)
{
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < 8; ++i)
        prefix = (prefix << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
    return prefix;
}

} // namespace

EventsListModel::EventsListModel(XmlDocument* eventsCfg, XmlDocument const* timeTables,
                                 QObject* parent)
    : QAbstractTableModel(parent)
    , m_eventsCfg(eventsCfg)
    , m_timeTables(timeTables)
    , m_yes(ZoText(711))
    , m_no(ZoText(712))
    , m_noTimeTable(ZoText(32830))
    , m_noTimeTableKey(FoldedText(m_noTimeTable))
{
    int const order = FoldedText(m_yes).compare(FoldedText(m_no));
    m_yesRank = order > 0 ? 1 : 0;
    m_noRank = order < 0 ? 1 : 0;
}

EventsListModel::~EventsListModel() = default;

void EventsListModel::UpdateList()
{
    beginResetModel();
    FillRows();
    SortByName();
    SortRows();
    endResetModel();
}

void EventsListModel::Clear()
{
    beginResetModel();
    m_rows.clear();
    m_byName.clear();
    m_order.clear();
    m_foldedNames.clear();
    m_timeTableNames.clear();
    m_timeTableRanks.clear();
    endResetModel();
}

void EventsListModel::ClickColumn(int column)
{
    if (column < 0 || column >= ColumnCount)
        return;
    m_descending = column == m_sortColumn && !m_descending;
    m_sortColumn = column;
    beginResetModel();
    SortRows();
    endResetModel();
}

void EventsListModel::FillRows()
{
    m_rows.clear();
    m_foldedNames.clear();
    m_timeTableNames.clear();
    m_timeTableRanks.clear();

    TimeTableIds timeTableIds;
    if (XmlNode const* root = m_timeTables ? m_timeTables->Root() : nullptr) {
        static constexpr std::pair<wchar_t const*, wchar_t const*> kKinds[] = {
            {L"days", L"day"}, {L"weeks", L"week"}, {L"calendars", L"calendar"}};
        for (auto const& [container, tag] : kKinds) {
            XmlNode const* tables = root->Child(container);
            for (XmlNode const* table = tables ? tables->FirstChild() : nullptr; table;
                 table = table->NextSibling()) {
                XmlNode const* id = table->HasTag(tag) ? table->Child(L"id") : nullptr;
                if (!id || !timeTableIds.try_emplace(id->TextUtf8(), int(m_timeTableNames.size())).second)
                    continue;
                std::string_view const name = table->ValueUtf8(L"name");
                TimeTable entry{QString::fromUtf8(name.data(), qsizetype(name.size())), {}};
                AppendFoldedName(entry.folded, name);
                m_timeTableNames.push_back(std::move(entry));
            }
        }
    }
    IndexTimeTables();

    XmlNode* root = m_eventsCfg ? m_eventsCfg->Root() : nullptr;
    XmlNode* events = root ? root->Child(L"events") : nullptr;
    void const* eventTag = m_eventsCfg ? m_eventsCfg->TagKey(L"event") : nullptr;
    if (!events || !eventTag)
        return;
    // Tags are interned per document: comparing them as pointers reads each event in one
    // pass over its children. A tag that no element has yields null and matches nothing.
    void const* nameTag = m_eventsCfg->TagKey(L"name");
    void const* disabledTag = m_eventsCfg->TagKey(L"disabled");
    void const* notifyTag = m_eventsCfg->TagKey(L"notify");
    void const* recordTag = m_eventsCfg->TagKey(L"record");
    void const* timeTableTag = m_eventsCfg->TagKey(L"timeTable");

    m_rows.reserve(std::size_t(events->Size()));
    m_foldedNames.reserve(std::size_t(events->Size()) * 16);
    // The walk waits on memory, not on work: each event's keys lie elsewhere than the
    // event itself. Asking early for the first keys of the events a few rows ahead lets
    // those loads overlap with the work on this one.
    XmlNode* ahead = events->FirstChild();
    for (int i = 0; ahead && i < kPrefetchDistance; ++i)
        ahead = ahead->NextSibling();
    for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (ahead) {
            XmlNode const* keys = ahead->FirstChild();
            __builtin_prefetch(keys);
            if (keys)
                __builtin_prefetch(keys->NextSibling());
            ahead = ahead->NextSibling();
        }
        if (event->TagKey() != eventTag)
            continue;
        Row row;
        row.event = event;
        bool hasName = false, hasDisabled = false, hasNotify = false, hasRecord = false;
        XmlNode const* timeTable = nullptr;
        for (XmlNode const* key = event->FirstChild(); key; key = key->NextSibling()) {
            void const* tag = key->TagKey();
            if (tag == nameTag && !hasName) {
                row.name = key->TextUtf8();
                hasName = true;
            } else if (tag == disabledTag && !hasDisabled) {
                row.disabled = key->TextUtf8() == "T";
                hasDisabled = true;
            } else if (tag == notifyTag && !hasNotify) {
                row.notify = key->TextUtf8() == "T";
                hasNotify = true;
            } else if (tag == recordTag && !hasRecord) {
                row.record = key->TextUtf8() == "T";
                hasRecord = true;
            } else if (tag == timeTableTag && !timeTable) {
                timeTable = key;
            } else {
                continue;
            }
            // The first of each key counts: once all five are found the rest cannot matter.
            if (hasName && hasDisabled && hasNotify && hasRecord && timeTable)
                break;
        }
        if (timeTable) {
            auto const found = timeTableIds.find(timeTable->TextUtf8());
            if (found != timeTableIds.end())
                row.timeTable = found->second;
        }
        row.keyOffset = std::uint32_t(m_foldedNames.size());
        AppendFoldedName(m_foldedNames, row.name);
        row.keyLength = std::uint32_t(m_foldedNames.size() - row.keyOffset);
        m_rows.push_back(row);
    }
}

// Ranks the time tables' names, and "none" after them, so that equal texts share a rank.
void EventsListModel::IndexTimeTables()
{
    std::size_t const count = m_timeTableNames.size() + 1;
    auto key = [this](std::size_t i) -> std::string_view {
        return i < m_timeTableNames.size() ? m_timeTableNames[i].folded : m_noTimeTableKey;
    };
    std::vector<std::uint32_t> byText(count);
    for (std::size_t i = 0; i < count; ++i)
        byText[i] = std::uint32_t(i);
    std::sort(byText.begin(), byText.end(), [&](std::uint32_t a, std::uint32_t b) { return key(a) < key(b); });
    m_timeTableRanks.assign(count, 0);
    std::uint32_t rank = 0;
    for (std::size_t i = 1; i < count; ++i) {
        if (key(byText[i]) != key(byText[i - 1]))
            ++rank;
        m_timeTableRanks[byText[i]] = rank;
    }
}

std::string_view EventsListModel::NameKey(Row const& row) const
{
    return std::string_view(m_foldedNames.data() + row.keyOffset, row.keyLength);
}

void EventsListModel::SortByName()
{
    struct Key {
        std::uint64_t prefix;
        std::string_view name;
        std::uint32_t index;
    };
    std::vector<Key> keys(m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        std::string_view const name = NameKey(m_rows[i]);
        keys[i] = Key{Prefix(name), name, std::uint32_t(i)};
    }
    std::sort(keys.begin(), keys.end(), [](Key const& a, Key const& b) {
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix;
        if (int const order = a.name.compare(b.name))
            return order < 0;
        return a.index < b.index;
    });
    m_byName.resize(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        m_byName[i] = keys[i].index;
}

void EventsListModel::SortRows()
{
    if (m_sortColumn == NameColumn) {
        m_order = m_byName;
    } else {
        // A stable counting sort by the column's rank over the rows in name order.
        auto rank = [this](Row const& row) -> std::uint32_t {
            switch (m_sortColumn) {
            case EnabledColumn:
                return row.disabled ? m_noRank : m_yesRank;
            case TimeTableColumn:
                return m_timeTableRanks[row.timeTable >= 0 ? std::size_t(row.timeTable) : m_timeTableRanks.size() - 1];
            case NotifyColumn:
                return row.notify ? m_yesRank : m_noRank;
            default:
                return row.record ? m_yesRank : m_noRank;
            }
        };
        std::size_t const ranks = m_sortColumn == TimeTableColumn ? m_timeTableRanks.size() : 2;
        std::vector<std::size_t> next(ranks + 1, 0);
        for (std::uint32_t index : m_byName)
            ++next[rank(m_rows[index]) + 1];
        for (std::size_t r = 1; r <= ranks; ++r)
            next[r] += next[r - 1];
        m_order.resize(m_byName.size());
        for (std::uint32_t index : m_byName)
            m_order[next[rank(m_rows[index])]++] = index;
    }
    if (m_descending)
        std::reverse(m_order.begin(), m_order.end());
}

EventsListModel::Row const* EventsListModel::RowAt(int row) const
{
    return row >= 0 && std::size_t(row) < m_order.size() ? &m_rows[m_order[std::size_t(row)]] : nullptr;
}

XmlNode* EventsListModel::EventAt(int row) const
{
    Row const* found = RowAt(row);
    return found ? found->event : nullptr;
}

int EventsListModel::PositionAt(int row) const
{
    return RowAt(row) ? int(m_order[std::size_t(row)]) : -1;
}

std::wstring EventsListModel::NameAt(int row) const
{
    Row const* found = RowAt(row);
    return found ? ZoFromUtf8(found->name) : std::wstring();
}

int EventsListModel::FindName(std::wstring_view name) const
{
    std::string const folded = FoldedName(name);
    for (std::size_t i = 0; i < m_order.size(); ++i) {
        if (NameKey(m_rows[m_order[i]]) == folded)
            return int(i);
    }
    return -1;
}

EventNameSet EventsListModel::NameSet() const
{
    // The rows are already sorted by folded name: the set searches them where they are.
    std::vector<std::string_view> sorted;
    sorted.reserve(m_byName.size());
    for (std::uint32_t const index : m_byName)
        sorted.push_back(NameKey(m_rows[index]));
    return EventNameSet::FromSortedFolded(std::move(sorted));
}

int EventsListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int EventsListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString const& EventsListModel::TimeTableText(Row const& row) const
{
    return row.timeTable >= 0 ? m_timeTableNames[std::size_t(row.timeTable)].name : m_noTimeTable;
}

QVariant EventsListModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Row const& row = *RowAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case NameColumn:
            return QString::fromUtf8(row.name.data(), qsizetype(row.name.size()));
        case EnabledColumn:
            return YesNo(!row.disabled);
        case TimeTableColumn:
            return TimeTableText(row);
        case NotifyColumn:
            return YesNo(row.notify);
        case RecordColumn:
            return YesNo(row.record);
        }
        break;
    case Qt::DecorationRole:
        if (index.column() == NameColumn) {
            if (!m_imagesLoaded) {
                m_images[0] = ZoImagePixmap(L"SYSTEM-event_16.png");
                m_images[1] = ZoImagePixmap(L"SYSTEM-event_16_grayed.png");
                m_imagesLoaded = true;
            }
            return m_images[row.disabled ? 1 : 0];
        }
        break;
    case ImageIndexRole:
        return row.disabled ? 1 : 0;
    }
    return {};
}

QVariant EventsListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case NameColumn:
        return ZoText(355);
    case EnabledColumn:
        return ZoText(35472);
    case TimeTableColumn:
        return ZoText(32829);
    case NotifyColumn:
        return ZoText(32799);
    case RecordColumn:
        return ZoText(32800);
    }
    return {};
}
