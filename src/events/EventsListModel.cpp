#include "events/EventsListModel.h"
#include "config/XmlKeys.h"
#include "platform/tools/ZoKeyOrder.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "platform/ui/ZoIcons.h"
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

using XmlNode = XmlDocument::XmlNode;

namespace {

std::string FoldedText(QString const& text)
{
    return FoldedName(text.toStdWString());
}

// Time-table id -> index of its name, for one fill. The same id space covers days, weeks
// and calendars; they are read in that order and the first element with an id wins.
using TimeTableIds = std::unordered_map<std::string_view, int>;

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
    // The rows that the last list of these documents left: its first fill reads again
    // only what changed since (or everything, when the document's notes cannot tell).
    Kept& kept = LastKept();
    // Rows kept while another list filled since are not taken: that fill consumed the
    // document's change notes.
    if (kept.eventsCfg == eventsCfg && kept.timeTables == timeTables && eventsCfg && kept.fill == FillCount()) {
        m_rows = std::move(kept.rows);
        m_byName = std::move(kept.byName);
        m_foldedNames = std::move(kept.foldedNames);
        m_foldedGarbage = kept.foldedGarbage;
        m_filledEvents = kept.filledEvents;
        m_timeTableSignature = std::move(kept.timeTableSignature);
    }
    kept = Kept{};
}

EventsListModel::~EventsListModel()
{
    if (!m_eventsCfg || !m_filledEvents)
        return;
    Kept& kept = LastKept();
    kept.eventsCfg = m_eventsCfg;
    kept.timeTables = m_timeTables;
    kept.rows = std::move(m_rows);
    kept.byName = std::move(m_byName);
    kept.foldedNames = std::move(m_foldedNames);
    kept.foldedGarbage = m_foldedGarbage;
    kept.filledEvents = m_filledEvents;
    kept.timeTableSignature = std::move(m_timeTableSignature);
    kept.fill = m_fill;
}

std::uint64_t& EventsListModel::FillCount()
{
    static std::uint64_t fills = 0;
    return fills;
}

EventsListModel::Kept& EventsListModel::LastKept()
{
    static Kept kept;
    return kept;
}

void EventsListModel::DropKept()
{
    LastKept() = Kept{};
}

void EventsListModel::UpdateList()
{
    m_fill = ++FillCount();
    XmlNode* root = m_eventsCfg ? m_eventsCfg->Root() : nullptr;
    XmlNode* events = root ? root->Child(L"events") : nullptr;
    std::vector<XmlNode const*> changed;
    bool const sameTables = FillTimeTables();
    m_keys = m_eventsCfg ? KeyTags() : Keys{};
    // After the first fill, only the events that a change reached are read again: the
    // document notes them. The rows then are exactly those of a full fill.
    bool const incremental = sameTables && events && events == m_filledEvents && !m_rows.empty()
        && m_eventsCfg->TakeChangedChildren(events, changed);
    std::vector<std::uint32_t> updated;
    bool orderKept = false;
    if (incremental && UpdateInPlace(events, changed, updated, orderKept)) {
        // Rows read again in their places, in a list sorted by name that still shows every
        // row: the view hears of those rows alone, and keeps its layout of all the others.
        if (orderKept && m_sortColumn == NameColumn && m_order.size() == m_rows.size()) {
            FinishFill(events);
            for (std::uint32_t const index : updated) {
                int const row = int(std::find(m_order.begin(), m_order.end(), index) - m_order.begin());
                emit dataChanged(this->index(row, 0), this->index(row, ColumnCount - 1));
            }
            return;
        }
        beginResetModel();
    } else {
        beginResetModel();
        Refill refill;
        if (incremental && RefillChanged(events, changed, refill)) {
            MergeChangedIntoOrder(refill);
        } else {
            FillRows(events);
            SortByName();
        }
    }
    FinishFill(events);
    SortRows();
    endResetModel();
}

void EventsListModel::FinishFill(XmlNode* events)
{
    m_filledEvents = events;
    if (events)
        m_eventsCfg->NoteChangesBelow(events);
}

void EventsListModel::Clear()
{
    // The rows are kept, unseen, for the next fill to reuse what did not change; only the
    // view's rows go, so that nothing asks for an element that is about to change.
    beginResetModel();
    m_order.clear();
    endResetModel();
}

void EventsListModel::KeepRowsOverUnshownChanges()
{
    std::vector<XmlNode const*> changed;
    if (m_eventsCfg && m_filledEvents)
        m_eventsCfg->TakeChangedChildren(m_filledEvents, changed);
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

bool EventsListModel::FillTimeTables()
{
    std::vector<TimeTable> names;
    TimeTableIds ids;
    std::string signature;
    if (XmlNode const* root = m_timeTables ? m_timeTables->Root() : nullptr) {
        static constexpr std::pair<wchar_t const*, wchar_t const*> kKinds[] = {
            {L"days", L"day"}, {L"weeks", L"week"}, {L"calendars", L"calendar"}};
        for (auto const& [container, tag] : kKinds) {
            XmlNode const* tables = root->Child(container);
            for (XmlNode const* table = tables ? tables->FirstChild() : nullptr; table;
                 table = table->NextSibling()) {
                XmlNode const* id = table->HasTag(tag) ? table->Child(L"id") : nullptr;
                if (!id || !ids.try_emplace(id->TextUtf8(), int(names.size())).second)
                    continue;
                std::string_view const name = table->ValueUtf8(L"name");
                TimeTable entry{QString::fromUtf8(name.data(), qsizetype(name.size())), {}};
                AppendFoldedName(entry.folded, name);
                names.push_back(std::move(entry));
                signature.append(id->TextUtf8()).append(1, '\0').append(name).append(1, '\0');
            }
        }
    }
    bool const same = signature == m_timeTableSignature;
    m_timeTableNames = std::move(names);
    m_timeTableIds = std::move(ids);
    m_timeTableSignature = std::move(signature);
    IndexTimeTables();
    return same;
}

EventsListModel::Keys EventsListModel::KeyTags() const
{
    // Tags are interned per document: comparing them as pointers reads each event in one
    // pass over its children. A tag that no element has yields null and matches nothing.
    return Keys{m_eventsCfg->TagKey(L"event"),    m_eventsCfg->TagKey(L"name"),
                m_eventsCfg->TagKey(L"disabled"), m_eventsCfg->TagKey(L"notify"),
                m_eventsCfg->TagKey(L"record"),   m_eventsCfg->TagKey(L"timeTable")};
}

void EventsListModel::ReadRow(XmlNode* event, void const* nameTag, Row& row)
{
    SetRow(event, zo::xml::TextOf(*event, nameTag), row);
}

void EventsListModel::SetRow(XmlNode* event, std::string_view name, Row& row)
{
    row = Row{};
    row.event = event;
    row.name = name;
    row.keyOffset = std::uint32_t(m_foldedNames.size());
    AppendFoldedName(m_foldedNames, name);
    row.keyLength = std::uint32_t(m_foldedNames.size() - row.keyOffset);
}

EventsListModel::Row const& EventsListModel::ReadColumns(Row const& row) const
{
    if (row.columnsRead)
        return row;
    row.columnsRead = true;
    Keys const& keys = m_keys;
    bool hasDisabled = false, hasNotify = false, hasRecord = false;
    XmlNode const* timeTable = nullptr;
    for (XmlNode const* key = row.event->FirstChild(); key; key = key->NextSibling()) {
        void const* tag = key->TagKey();
        if (tag == keys.disabled && !hasDisabled) {
            row.disabled = key->TextUtf8() == "T";
            hasDisabled = true;
        } else if (tag == keys.notify && !hasNotify) {
            row.notify = key->TextUtf8() == "T";
            hasNotify = true;
        } else if (tag == keys.record && !hasRecord) {
            row.record = key->TextUtf8() == "T";
            hasRecord = true;
        } else if (tag == keys.timeTable && !timeTable) {
            timeTable = key;
        } else {
            continue;
        }
        // The first of each key counts: once all four are found the rest cannot matter.
        if (hasDisabled && hasNotify && hasRecord && timeTable)
            break;
    }
    if (timeTable) {
        auto const found = m_timeTableIds.find(timeTable->TextUtf8());
        if (found != m_timeTableIds.end())
            row.timeTable = found->second;
    }
    return row;
}

void EventsListModel::FillRows(XmlNode* events)
{
    m_rows.clear();
    m_foldedNames.clear();
    m_foldedGarbage = 0;
    Keys const& keys = m_keys;
    if (!events || !keys.event)
        return;
    m_rows.reserve(std::size_t(events->Size()));
    m_foldedNames.reserve(std::size_t(events->Size()) * 16);
    // The walk fetches the keys and names of the events ahead while it reads one.
    // (The events are the document's own, handed out as the rows' elements.)
    zo::xml::ForEachKeyText(*events, keys.event, keys.name, [this](XmlNode const& event, std::string_view name) {
        SetRow(const_cast<XmlNode*>(&event), name, m_rows.emplace_back());
    });
}

int EventsListModel::RowOfEvent(XmlNode const* event) const
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].event == event)
            return int(i);
    }
    return -1;
}

bool EventsListModel::UpdateInPlace(XmlNode* events, std::vector<XmlNode const*> changed,
                                    std::vector<std::uint32_t>& updated, bool& orderKept)
{
    updated.clear();
    orderKept = true;
    // The events are still the rows' events, in the same order, when there are as many as
    // rows, each event noted is one of them, and stands between the same neighbours.
    constexpr std::size_t kMaxInPlace = 64; // past that, one refill is as quick
    if (std::size_t(events->Size()) != m_rows.size() || m_byName.size() != m_rows.size())
        return false;
    std::sort(changed.begin(), changed.end());
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    if (changed.size() > kMaxInPlace)
        return false;
    // First by pointer alone: an event noted and since removed is not read. When every
    // noted event is a row and their count is unchanged, none was inserted or removed.
    std::vector<std::uint32_t> rows;
    for (XmlNode const* event : changed) {
        int const row = RowOfEvent(event);
        if (row < 0)
            return false;
        rows.push_back(std::uint32_t(row));
    }
    for (std::uint32_t const i : rows) {
        XmlNode const* event = m_rows[i].event;
        if (event->Parent() != events || event->TagKey() != m_keys.event)
            return false;
        XmlNode const* before = i == 0 ? events->FirstChild() : m_rows[i - 1].event->NextSibling();
        XmlNode const* after = i + 1 < m_rows.size() ? m_rows[i + 1].event : nullptr;
        if (before != event || event->NextSibling() != after)
            return false;
    }
    auto const less = [this](std::uint32_t a, std::uint32_t b) { return NameBefore(a, b); };
    for (std::uint32_t const index : rows) {
        auto const was = std::find(m_byName.begin(), m_byName.end(), index);
        std::ptrdiff_t const place = was - m_byName.begin();
        m_byName.erase(was);
        m_foldedGarbage += m_rows[index].keyLength;
        ReadRow(m_rows[index].event, m_keys.name, m_rows[index]);
        auto const to = m_byName.insert(std::lower_bound(m_byName.begin(), m_byName.end(), index, less), index);
        orderKept = orderKept && to - m_byName.begin() == place;
        updated.push_back(index);
    }
    if (m_foldedGarbage > m_foldedNames.size() / 2)
        CompactFoldedNames();
    return true;
}

void EventsListModel::CompactFoldedNames()
{
    std::string compact;
    compact.reserve(m_foldedNames.size() - m_foldedGarbage);
    for (Row& row : m_rows) {
        std::uint32_t const offset = std::uint32_t(compact.size());
        compact.append(m_foldedNames, row.keyOffset, row.keyLength);
        row.keyOffset = offset;
    }
    m_foldedNames = std::move(compact);
    m_foldedGarbage = 0;
}

void EventsListModel::ForgetEvents(std::vector<XmlNode const*> const& events)
{
    // Called while the events are still in the tree, before they go: their rows go now, so
    // that the next fill finds the rows in step with the tree without reading it all.
    std::vector<bool> gone(m_rows.size(), false);
    std::size_t count = 0;
    for (XmlNode const* event : events) {
        int const row = RowOfEvent(event);
        if (row >= 0 && !gone[std::size_t(row)]) {
            gone[std::size_t(row)] = true;
            ++count;
        }
    }
    if (count == 0)
        return;
    std::vector<std::uint32_t> newIndex(m_rows.size(), kNoRow);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (gone[i]) {
            m_foldedGarbage += m_rows[i].keyLength;
            continue;
        }
        newIndex[i] = std::uint32_t(kept);
        m_rows[kept++] = m_rows[i];
    }
    m_rows.resize(kept);
    std::size_t out = 0;
    for (std::uint32_t const index : m_byName) {
        if (newIndex[index] != kNoRow)
            m_byName[out++] = newIndex[index];
    }
    m_byName.resize(out);
    m_order.clear();
}

bool EventsListModel::RefillChanged(XmlNode* events, std::vector<XmlNode const*> const& changed, Refill& refill)
{
    // The events in document order are matched with the rows of the last fill: the same
    // element at the same place, or a few places on (the rows between were deleted).
    // A row is read again when its event was noted as changed or is new; every other row
    // is taken over as it was.
    Keys const& keys = m_keys;
    if (!keys.event)
        return false;
    std::unordered_set<XmlNode const*> const touched(changed.begin(), changed.end());
    std::vector<Row> old = std::move(m_rows);
    std::string oldNames = std::move(m_foldedNames);
    m_rows.clear();
    m_foldedNames.clear();
    m_foldedGarbage = 0;
    m_rows.reserve(std::size_t(events->Size()));
    m_foldedNames.reserve(oldNames.size() + 64 * touched.size());
    refill.oldToNew.assign(old.size(), kNoRow);
    refill.fresh.clear();
    std::size_t next = 0; // the first old row not matched yet
    for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (event->TagKey() != keys.event)
            continue;
        std::size_t match = kNoRow;
        for (std::size_t k = next; k < old.size() && k < next + kLookAhead; ++k) {
            if (old[k].event == event) {
                match = k;
                break;
            }
        }
        std::uint32_t const index = std::uint32_t(m_rows.size());
        Row& row = m_rows.emplace_back();
        if (match != kNoRow) {
            refill.oldToNew[match] = index;
            next = match + 1;
        }
        if (match == kNoRow || touched.count(event)) {
            ReadRow(event, keys.name, row);
            refill.fresh.push_back(index);
            if (match != kNoRow)
                refill.oldToNew[match] = kNoRow; // its place in the order is found again
            if (refill.fresh.size() > kMaxFresh)
                return false;
        } else {
            row = old[match];
            row.keyOffset = std::uint32_t(m_foldedNames.size());
            m_foldedNames.append(oldNames, old[match].keyOffset, old[match].keyLength);
        }
    }
    return true;
}

void EventsListModel::MergeChangedIntoOrder(Refill& refill)
{
    // The rows taken over keep their order of the last sort (their names and their order
    // in the document are unchanged); the rows read again are sorted apart and merged in.
    std::vector<std::uint32_t> kept;
    kept.reserve(m_rows.size());
    for (std::uint32_t const oldIndex : m_byName) {
        std::uint32_t const index = refill.oldToNew[oldIndex];
        if (index != kNoRow)
            kept.push_back(index);
    }
    auto const less = [this](std::uint32_t a, std::uint32_t b) { return NameBefore(a, b); };
    std::sort(refill.fresh.begin(), refill.fresh.end(), less);
    m_byName.clear();
    m_byName.reserve(m_rows.size());
    auto from = kept.begin();
    for (std::uint32_t const fresh : refill.fresh) {
        auto const to = std::lower_bound(from, kept.end(), fresh, less);
        m_byName.insert(m_byName.end(), from, to);
        m_byName.push_back(fresh);
        from = to;
    }
    m_byName.insert(m_byName.end(), from, kept.end());
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
    // Names often share long beginnings ("PLC3_PUMP_12_PRESSURE_..."): the sort keeps the
    // first 40 bytes of each folded name as integers.
    m_byName = ZoOrderByKeys(m_rows.size(), [this](std::size_t row) { return NameKey(m_rows[row]); });
}

void EventsListModel::SortRows()
{
    if (m_sortColumn == NameColumn) {
        m_order = m_byName;
    } else {
        // A stable counting sort by the column's rank over the rows in name order.
        auto rank = [this](Row const& stored) -> std::uint32_t {
            Row const& row = ReadColumns(stored);
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
    if (m_order.size() != m_byName.size())
        return -1;
    // The rows sorted by folded name are searched by halving; rows of equal names lie
    // side by side there, in document order.
    std::string const folded = FoldedName(name);
    auto const [from, to] = std::equal_range(m_byName.begin(), m_byName.end(), folded,
                                             NameLess{this});
    if (from == to)
        return -1;
    std::size_t const first = std::size_t(from - m_byName.begin());
    std::size_t const last = std::size_t(to - m_byName.begin()) - 1;
    if (m_sortColumn == NameColumn)
        return int(m_descending ? m_order.size() - 1 - last : first);
    // Another column: the first of those rows in the list's order.
    for (std::size_t i = 0; i < m_order.size(); ++i) {
        if (std::find(from, to, m_order[i]) != to)
            return int(i);
    }
    return -1;
}

int EventsListModel::CountFoldedName(std::string_view folded) const
{
    auto const [from, to] = std::equal_range(m_byName.begin(), m_byName.end(), folded, NameLess{this});
    return int(to - from);
}

bool EventsListModel::NameBefore(std::uint32_t a, std::uint32_t b) const
{
    if (int const order = NameKey(m_rows[a]).compare(NameKey(m_rows[b])))
        return order < 0;
    return a < b;
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
    Row const& row = ReadColumns(*RowAt(index.row()));
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
