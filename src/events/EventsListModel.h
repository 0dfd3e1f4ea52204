#pragma once
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include <QAbstractTableModel>
#include <QPixmap>
#include <QString>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The rows of the events list: one per `event` child of the document's `events` element,
// with five columns (name, enabled, time table, notify, record).
//
// Each row records its position at the time of filling and a pointer to its `event` in
// the live tree; the cells keep the tree's UTF-8 texts as they are and become QStrings only
// when a view asks (data()). Rows point into the tree, so whoever changes the tree calls
// Clear() first (or UpdateList() right after, before any view can ask for data).
//
// The model needs no widget: a benchmark or a test constructs it with the documents, calls
// UpdateList() and ClickColumn(), and reads rows with EventAt()/NameAt()/data().
// (Only the decoration role loads images, and it needs a QGuiApplication.)
//
// Sorting: the ascending order compares the sort column's texts without regard to case;
// equal texts fall back to column 0 ascending. The descending order is the ascending one
// with the two rows swapped (equal texts fall back to column 0 descending). Rows equal in
// both keep their document order in ascending and the reverse in descending.
// After the first fill, a fill reads again only the events that the document noted as
// changed (see XmlDocument::NoteChangesBelow) and merges them into the last order.
// A fill reads only the names, which the order needs; the other columns of a row are read
// when the row is first shown, or for every row when the list is sorted by one of them.
// A full fill sorts the rows by name once (n log n); the other columns hold few distinct texts
// (yes/no, the time tables' names), so a heading click orders the rows by rank in one
// linear pass over the name order.
class EventsListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NameColumn, EnabledColumn, TimeTableColumn, NotifyColumn, RecordColumn, ColumnCount };
    // The row's image: 0 for an enabled event, 1 for a disabled (greyed) one.
    static constexpr int ImageIndexRole = Qt::UserRole + 1;

    // eventsCfg: the event configuration document (read here, never changed; the rows hand
    // out its elements to the caller, who may change them); timeTables: the time-tables
    // document (may be null), for the time-table names.
    EventsListModel(XmlDocument* eventsCfg, XmlDocument const* timeTables,
                    QObject* parent = nullptr);
    ~EventsListModel() override;

    // Rebuilds every row from the tree and sorts them by the current sort column.
    void UpdateList();
    // Drops every row (before a change of the tree that UpdateList will follow).
    void Clear();
    // A list keeps its rows when it closes, for the next list of the same documents; the
    // host drops them when it closes those documents.
    static void DropKept();
    // Before these events are removed from the tree (they must still be in it): their rows
    // go, so that the fill after the removal reads nothing again. Call Clear() first.
    void ForgetEvents(std::vector<XmlDocument::XmlNode const*> const& events);
    // After changes made since the last fill that reached only keys the rows do not show (a
    // replace all writes the actions' keys and the events' conditions, delays and
    // annotations): the rows stay as they are, and the document's notes of those changes are
    // dropped, so that the next fill does not read those events again.
    void KeepRowsOverUnshownChanges();
    // A click on a column heading: the same column again toggles ascending/descending
    // (first click ascending, second descending, third ascending again); another column
    // starts ascending. Sorts the rows once: the tree has not changed since the last fill,
    // so the rows are what a refill would give.
    void ClickColumn(int column);
    int SortColumn() const { return m_sortColumn; }
    bool Descending() const { return m_descending; }

    XmlDocument::XmlNode* EventAt(int row) const;
    // The row's position among the events when the list was filled.
    int PositionAt(int row) const;
    std::wstring NameAt(int row) const;
    // The row whose name equals this one without regard to case, or -1.
    int FindName(std::wstring_view name) const;
    // How many rows bear this name without regard to case (the name already folded,
    // FoldedName).
    int CountFoldedName(std::string_view folded) const;
    // The names of all rows, for making pasted names unique; it refers to the rows, so it
    // serves until the next fill.
    EventNameSet NameSet() const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    // One event, in document order (its index in m_rows is its position).
    struct Row {
        XmlDocument::XmlNode* event = nullptr;
        std::string_view name;       // UTF-8 text in the live tree
        std::uint32_t keyOffset = 0; // folded name in m_foldedNames
        std::uint32_t keyLength = 0;
        // The other columns, read when first needed (ReadColumns).
        mutable bool columnsRead = false;
        mutable bool disabled = false;
        mutable bool notify = false;
        mutable bool record = false;
        mutable int timeTable = -1;  // index into m_timeTableNames, -1 when none is found
    };
    struct TimeTable {
        QString name;
        std::string folded;
    };

    // The tags of an event's keys in the events document.
    struct Keys {
        void const* event = nullptr;
        void const* name = nullptr;
        void const* disabled = nullptr;
        void const* notify = nullptr;
        void const* record = nullptr;
        void const* timeTable = nullptr;
    };
    static constexpr std::uint32_t kNoRow = 0xFFFFFFFFu;
    static constexpr std::size_t kLookAhead = 64; // deleted rows skipped while matching
    static constexpr std::size_t kMaxFresh = 2048; // past that a full fill is as quick

    // The rows a closed list left for the next one of the same documents.
    struct Kept {
        XmlDocument const* eventsCfg = nullptr;
        XmlDocument const* timeTables = nullptr;
        std::vector<Row> rows;
        std::vector<std::uint32_t> byName;
        std::string foldedNames;
        std::size_t foldedGarbage = 0;
        XmlDocument::XmlNode const* filledEvents = nullptr;
        std::string timeTableSignature;
        std::uint64_t fill = 0; // FillCount() after the fill that made them
    };
    static Kept& LastKept();
    // Fills of any list so far: the document's change notes serve one list at a time.
    static std::uint64_t& FillCount();

    // Reads the time tables; true when they are what the last fill saw.
    bool FillTimeTables();
    Keys KeyTags() const;
    void ReadRow(XmlDocument::XmlNode* event, void const* nameTag, Row& row);
    void SetRow(XmlDocument::XmlNode* event, std::string_view name, Row& row);
    // The row with its other columns read.
    Row const& ReadColumns(Row const& row) const;
    void FillRows(XmlDocument::XmlNode* events);
    // Reads again only the events noted as changed; false when that cannot be done (the
    // rows are then left for a full fill).
    // What a refill hands to the merge: for each row of the last fill, its row now (kNoRow
    // when it went or was read again), and the rows read again.
    struct Refill {
        std::vector<std::uint32_t> oldToNew;
        std::vector<std::uint32_t> fresh;
    };
    // After a change that kept every event in its place (an edit of a few events): reads
    // the noted rows again and moves them in the name order; false when the change was
    // of another kind (the rows are then as they were, for a refill).
    // updated: the rows read again; orderKept: each stayed at its place in the name order.
    bool UpdateInPlace(XmlDocument::XmlNode* events, std::vector<XmlDocument::XmlNode const*> changed,
                       std::vector<std::uint32_t>& updated, bool& orderKept);
    // What every fill ends with: the events read, and their changes noted from now on.
    void FinishFill(XmlDocument::XmlNode* events);
    int RowOfEvent(XmlDocument::XmlNode const* event) const;
    void CompactFoldedNames();
    bool RefillChanged(XmlDocument::XmlNode* events, std::vector<XmlDocument::XmlNode const*> const& changed,
                       Refill& refill);
    void MergeChangedIntoOrder(Refill& refill);
    void IndexTimeTables();
    void SortByName();
    void SortRows();
    Row const* RowAt(int row) const;
    std::string_view NameKey(Row const& row) const;
    // The name order of the rows: by folded name, then by place in the document.
    bool NameBefore(std::uint32_t a, std::uint32_t b) const;
    // Orders row indices by folded name alone, against each other or a folded name.
    struct NameLess {
        EventsListModel const* model;
        bool operator()(std::uint32_t row, std::string_view name) const { return model->NameKey(model->m_rows[row]) < name; }
        bool operator()(std::string_view name, std::uint32_t row) const { return name < model->NameKey(model->m_rows[row]); }
    };
    QString const& YesNo(bool yes) const { return yes ? m_yes : m_no; }
    QString const& TimeTableText(Row const& row) const;

    XmlDocument* m_eventsCfg;
    XmlDocument const* m_timeTables;
    std::vector<Row> m_rows;            // document order
    std::vector<std::uint32_t> m_byName; // indices of m_rows by name, then position
    std::vector<std::uint32_t> m_order;  // indices of m_rows in the list's order
    std::string m_foldedNames;
    std::size_t m_foldedGarbage = 0; // bytes of m_foldedNames no row refers to any more
    std::uint64_t m_fill = 0;        // FillCount() after this list's last fill
    std::vector<TimeTable> m_timeTableNames;
    std::unordered_map<std::string_view, int> m_timeTableIds; // id -> index of its name
    Keys m_keys; // the key tags as the last fill found them
    std::string m_timeTableSignature; // ids and names, to tell whether they changed
    XmlDocument::XmlNode const* m_filledEvents = nullptr;
    // Sort ranks of the time-table column: one per time table, then one for "none";
    // equal (folded) texts share a rank.
    std::vector<std::uint32_t> m_timeTableRanks;
    std::uint32_t m_yesRank = 0;
    std::uint32_t m_noRank = 0;
    int m_sortColumn = NameColumn;
    bool m_descending = false;

    QString m_yes, m_no, m_noTimeTable;
    std::string m_noTimeTableKey;
    mutable QPixmap m_images[2];
    mutable bool m_imagesLoaded = false;
};
