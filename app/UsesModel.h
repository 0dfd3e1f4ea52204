#pragma once
#include "check/ZoCheckFinding.h"

#include <QAbstractTableModel>

#include <vector>

// The rows of the where-used window: one use a row (see ZoFindUses), columns element (the
// event, week program or calendar), field (with the column in a formula) and the field's
// text.
class UsesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { ElementColumn, FieldColumn, TextColumn, ColumnCount };

    explicit UsesModel(QObject* parent = nullptr);

    void SetUses(std::vector<ZoFinding> uses);
    ZoFinding const& UseAt(int row) const { return m_uses[static_cast<std::size_t>(row)]; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ZoFinding> m_uses;
};
