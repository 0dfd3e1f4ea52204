#include "ZoTimeTableChoiceModel.h"

#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

namespace {

struct Container {
    wchar_t const* containerTag;
    wchar_t const* itemTag;
    int kind;
};

constexpr Container kContainers[] = {
    {L"days", L"day", ZoTimeTableChoiceModel::KindDay},
    {L"weeks", L"week", ZoTimeTableChoiceModel::KindWeek},
    {L"calendars", L"calendar", ZoTimeTableChoiceModel::KindCalendar},
};

std::array<QIcon, 4> KindIcons()
{
    std::array<QIcon, 4> icons;
    for (int kind = 0; kind < 4; ++kind) {
        QPixmap const pixmap = ZoTimeTableKindPixmap(kind);
        if (!pixmap.isNull())
            icons[kind] = QIcon(pixmap);
    }
    return icons;
}

} // namespace

ZoTimeTableChoiceModel::ZoTimeTableChoiceModel(QObject* parent)
    : QAbstractListModel(parent)
    , m_entries(1)
    , m_kindIcons(KindIcons())
{
}

void ZoTimeTableChoiceModel::Fill(XmlNode const* timeTablesRoot)
{
    beginResetModel();
    m_entries.assign(1, Entry{});
    if (timeTablesRoot) {
        for (Container const& container : kContainers) {
            XmlNode const* list = timeTablesRoot->Child(container.containerTag);
            if (!list)
                continue;
            for (auto it = list->ChildsBegin(); it != list->ChildsEnd(); ++it)
                if ((*it)->HasTag(container.itemTag))
                    m_entries.push_back(Entry{container.kind, *it});
        }
    }
    endResetModel();
}

int ZoTimeTableChoiceModel::RowOfId(std::optional<std::wstring> const& id) const
{
    // An event without a reference selects nothing, even a table that lacks an id.
    if (!id || id->empty())
        return 0;
    int found = 0;
    for (int row = 1; row < static_cast<int>(m_entries.size()); ++row)
        if (m_entries[row].node->Value(L"id", L"") == *id)
            found = row;
    return found;
}

ZoTimeTableChoiceModel::Entry const& ZoTimeTableChoiceModel::EntryAt(int row) const
{
    if (row < 0 || row >= static_cast<int>(m_entries.size()))
        return m_entries.front();
    return m_entries[row];
}

int ZoTimeTableChoiceModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant ZoTimeTableChoiceModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Entry const& entry = m_entries[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        if (!entry.node)
            return ZoText(32830);
        return QString::fromStdWString(entry.node->Value(L"name", L""));
    case Qt::DecorationRole:
        return m_kindIcons[entry.kind];
    case KindRole:
        return entry.kind;
    default:
        return {};
    }
}
