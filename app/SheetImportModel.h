#pragma once
#include "spreadsheet/EventsImport.h"

#include <QAbstractTableModel>

#include <string>
#include <vector>

// The rows of the import preview: the faults that refuse the sheet, the columns it does
// not import, the groups it creates, each changed field of each modified event, the new
// and the deleted events and the check's findings on the imported events. A row refers to
// its item in the plan; its texts are made only when shown, so that a sheet of many
// thousand changes costs no more than its plan.
//
// The model holds the sheet's text and plans it again when the options change.
class SheetImportModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { LineColumn, KindColumn, EventColumn, DetailsColumn, ColumnCount };
    enum class Kind { Refused, NotImported, NewGroup, Modified, Added, Deleted, Finding };

    SheetImportModel(std::string sheet, ZoImportTarget target, QObject* parent = nullptr);

    // Plans the sheet with these options and checks the imported events.
    void Plan(ZoImportOptions const& options);
    ZoImportPlan const& CurrentPlan() const { return m_plan; }
    Kind KindAt(int row) const { return m_rows[static_cast<std::size_t>(row)].kind; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        Kind kind;
        std::uint32_t item; // in the plan's list of that kind
        std::uint32_t part; // the change of a modified event
    };
    void FillRows();
    int LineOf(Row const& row) const;
    QString EventOf(Row const& row) const;
    QString DetailsOf(Row const& row) const;

    std::string m_sheet;
    ZoImportTarget m_target;
    ZoImportPlan m_plan;
    std::vector<Row> m_rows;
};
