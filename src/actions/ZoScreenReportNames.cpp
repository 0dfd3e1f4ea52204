#include "actions/ZoScreenReportNames.h"

#include "actions/ZoSplitFileName.h"

#include <QDir>
#include <QFileInfo>

#include <unordered_map>
#include <unordered_set>

using XmlNode = XmlDocument::XmlNode;

ZoProjectFileKind ZoProjectFileKindOf(XmlNode const& action)
{
    return action.HasTag(L"report") ? ZoProjectFileKind::Report : ZoProjectFileKind::Screen;
}

std::vector<ZoBasicString<wchar_t>> ZoListProjectNames(ZoBasicString<wchar_t> const& folder, ZoProjectFileKind kind)
{
    std::vector<ZoBasicString<wchar_t>> names;
    if (folder.empty())
        return names;
    QDir const dir(QString::fromStdWString(folder));
    QString const pattern = kind == ZoProjectFileKind::Report ? QStringLiteral("*.*.xrpt") : QStringLiteral("*.*.XSCN");
    QFileInfoList const files = dir.entryInfoList({pattern}, QDir::Files | QDir::Readable,
                                                  QDir::Name | QDir::IgnoreCase);
    std::unordered_set<ZoBasicString<wchar_t>> seen;
    ZoBasicString<wchar_t> name, number;
    for (QFileInfo const& file : files) {
        if (!SplitFileName(file.completeBaseName().toStdWString(), name, number) || !seen.insert(name).second)
            continue;
        names.push_back(name);
    }
    return names;
}

std::vector<ZoBasicString<wchar_t>> ZoFreeNames(std::vector<ZoBasicString<wchar_t>> names, XmlNode const* moment,
                                                XmlNode const& action)
{
    if (!moment)
        return names;
    // The id of the first action of the kind that holds each name, read in one pass.
    std::unordered_map<ZoBasicString<wchar_t>, ZoBasicString<wchar_t>> firstHolder;
    for (XmlNode const* sibling = moment->FirstChild(); sibling; sibling = sibling->NextSibling()) {
        if (sibling->HasTag(action.Tag()))
            firstHolder.try_emplace(sibling->Value(L"name", L""), sibling->Value(L"id", L""));
    }
    ZoBasicString<wchar_t> const id = action.Value(L"id", L"");
    std::erase_if(names, [&](ZoBasicString<wchar_t> const& name) {
        auto const holder = firstHolder.find(name);
        return holder != firstHolder.end() && holder->second != id;
    });
    return names;
}
