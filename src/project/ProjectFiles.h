#pragma once

// The documents of a project folder, their file names and the tags of their roots.
// Every document is written by XmlDocument (properties as child elements).
namespace zo::project {

enum class ProjectDoc { Events, TimeTables, Devices, Users, Project };

// "Events.zocfg": root eventsConfiguration with `events` and `eventsGroups`.
inline constexpr wchar_t const* kEventsFile = L"Events.zocfg";
inline constexpr wchar_t const* kEventsRoot = L"eventsConfiguration";
// "TimeTables.zocfg": root timeTables with `days`, `weeks` and `calendars`.
inline constexpr wchar_t const* kTimeTablesFile = L"TimeTables.zocfg";
inline constexpr wchar_t const* kTimeTablesRoot = L"timeTables";
// "Devices.zocfg": root deviceTree with the device groups element `deviceGroups`
// (`devices`, `groups`) and the device catalog `catalog` (`driver` elements).
inline constexpr wchar_t const* kDevicesFile = L"Devices.zocfg";
inline constexpr wchar_t const* kDevicesRoot = L"deviceTree";
inline constexpr wchar_t const* kDeviceGroupsTag = L"deviceGroups";
inline constexpr wchar_t const* kCatalogTag = L"catalog";
// "Users.zocfg": root usersBD with `users`, `mailLists` and `phoneLists`; the editor never writes it.
inline constexpr wchar_t const* kUsersFile = L"Users.zocfg";
inline constexpr wchar_t const* kUsersRoot = L"usersBD";
inline constexpr wchar_t const* kUsersVersion = L"24.11.17";
// "Project.zocfg" (optional): root project with `name` and `eventFeed` ("T"/"F").
inline constexpr wchar_t const* kProjectFile = L"Project.zocfg";
inline constexpr wchar_t const* kProjectRoot = L"project";

// The device type under which an event is registered in the device groups element.
inline constexpr wchar_t const* kEventDeviceType = L"R$EVE";
inline constexpr char kEventDeviceTypeText[] = "R$EVE"; // as stored (UTF-8)

constexpr wchar_t const* FileName(ProjectDoc doc)
{
    switch (doc) {
    case ProjectDoc::Events: return kEventsFile;
    case ProjectDoc::TimeTables: return kTimeTablesFile;
    case ProjectDoc::Devices: return kDevicesFile;
    case ProjectDoc::Users: return kUsersFile;
    case ProjectDoc::Project: return kProjectFile;
    }
    return L"";
}

constexpr wchar_t const* RootTag(ProjectDoc doc)
{
    switch (doc) {
    case ProjectDoc::Events: return kEventsRoot;
    case ProjectDoc::TimeTables: return kTimeTablesRoot;
    case ProjectDoc::Devices: return kDevicesRoot;
    case ProjectDoc::Users: return kUsersRoot;
    case ProjectDoc::Project: return kProjectRoot;
    }
    return L"";
}

inline constexpr ProjectDoc kAllDocs[] = {ProjectDoc::Events, ProjectDoc::TimeTables,
                                          ProjectDoc::Devices, ProjectDoc::Users,
                                          ProjectDoc::Project};

} // namespace zo::project
