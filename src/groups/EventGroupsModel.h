#pragma once
#include "config/XmlDocument.h"
#include "groups/GroupMembers.h"
#include <QAbstractTableModel>
#include <QIcon>
#include <vector>

// The rows of the group list of the event groups dialog: one per `eventsGroup` of the
// document, each with its record (the group element and its members' names), in one
// column (heading: text 355).
//
// The rows are kept sorted by name (NameOrder): ascending, or descending while the
// descending flag is set; equal names keep document order. Rows point into the tree, so
// whoever changes the groups calls UpdateList() afterwards. Member changes are made on a
// row's record (RecordAt) and need no refill.
class EventGroupsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit EventGroupsModel(XmlDocument* eventsCfg, QObject* parent = nullptr);
    ~EventGroupsModel() override;

    // Rebuilds every record from the tree (one pass over the events) and sorts the rows.
    void UpdateList();
    // Drops every row and record.
    void Clear();
    // Sets the direction; takes effect at the next UpdateList().
    void SetDescending(bool descending) { m_descending = descending; }
    bool Descending() const { return m_descending; }

    GroupRecord* RecordAt(int row);
    GroupRecord const* RecordAt(int row) const;
    XmlDocument::XmlNode* GroupAt(int row) const;
    // The first row showing this group element, or this name; -1 when none does.
    int FindGroup(XmlDocument::XmlNode const* group) const;
    int FindName(QString const& name) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void SortRows();

    XmlDocument* m_eventsCfg;
    std::vector<GroupRecord> m_records; // document order
    std::vector<std::size_t> m_order;   // indices of m_records in the list's order
    bool m_descending = false;
    QString m_heading;
    mutable QIcon m_icon;
};
