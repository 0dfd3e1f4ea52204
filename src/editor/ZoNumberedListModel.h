#pragma once
#include "config/XmlDocument.h"

#include <QAbstractTableModel>
#include <QString>

#include <vector>

using XmlNode = XmlDocument::XmlNode;

// A list of numbered rows with two columns: the number ("%d", counted from 1, no heading)
// and a text (heading given). Each row holds its position (from 0) and, where the list
// shows elements of a tree, the element. The base of the event editor's argument and group
// lists and of the annotation wizard's choice list.
//
// Sorting: ClickColumn sorts by that column, ascending; the same column again reverses the
// order. Numbers sort by position; texts without regard to case, then by position. The
// sort is applied again whenever the rows are replaced. Before any click the rows stay in
// their given order.
class ZoNumberedListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NumberColumn = 0, TextColumn = 1, ColumnCount = 2 };
    struct Row {
        int position = 0;
        XmlNode* node = nullptr;
        QString text;
    };

    explicit ZoNumberedListModel(QString textHeading, QObject* parent = nullptr);

    // Replaces every row (rows given in order of position) and sorts them as last asked.
    void SetRows(std::vector<Row> rows);
    void ClickColumn(int column);
    int SortColumn() const { return m_sortColumn; } // -1 before any click
    bool Descending() const { return m_descending; }

    Row const& RowAt(int row) const { return m_rows[std::size_t(row)]; }
    // The texts of every row in the list's order.
    std::vector<std::wstring> Texts() const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void Sort();

    std::vector<Row> m_rows;
    QString m_heading;
    int m_sortColumn = -1;
    bool m_descending = false;
};
