#include "ProjectSummary.h"

#include "ProjectFileReader.h"
#include "ProjectFolder.h"
#include "config/XmlKeys.h"
#include "config/XmlScanner.h"

#include <QDir>

#include <deque>

using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;

namespace {

// Tags are compared as the document's interned keys: a project of a million events is
// counted in one quick pass.
int CountChildren(XmlNode const* parent, wchar_t const* tag)
{
    if (!parent)
        return 0;
    void const* const key = parent->Document()->TagKey(tag);
    int count = 0;
    for (XmlNode const* child = parent->FirstChild(); child; child = child->NextSibling())
        count += child->TagKey() == key ? 1 : 0;
    return count;
}


int CountChildren(XmlNode const* parent, wchar_t const* container, wchar_t const* tag)
{
    return parent ? CountChildren(parent->Child(container), tag) : 0;
}

// Walks the device groups element and all groups below it, breadth first, without
// recursion: a device tree may be deep.
int CountEventDevices(XmlNode const* deviceGroups)
{
    int count = 0;
    std::deque<XmlNode const*> pending;
    if (deviceGroups)
        pending.push_back(deviceGroups);
    XmlDocument const* doc = deviceGroups ? deviceGroups->Document() : nullptr;
    void const* const deviceKey = doc ? doc->TagKey(L"device") : nullptr;
    void const* const typeKey = doc ? doc->TagKey(L"type") : nullptr;
    while (!pending.empty()) {
        XmlNode const* group = pending.front();
        pending.pop_front();
        if (XmlNode const* devices = group->Child(L"devices")) {
            for (XmlNode const* device = devices->FirstChild(); device; device = device->NextSibling()) {
                if (device->TagKey() == deviceKey && zo::xml::TextOf(*device, typeKey) == kEventDeviceTypeText)
                    ++count;
            }
        }
        if (XmlNode const* groups = group->Child(L"groups")) {
            for (auto it = groups->ChildsBegin(); it != groups->ChildsEnd(); ++it)
                pending.push_back(*it);
        }
    }
    return count;
}

// Counts usersBD/users/user elements as the text goes by, without building a tree.
class UserCounter : public zo::xml::ScanHandler {
public:
    void StartElement(std::string_view name) override
    {
        static constexpr std::string_view kPath[] = {"usersBD", "users", "user"};
        if (m_depth == m_matched && m_matched < 3 && name == kPath[m_matched])
            ++m_matched;
        ++m_depth;
        if (m_depth == 3 && m_matched == 3)
            ++count;
    }
    void Attribute(std::string_view, std::string_view) override {}
    void Text(std::string_view) override {}
    void EndElement() override
    {
        if (m_matched == m_depth)
            --m_matched;
        --m_depth;
    }
    int count = 0;

private:
    int m_depth = 0;
    int m_matched = 0;
};

// The users of the project: from the users document once it is loaded, else as counted in
// the file when the folder opened (opening leaves the document unloaded).
int CountUsers(ProjectFolder& project)
{
    if (project.Users().IsOK())
        return CountChildren(project.Users().Root(), L"users", L"user");
    return project.UsersInFile();
}

int CountFiles(QString const& folder, QString const& pattern)
{
    return static_cast<int>(QDir(folder).entryList({pattern}, QDir::Files).size());
}

} // namespace

ProjectSummary SummarizeProject(ProjectFolder& project)
{
    ProjectSummary summary;
    summary.name = project.DisplayName();
    summary.folder = project.Folder();
    XmlNode const* events = project.Events().Root();
    summary.events = CountChildren(events, L"events", L"event");
    summary.eventGroups = CountChildren(events, L"eventsGroups", L"eventsGroup");
    XmlNode const* tables = project.TimeTables().Root();
    summary.timeTables = CountChildren(tables, L"days", L"day")
        + CountChildren(tables, L"weeks", L"week")
        + CountChildren(tables, L"calendars", L"calendar");
    summary.eventDevices = CountEventDevices(project.DeviceGroups());
    summary.catalogDevices = CountChildren(project.Devices().Root(), kCatalogTag, L"driver");
    summary.screens = CountFiles(summary.folder, QStringLiteral("*.*.XSCN"));
    summary.reports = CountFiles(summary.folder, QStringLiteral("*.*.xrpt"));
    summary.users = CountUsers(project);
    return summary;
}

int CountUsersInFile(QString const& path)
{
    ProjectFileBytes bytes;
    std::wstring reason;
    if (ReadProjectFile(path, bytes, reason) != ProjectFileRead::Read)
        return 0;
    UserCounter counter;
    return zo::xml::ScanXml(bytes.Data(), bytes.Size(), counter).ok ? counter.count : 0;
}
