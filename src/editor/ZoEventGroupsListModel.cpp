#include "editor/ZoEventGroupsListModel.h"

#include "editor/ZoAnnotationData.h"
#include "platform/tools/ZoTexts.h"

ZoEventGroupsListModel::ZoEventGroupsListModel(QObject* parent)
    : ZoNumberedListModel(ZoText(355), parent)
{
}

void ZoEventGroupsListModel::Fill(XmlNode const& event, XmlNode const* groupsRoot)
{
    if (!event.Child(L"eventsGroups"))
        return;
    ZoGroupIndex const groups(groupsRoot);
    std::vector<Row> rows;
    int position = 0;
    std::vector<ZoGroupMember> const members = ZoResolvedGroups(event, groups);
    rows.reserve(members.size());
    for (ZoGroupMember const& member : members) {
        std::string_view const name = member.group->ValueUtf8(L"name");
        rows.push_back({position++, member.reference, QString::fromUtf8(name.data(), qsizetype(name.size()))});
    }
    SetRows(std::move(rows));
}
