// The where-used window on the uses of one device of the demo (where-used.png), and the
// rename dialog's preview of renaming that device (rename.png).
#include "MainWindow.h"
#include "ProjectFolder.h"
#include "RenameDlg.h"
#include "ShotSupport.h"
#include "UsesWindow.h"

#include <QDialog>
#include <QLineEdit>
#include <QTreeView>

namespace {

void Run(MainWindow& window, QString const&)
{
    window.OnWhereUsed(QStringLiteral("device:PUMP1"));
    UsesWindow* uses = window.Uses();
    if (!uses || uses->List()->model()->rowCount() < 5) {
        Fail("uses scene: PUMP1 is not used in the demo");
        return;
    }
    uses->resize(1100, 440);
    Show(*uses);
    uses->List()->setCurrentIndex(uses->List()->model()->index(3, 0));
    Save(*uses, "where-used.png");
    uses->close();

    ProjectFolder* project = window.Project();
    RenameDlg rename(&window, project->Events(), project->Devices());
    rename.Preset(ZoRenameKind::Device, {}, QStringLiteral("PUMP1"));
    rename.EnsureInitialized();
    rename.findChild<QLineEdit*>(QStringLiteral("newNameEdit"))->setText(QStringLiteral("Pump 1.B"));
    ClickButton(rename, "previewButton");
    rename.resize(1100, 520);
    Show(rename);
    Save(rename, "rename.png");
    rename.close();
}

bool const registered = RegisterShotScene({"uses", 2, Run});

} // namespace
