#include "JourneyWindow.h"

#include "ProjectFolder.h"
#include "ProjectFolderGenerator.h"

namespace zo::bench {

JourneyWindow::JourneyWindow()
    : m_window(std::make_unique<MainWindow>(RecentFolders(m_settings.filePath(QStringLiteral("recent.ini")))))
{
}

JourneyWindow::~JourneyWindow() = default;

bool JourneyWindow::Open(GeneratedProjectFolder const& folder)
{
    return m_window->OpenFolder(folder.Path());
}

int JourneyWindow::EventCount() const
{
    ProjectFolder* project = m_window->Project();
    XmlDocument::XmlNode const* events = project ? project->Events().Root()->Child(L"events") : nullptr;
    int count = 0;
    for (auto const* node = events ? events->FirstChild() : nullptr; node; node = node->NextSibling())
        count += node->HasTag(L"event") ? 1 : 0;
    return count;
}

} // namespace zo::bench
