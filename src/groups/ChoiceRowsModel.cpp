#include "groups/ChoiceRowsModel.h"
#include "platform/tools/ZoTexts.h"

ChoiceRowsModel::ChoiceRowsModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_heading(ZoText(355))
{
}

void ChoiceRowsModel::SetChoices(std::vector<std::wstring> const* choices)
{
    beginResetModel();
    m_choices = choices;
    endResetModel();
}

int ChoiceRowsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() || !m_choices ? 0 : int(m_choices->size());
}

int ChoiceRowsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant ChoiceRowsModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromStdWString((*m_choices)[std::size_t(index.row())]);
    if (role == Qt::DecorationRole && !m_icon.isNull())
        return m_icon;
    return {};
}

QVariant ChoiceRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section == 0 && role == Qt::DisplayRole)
        return m_heading;
    return {};
}
