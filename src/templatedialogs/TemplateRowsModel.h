#pragma once
#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

class QTreeView;

// The rows of the templates' dialogs: texts in columns under fixed headings, optionally
// with a check box in the first column (the rows the user chooses). The dialogs fill it
// from the library's results; it holds no rule of its own.
class TemplateRowsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    TemplateRowsModel(QStringList headings, bool checkable, QObject* parent = nullptr);

    // Replaces every row (all unchecked unless `checked` is given, one flag a row).
    void SetRows(std::vector<QStringList> rows, std::vector<bool> checked = {});
    void SetChecked(int row, bool checked);
    void SetAllChecked(bool checked);
    bool IsChecked(int row) const;
    std::vector<int> CheckedRows() const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    bool setData(QModelIndex const& index, QVariant const& value, int role) override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void CheckedChanged();

private:
    QStringList m_headings;
    bool m_checkable;
    std::vector<QStringList> m_rows;
    std::vector<bool> m_checked;
};

// Fits every column of a list but the last to its contents (the last takes the rest).
void FitTemplateColumns(QTreeView* list);
