#pragma once
#include "config/XmlDocument.h"

#include <QAbstractListModel>
#include <QIcon>

#include <array>
#include <optional>
#include <string>
#include <vector>

using XmlNode = XmlDocument::XmlNode;

// The entries of the event editor's time-table drop-down. Row 0 is "no time table"; then
// every day, week and calendar program of the time-tables root, in that order and in
// document order within each container. Each row carries its kind and its element; the
// label is the table's `name`, converted only when the view asks for it.
class ZoTimeTableChoiceModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Kind { KindNone = 0, KindDay = 1, KindWeek = 2, KindCalendar = 3 };
    struct Entry {
        int kind = KindNone;
        XmlNode const* node = nullptr;
    };
    // Role of the entry's kind (an int) in data().
    static constexpr int KindRole = Qt::UserRole + 1;

    explicit ZoTimeTableChoiceModel(QObject* parent = nullptr);

    // Rebuilds the entries from the time-tables root; a null root leaves only row 0.
    void Fill(XmlNode const* timeTablesRoot);
    // The row to select for an event's time-table reference: the last entry whose `id`
    // equals it exactly, or row 0 when there is no reference or nothing matches.
    int RowOfId(std::optional<std::wstring> const& id) const;
    Entry const& EntryAt(int row) const;

    int rowCount(QModelIndex const& parent = QModelIndex()) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<Entry> m_entries;
    std::array<QIcon, 4> m_kindIcons; // one icon per kind, cut from one strip
};
