#pragma once
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include "platform/ui/ZoListSortOrder.h"
#include <QAbstractTableModel>
#include <QIcon>
#include <array>
#include <string>
#include <vector>

// The rows of the time-tables setup list: every day program, then every week program, then
// every calendar of the document (in document order within each container; other tags are
// skipped, a missing container lists nothing). Two columns: the name and the kind's word.
//
// Each row records its position, its kind and its element in the live tree; whoever changes
// the tree calls Clear() first or UpdateList() right after.
//
// Sorting: column 0 compares the names without regard to case; column 1 the kind words
// without regard to case and, on a tie, the names in the same direction. Descending swaps
// the two rows compared. Names are folded once per fill, so a sort costs n log n
// comparisons of prepared keys.
class TimeTablesListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NameColumn, KindColumn, ColumnCount };
    struct Row {
        int position = 0;
        int kind = 0;
        XmlDocument::XmlNode* element = nullptr;
    };

    explicit TimeTablesListModel(XmlDocument* document, QObject* parent = nullptr);
    ~TimeTablesListModel() override;

    void UpdateList();
    void Clear();
    // The same column again flips the direction; another column sorts ascending.
    void ClickColumn(int column);
    int SortColumn() const { return m_order.Column(); }
    bool Descending() const { return m_order.Descending(); }

    Row const* RowAt(int row) const;
    std::wstring NameAt(int row) const;
    // The names of all rows, compared without regard to case (for naming pasted tables).
    EventNameSet NameSet() const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Entry {
        Row row;
        std::string foldedName;
    };
    void Sort();

    XmlDocument* m_document;
    std::vector<Entry> m_rows; // list order
    std::array<QString, 3> m_words;
    std::array<std::string, 3> m_foldedWords;
    mutable std::array<QIcon, 3> m_icons;
    mutable bool m_iconsLoaded = false;
    ZoListSortOrder m_order{NameColumn};
};
