#pragma once
#include "check/ZoCheckFinding.h"
#include "check/ZoProjectChecker.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <vector>

// The rows of the Problems window: one finding a row, columns severity, event (or the
// element), field, message. Sorting and the filter by severity are ProblemsFilter's.
class ProblemsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { SeverityColumn, SubjectColumn, FieldColumn, MessageColumn, ColumnCount };
    // The role sorting uses: the severity as a number (errors first), texts otherwise.
    static constexpr int kSortRole = Qt::UserRole + 1;
    static constexpr int kSeverityRole = Qt::UserRole + 2;

    explicit ProblemsModel(QObject* parent = nullptr);

    void SetFindings(std::vector<ZoFinding> findings);
    // After one event was checked again: its own findings give way to the new ones; those
    // that compare it with other elements stay.
    void ReplaceEventFindings(std::uint32_t position, std::vector<ZoFinding> findings);
    ZoFinding const& FindingAt(int row) const { return m_findings[static_cast<std::size_t>(row)]; }
    ZoCheckCounts Counts() const { return ZoCountFindings(m_findings); }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ZoFinding> m_findings;
};

// The rows shown: the severities switched on, sorted by a column.
class ProblemsFilter : public QSortFilterProxyModel {
    Q_OBJECT
public:
    explicit ProblemsFilter(QObject* parent = nullptr);
    void SetShown(ZoSeverity severity, bool shown);

protected:
    bool filterAcceptsRow(int row, QModelIndex const& parent) const override;

private:
    bool m_shown[3] = {true, true, true};
};
