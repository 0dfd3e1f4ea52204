#pragma once
#include <algorithm>
#include <vector>

// The order of a list sorted by a clicked column: the column and the direction.
class ZoListSortOrder {
public:
    explicit ZoListSortOrder(int column)
        : m_column(column)
    {
    }

    int Column() const { return m_column; }
    bool Descending() const { return m_descending; }

    // The same column again flips the direction; another column sorts ascending. False
    // (and no change) for a column outside [0, columnCount).
    bool Click(int column, int columnCount)
    {
        if (column < 0 || column >= columnCount)
            return false;
        if (column == m_column) {
            m_descending = !m_descending;
        } else {
            m_column = column;
            m_descending = false;
        }
        return true;
    }

    // Sorts rows in the current direction; ascending orders two rows for the ascending
    // direction. Rows that compare equal keep their order in either direction.
    template <class Row, class Less>
    void Sort(std::vector<Row>& rows, Less ascending) const
    {
        if (m_descending)
            std::stable_sort(rows.begin(), rows.end(), [&](Row const& a, Row const& b) { return ascending(b, a); });
        else
            std::stable_sort(rows.begin(), rows.end(), ascending);
    }

private:
    int m_column;
    bool m_descending = false;
};
