// The event editor's group list: the groups the event belongs to, added from the project's
// groups and removed after a question. The editor never creates or renames groups: it only
// adds and removes references in the event.
#include "editor/ZoEDlgEventCfg.h"

#include "editor/ZoAnnotationData.h"
#include "editor/ZoEventGroupsListModel.h"
#include "groups/ZoDlgSelect.h"
#include "platform/ui/ZoMessage.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>

void ZoEDlgEventCfg::UpdateGroupsList()
{
    m_groups->Fill(*m_event, m_groupsRoot);
    m_groupsList->header()->setSortIndicatorShown(m_groups->SortColumn() >= 0);
    if (m_groups->SortColumn() >= 0)
        m_groupsList->header()->setSortIndicator(m_groups->SortColumn(),
                                                 m_groups->Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
    AdjustGroupsListColumnsSize();
    UpdateGroupsButtons();
}

void ZoEDlgEventCfg::ResetGroupsList()
{
    m_groups->SetRows({});
}

void ZoEDlgEventCfg::UpdateGroupsButtons()
{
    m_deleteGroup->setEnabled(m_groupsList->selectionModel()->hasSelection());
}

void ZoEDlgEventCfg::AdjustGroupsListColumnsSize()
{
    m_groupsList->header()->resizeSection(ZoNumberedListModel::NumberColumn,
                                          m_groupsList->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 12);
}

void ZoEDlgEventCfg::OnItemchangedGroupsList()
{
    UpdateGroupsButtons();
}

void ZoEDlgEventCfg::OnColumnclickGroupsList(int column)
{
    m_groups->ClickColumn(column);
    m_groupsList->header()->setSortIndicatorShown(true);
    m_groupsList->header()->setSortIndicator(column, m_groups->Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// Offers the project's groups whose name the list does not show yet; the chosen ones are
// appended in the order chosen.
void ZoEDlgEventCfg::OnAddGroup()
{
    ZoGroupIndex const groups(m_groupsRoot);
    std::vector<std::wstring> names = ZoGroupsToOffer(groups, m_groups->Texts());
    ZoDlgSelect select(this, names, ZoDlgSelect::kGroupsMode);
    if (select.DoModal() != QDialog::Accepted)
        return;
    ZoAddGroupReferences(*m_event, groups, names);
    m_changed = true;
    UpdateGroupsList();
}

// One question for all the selected rows. The "%g" numbers already in the texts stay as
// they are.
void ZoEDlgEventCfg::OnDeleteGroup()
{
    QModelIndexList const rows = m_groupsList->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return;
    if (!ZoAskYesNo(this, 32788))
        return;
    if (!m_event->Child(L"eventsGroups"))
        return;
    std::vector<XmlNode*> references;
    references.reserve(std::size_t(rows.size()));
    for (QModelIndex const& row : rows)
        references.push_back(m_groups->RowAt(row.row()).node);
    ResetGroupsList();
    ZoRemoveGroupReferences(*m_event, references);
    m_changed = true;
    UpdateGroupsList();
}
