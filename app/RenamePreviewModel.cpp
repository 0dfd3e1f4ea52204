#include "RenamePreviewModel.h"

#include "platform/tools/ZoTexts.h"

RenamePreviewModel::RenamePreviewModel(QObject* parent) : QAbstractTableModel(parent) {}

bool RenamePreviewModel::Plan(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request,
                              std::wstring& error)
{
    beginResetModel();
    m_planned = ZoPlanRename(events, devices, request, m_plan, error);
    m_request = request;
    endResetModel();
    return m_planned;
}

void RenamePreviewModel::Clear()
{
    if (!m_planned && m_plan.changes.empty())
        return;
    beginResetModel();
    m_plan = ZoRenamePlan();
    m_planned = false;
    endResetModel();
}

bool RenamePreviewModel::IsPlanFor(ZoRenameRequest const& request) const
{
    return m_planned && request.kind == m_request.kind && request.device == m_request.device &&
        request.oldName == m_request.oldName && request.newName == m_request.newName;
}

int RenamePreviewModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_plan.changes.size());
}

int RenamePreviewModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RenamePreviewModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    ZoRenameChange const& change = m_plan.changes[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case ElementColumn: return QString::fromStdWString(ZoSubjectText(change.place));
    case FieldColumn: return QString::fromStdWString(ZoFieldText(change.place));
    case BeforeColumn: return QString::fromStdWString(change.before);
    case AfterColumn: return QString::fromStdWString(change.after);
    case CountColumn: return change.count;
    default: return {};
    }
}

QVariant RenamePreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    static constexpr unsigned kHeaders[] = {64740, 64741, 64752, 64750, 64751};
    return ZoText(kHeaders[section]);
}
