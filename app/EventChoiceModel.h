#pragma once
#include "config/XmlDocument.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The events of an `events` element as rows of name and description, for choosing one;
// disabled events are shown greyed.
//
// Order: by the sort column (name at first; sort() is a click on a heading), its texts
// compared without regard to case as QString::compare(Qt::CaseInsensitive) compares them;
// rows of equal texts keep their document order in either direction. Filter: the rows whose
// name holds the filter text, case ignored; an empty text shows every row.
//
// Each name is folded into a key once (ZoAppendCaseFoldedKey) and the rows are sorted once
// per column and direction; a filter is one pass over that order (a filter that extends the
// previous one searches only the rows that one kept). Filling reads each event's name alone;
// a row's description and state are read when a view asks for them (descriptions are folded
// on the first sort by description). The rows point into the tree: the events must not
// change while the model shows them.
class EventChoiceModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit EventChoiceModel(QObject* parent = nullptr);

    // Reads every `event` child, sorted by name, with no filter.
    void Fill(XmlDocument::XmlNode const* events);
    void SetFilter(QString const& text);
    QString const& Filter() const { return m_filter; }

    // The position among the `event` children of the event shown at this row, or -1.
    int PositionAt(int row) const;
    // The row that shows the event at this position, or -1 when none does.
    int RowOf(int position) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    struct Row {
        XmlDocument::XmlNode const* event = nullptr;
        std::string_view name; // UTF-8 text in the tree
    };
    struct KeySpan {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
    };
    std::string_view Key(std::string const& keys, KeySpan span) const;
    // Appends the case-folded key of text to keys and its place to spans.
    static void AppendKey(std::string& keys, std::vector<KeySpan>& spans, std::string_view text);
    void FoldDescriptions();
    void ApplyFilter(bool narrowing);

    std::vector<Row> m_rows;              // document order
    void const* m_descriptionTag = nullptr; // tags as the document interns them
    void const* m_disabledTag = nullptr;
    std::string m_nameKeys;               // case-folded keys, one block
    std::vector<KeySpan> m_nameKey;       // per row
    std::string m_descriptionKeys;        // folded on the first sort by description
    std::vector<KeySpan> m_descriptionKey;
    std::vector<std::uint32_t> m_sorted;  // rows in the order of the sort column and direction
    std::vector<std::uint32_t> m_shown;   // the sorted rows that the filter keeps
    int m_sortColumn = 0;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QString m_filter;
    std::string m_needle;                 // the filter's key
};

// The n-th `event` child of an `events` element, or null.
XmlDocument::XmlNode* NthEvent(XmlDocument::XmlNode* events, int n);
