#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoListSortOrder.h"
#include <QAbstractTableModel>
#include <QIcon>
#include <array>
#include <string>
#include <vector>

// The rows of one moment's action list: every child of the moment element whose tag names
// an action kind, in document order (other children stay in the tree, unseen). Column 0 is
// the kind's name, column 1 the action's summary (ZoAppendActionSummary).
//
// Each row records its position at fill time (counting shown rows only) and its element in
// the live tree; whoever removes elements calls Clear() first or Fill() right after.
//
// Sorting: case-insensitive on the row texts. Column 0 compares the kind names and, on a
// tie, the summaries in the same direction; column 1 the summaries only. Descending swaps
// the rows compared. Texts are folded once per fill, so a sort costs n log n comparisons of
// prepared keys.
class ZoActionsListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { KindColumn, SummaryColumn, ColumnCount };
    struct Row {
        int position = 0;
        XmlDocument::XmlNode* element = nullptr;
        unsigned kind = 0;
    };

    explicit ZoActionsListModel(QObject* parent = nullptr);
    ~ZoActionsListModel() override;

    // Rebuilds the rows from the moment element (null: no rows); sorted when `sorted`.
    void Fill(XmlDocument::XmlNode* moment, bool sorted);
    void Clear();
    // The same column again flips the direction; another column sorts ascending. Changes
    // the order only; the caller refills.
    void ClickColumn(int column);
    int SortColumn() const { return m_order.Column(); }
    bool Descending() const { return m_order.Descending(); }

    Row const* RowAt(int row) const;
    // The row showing this element, or -1.
    int RowOf(XmlDocument::XmlNode const* element) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Entry {
        Row row;
        std::string summary;       // UTF-8, as shown
        std::string foldedSummary; // for sorting
    };
    void Sort();
    int KindIndex(unsigned kind) const;

    std::vector<Entry> m_rows; // list order
    std::array<QString, 9> m_kindTexts;
    std::array<int, 9> m_kindRanks{}; // order of the folded kind names (equal names, equal rank)
    mutable std::array<QIcon, 9> m_icons;
    mutable bool m_iconsLoaded = false;
    ZoListSortOrder m_order{KindColumn};
};
