// The event groups dialog on the demo project with "Pumps" selected, its members listed
// beside it (event-groups.png); the dialog is cancelled.
#include "ShotSupport.h"
#include "config/XmlDocument.h"
#include "groups/ZoEDlgEventGroupsCfg.h"

#include <QDir>
#include <QFile>
#include <QTreeView>

namespace {

void Run(MainWindow&, QString const& projectCopy)
{
    QFile file(QDir(projectCopy).filePath(QStringLiteral("Events.zocfg")));
    XmlDocument project;
    if (!file.open(QIODevice::ReadOnly)) {
        Fail("groups scene: the demo's events file");
        return;
    }
    QByteArray const text = file.readAll();
    if (!project.Parse(text.constData(), static_cast<std::size_t>(text.size()))) {
        Fail("groups scene: the demo's events file does not parse");
        return;
    }
    ZoEDlgEventGroupsCfg dialog(nullptr, &project);
    dialog.EnsureInitialized();
    Show(dialog);
    auto* groups = dialog.findChild<QTreeView*>(QStringLiteral("groupsList"));
    auto* members = dialog.findChild<QTreeView*>(QStringLiteral("membersList"));
    if (!groups || !members || groups->model()->rowCount() < 2) {
        Fail("groups scene: the demo has no event groups");
        return;
    }
    groups->setFocus();
    SelectRow(groups, QStringLiteral("Pumps"));
    if (members->model()->rowCount() == 0) {
        Fail("groups scene: \"Pumps\" has no members");
        return;
    }
    Save(dialog, "event-groups.png");
    dialog.reject();
}

bool const registered = RegisterShotScene({"event groups", 1, Run});

} // namespace
