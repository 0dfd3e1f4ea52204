#pragma once
#include <QAbstractTableModel>
#include <QIcon>
#include <string>
#include <vector>

// The rows of the selection dialog: one per string of a list the dialog's caller owns, in
// its order, in one column (heading: text 355), each drawn with the same image. A row
// becomes a QString only when a view asks for it, so that offering a hundred thousand
// names costs no conversion of names nobody sees.
//
// The list must not change while the model shows it: call SetChoices(nullptr) first.
class ChoiceRowsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ChoiceRowsModel(QObject* parent = nullptr);

    void SetIcon(QIcon icon) { m_icon = std::move(icon); }
    // Shows these strings (null: no rows).
    void SetChoices(std::vector<std::wstring> const* choices);

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<std::wstring> const* m_choices = nullptr;
    QIcon m_icon;
    QString m_heading;
};
