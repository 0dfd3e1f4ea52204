#include "timeline/ZoCoverageEventsModel.h"

#include "platform/tools/ZoTexts.h"
#include "timeline/ZoEventTimelines.h"

ZoCoverageEventsModel::ZoCoverageEventsModel(QObject* parent) : QAbstractTableModel(parent) {}

void ZoCoverageEventsModel::SetEvents(std::vector<ZoTimeTableCoverage::Allowed> events,
                                      XmlDocument::XmlNode const* timeTablesRoot)
{
    beginResetModel();
    m_events = std::move(events);
    m_timeTables = timeTablesRoot;
    m_tableNames.clear();
    endResetModel();
}

void ZoCoverageEventsModel::Clear()
{
    SetEvents({}, m_timeTables);
}

int ZoCoverageEventsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_events.size());
}

int ZoCoverageEventsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString ZoCoverageEventsModel::TableName(XmlDocument::XmlNode const* event) const
{
    std::wstring const reference = event->Value(L"timeTable", L"");
    if (reference.empty())
        return ZoText(64933);
    auto found = m_tableNames.find(reference);
    if (found == m_tableNames.end()) {
        ZoTableElement const table = ZoFindTimeTable(m_timeTables, reference);
        QString const name =
            table.element ? QString::fromStdWString(table.element->Value(L"name", L"")) : ZoText(64934);
        found = m_tableNames.emplace(reference, name).first;
    }
    return found->second;
}

QVariant ZoCoverageEventsModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole || index.row() >= rowCount())
        return {};
    XmlDocument::XmlNode const* event = m_events[static_cast<std::size_t>(index.row())].event;
    if (index.column() == NameColumn)
        return QString::fromStdWString(event->Value(L"name", L""));
    return TableName(event);
}

QVariant ZoCoverageEventsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return ZoText(section == NameColumn ? 64931 : 64932);
}
