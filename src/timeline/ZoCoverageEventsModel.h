#pragma once
#include "timeline/ZoTimeTableCoverage.h"

#include <QAbstractTableModel>

#include <string>
#include <unordered_map>

// The events allowed in one hour of the coverage, as rows: name and time table (the
// table's name, "(none)" or "(deleted)"). Rows keep pointers into the events: the model is
// filled again whenever the coverage is built again.
class ZoCoverageEventsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NameColumn, TimeTableColumn, ColumnCount };

    explicit ZoCoverageEventsModel(QObject* parent = nullptr);

    // The rows, and the time-tables root whose names the second column shows.
    void SetEvents(std::vector<ZoTimeTableCoverage::Allowed> events, XmlDocument::XmlNode const* timeTablesRoot);
    void Clear();
    // The event's position among the children of `events`.
    std::uint32_t PositionAt(int row) const { return m_events[static_cast<std::size_t>(row)].position; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString TableName(XmlDocument::XmlNode const* event) const;

    std::vector<ZoTimeTableCoverage::Allowed> m_events;
    XmlDocument::XmlNode const* m_timeTables = nullptr;
    mutable std::unordered_map<std::wstring, QString> m_tableNames; // by reference
};
