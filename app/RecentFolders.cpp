#include "RecentFolders.h"

#include <QDir>
#include <QSettings>

#include <memory>

namespace {

constexpr char kKey[] = "recentFolders";

std::unique_ptr<QSettings> OpenSettings(QString const& iniFile)
{
    if (iniFile.isEmpty())
        return std::make_unique<QSettings>(QStringLiteral("zoevents"), QStringLiteral("zoevents-editor"));
    return std::make_unique<QSettings>(iniFile, QSettings::IniFormat);
}

} // namespace

RecentFolders::RecentFolders() = default;

RecentFolders::RecentFolders(QString iniFile)
    : m_iniFile(std::move(iniFile))
{
}

QStringList RecentFolders::Folders() const
{
    return OpenSettings(m_iniFile)->value(kKey).toStringList();
}

void RecentFolders::Add(QString const& folder)
{
    QString const clean = QDir::cleanPath(folder);
    QStringList folders = Folders();
    folders.removeAll(clean);
    folders.prepend(clean);
    while (folders.size() > kMaxFolders)
        folders.removeLast();
    Store(folders);
}

void RecentFolders::Remove(QString const& folder)
{
    QStringList folders = Folders();
    folders.removeAll(QDir::cleanPath(folder));
    Store(folders);
}

void RecentFolders::Clear()
{
    Store({});
}

void RecentFolders::Store(QStringList const& folders)
{
    OpenSettings(m_iniFile)->setValue(kKey, folders);
}
