#pragma once
#include <QAbstractTableModel>
#include <QIcon>
#include <QString>
#include <vector>

// A one-column list of names (heading: text 355), each row drawn with the same image.
// Serves the selection dialog (rows in the order given) and the member list of the event
// groups dialog (rows kept sorted by text).
//
// Sorted rows follow NameOrder; SetNames sorts once (n log n).
class NameRowsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit NameRowsModel(QObject* parent = nullptr);

    void SetIcon(QIcon icon) { m_icon = std::move(icon); }
    // With sorted set, every SetNames keeps its rows in ascending order of the names.
    void SetSorted(bool sorted) { m_sorted = sorted; }
    // Replaces every row.
    void SetNames(std::vector<QString> names);
    void Clear() { SetNames({}); }

    QString const& NameAt(int row) const { return m_names[std::size_t(row)]; }
    std::vector<QString> const& Names() const { return m_names; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<QString> m_names;
    QIcon m_icon;
    QString m_heading;
    bool m_sorted = false;
};

// The order of the lists of the groups dialog: by the case-folded text first, then by the
// exact text; equal names keep their order (in either direction). Returns the indices of
// names in that order, ascending or descending. Each name is folded once, so sorting many
// thousand names costs n log n plain comparisons.
std::vector<std::size_t> NameOrder(std::vector<QString> const& names, bool descending = false);
