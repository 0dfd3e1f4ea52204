#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoDaySlots.h"
#include <QAbstractTableModel>
#include <vector>

// The day editor's slot list: rows (from, to) always derived from the day's minute map, so
// they are sorted by start and overlapping or touching slots are merged. Every change marks
// or unmarks minutes and rebuilds the rows.
class DaySlotsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { FromColumn, ToColumn, ColumnCount };

    explicit DaySlotsModel(QObject* parent = nullptr);

    // Every minute free, then every valid "slot" child of the day marked.
    void Load(XmlDocument::XmlNode const* day);
    void Add(DaySlot slot);
    // Unmarks the old slot, then marks the new one.
    void Replace(DaySlot old, DaySlot slot);
    // Unmarks the slots of these rows.
    void Remove(std::vector<int> const& rows);

    DaySlot SlotAt(int row) const;
    std::vector<DaySlot> const& Slots() const { return m_slots; }
    DayMinuteMap const& Map() const { return m_map; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void Rebuild();

    DayMinuteMap m_map;
    std::vector<DaySlot> m_slots;
};
