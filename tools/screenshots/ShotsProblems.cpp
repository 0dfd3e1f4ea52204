// The Problems window of Events > Check Project on a copy of examples/faulty, a finding of
// the first event selected (problems.png). Run from the source folder, as
// scripts/screenshots.sh does.
#include "MainWindow.h"
#include "ProblemsWindow.h"
#include "ShotSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTreeView>

namespace {

void Run(MainWindow&, QString const&)
{
    QDir const source(QStringLiteral("examples/faulty"));
    QTemporaryDir copy, settings;
    for (QString const& name : source.entryList(QDir::Files))
        QFile::copy(source.filePath(name), QDir(copy.path()).filePath(name));
    MainWindow window{RecentFolders(settings.filePath(QStringLiteral("recent.ini")))};
    if (!window.OpenFolder(copy.path())) {
        Fail("problems scene: examples/faulty does not open (run from the source folder)");
        return;
    }
    window.OnCheckProject();
    ProblemsWindow* problems = window.Problems();
    if (!problems || problems->List()->model()->rowCount() < 10) {
        Fail("problems scene: the faulty example has no findings");
        return;
    }
    problems->resize(1100, 460);
    Show(*problems);
    problems->List()->setCurrentIndex(problems->List()->model()->index(0, 0));
    Save(*problems, "problems.png");
    problems->close();
}

bool const registered = RegisterShotScene({"problems", 1, Run});

} // namespace
