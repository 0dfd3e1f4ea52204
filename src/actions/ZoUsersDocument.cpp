#include "actions/ZoUsersDocument.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/ui/ZoWaitDlg.h"

#include <QDir>
#include <QFile>

#include <thread>

using XmlNode = XmlDocument::XmlNode;

namespace {

ZoUsersFileLoader& Loader()
{
    static ZoUsersFileLoader loader;
    return loader;
}

std::wstring UsersFilePath()
{
    QString const folder = QString::fromStdWString(ZoVelmoraSetup::instance().CfgPath());
    return QDir(folder).filePath(QString::fromWCharArray(kUsersFileName)).toStdWString();
}

// Runs on the worker: only it touches the document until the wait box has closed.
void LoadOrStartEmpty(XmlDocument& users, ZoUsersFileLoader const& loader, std::wstring const& path)
{
    bool loaded = false;
    try {
        loaded = loader ? loader(users, path) : ZoLoadUsersFile(users, path);
    } catch (...) {
        loaded = false;
    }
    if (!loaded || !users.Root()) {
        users.Create(kUsersRootTag);
        users.Root()->SetValue(L"version", kUsersDocumentVersion);
    }
}

} // namespace

bool ZoLoadUsersFile(XmlDocument& users, std::wstring const& path)
{
    QFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray const bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return false;
    if (!users.Parse(bytes.constData(), static_cast<std::size_t>(bytes.size())))
        return false;
    return users.Root() && users.Root()->HasTag(kUsersRootTag);
}

void ZoSetUsersFileLoader(ZoUsersFileLoader loader)
{
    Loader() = std::move(loader);
}

void ZoEnsureUsersLoaded(QWidget* parent, XmlDocument* users)
{
    if (!users || users->IsOK())
        return;
    ZoUsersFileLoader const loader = Loader();
    std::wstring const path = UsersFilePath();
    ZoWaitDlg wait(parent, 36261);
    std::thread worker([&wait, users, &loader, &path] {
        while (!wait.IsReady())
            std::this_thread::yield();
        LoadOrStartEmpty(*users, loader, path);
        wait.Close();
    });
    wait.DoModal();
    worker.join();
    if (!users->Root()->Child(L"users"))
        users->Root()->NewChild(L"users");
}
