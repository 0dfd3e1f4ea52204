// zoevents-screenshots OUTPUT_FOLDER PROJECT_FOLDER [EVENT NAME]
//
// Opens the host editor's window on a copy of the project, then the events list with the
// named event selected (the first one when no event has that name) and the event editor on
// that event, and saves a PNG of each window into OUTPUT_FOLDER:
//   main-window.png, events-list.png, event-editor.png (General tab),
//   event-editor-advanced.png (Advanced tab)
// Every dialog is cancelled and the project is copied first, so nothing is ever written
// into PROJECT_FOLDER. Needs a real display (scripts/screenshots.sh uses xvfb-run).
#include "MainWindow.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoModal.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLockFile>
#include <QPixmap>
#include <QPushButton>
#include <QStatusBar>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QThread>
#include <QTreeView>

#include <algorithm>
#include <cstdio>

namespace {

QString g_output;
int g_failures = 0;
int g_saved = 0;

void Fail(char const* what)
{
    std::fprintf(stderr, "zoevents-screenshots: %s\n", what);
    ++g_failures;
}

// Lets the window system map, expose and paint what was just shown or changed.
void Settle(int ms = 400)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(10);
    }
}

void Show(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
    Settle();
}

void Save(QWidget& window, char const* fileName)
{
    Settle(150);
    QPixmap const picture = window.grab();
    QString const path = QDir(g_output).filePath(QString::fromLatin1(fileName));
    if (picture.isNull() || !picture.save(path, "PNG")) {
        Fail(fileName);
        return;
    }
    ++g_saved;
    std::printf("%s (%dx%d)\n", qPrintable(path), picture.width(), picture.height());
}

bool CopyFolder(QString const& from, QString const& to)
{
    QDir const source(from);
    if (!source.exists())
        return false;
    for (QString const& name : source.entryList(QDir::Files)) {
        if (!QFile::copy(source.filePath(name), QDir(to).filePath(name)))
            return false;
    }
    return true;
}

// The event editor: the General tab, then the Advanced tab; cancelled.
int ShootEditor(QDialog& dialog)
{
    Show(dialog);
    auto* tabs = dialog.findChild<QTabWidget*>(QStringLiteral("tabs"));
    if (tabs)
        tabs->setCurrentIndex(ZoEDlgEventCfg::TabGeneral);
    Save(dialog, "event-editor.png");
    if (tabs) {
        tabs->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        Save(dialog, "event-editor-advanced.png");
    } else {
        Fail("the event editor has no tabs");
    }
    dialog.reject();
    return QDialog::Rejected;
}

// The events list with one row selected; then its Modify button opens the editor. Cancelled.
int ShootList(QDialog& dialog, QString const& eventName)
{
    dialog.resize(960, 560);
    Show(dialog);
    auto* view = dialog.findChild<QTreeView*>(QStringLiteral("eventsList"));
    if (!view || !view->model() || view->model()->rowCount() == 0) {
        Fail("the events list shows no event");
        dialog.reject();
        return QDialog::Rejected;
    }
    // The list shares its width among the columns by fixed proportions: widen the dialog
    // until the longest name fits in its column (a quarter of the width).
    int const nameWidth = static_cast<QAbstractItemView*>(view)->sizeHintForColumn(0);
    int const shortBy = nameWidth - view->header()->sectionSize(0);
    if (shortBy > 0) {
        dialog.resize(std::min(dialog.width() + 4 * shortBy + 8, 1240), dialog.height());
        Settle();
    }
    QAbstractItemModel* model = view->model();
    QModelIndexList const found = model->match(model->index(0, 0), Qt::DisplayRole, eventName, 1, Qt::MatchExactly);
    QModelIndex const row = found.value(0, model->index(0, 0));
    view->setCurrentIndex(row);
    view->selectionModel()->select(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    view->scrollTo(row);
    view->setFocus();
    Settle(150);
    Save(dialog, "events-list.png");

    if (auto* modify = dialog.findChild<QPushButton*>(QStringLiteral("modifyButton")))
        modify->click();
    else
        Fail("the events list has no modify button");
    dialog.reject();
    return QDialog::Rejected;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: zoevents-screenshots OUTPUT_FOLDER PROJECT_FOLDER [EVENT NAME]\n");
        return 2;
    }
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setOrganizationName(QStringLiteral("zoevents"));
    QApplication::setApplicationName(QStringLiteral("zoevents-screenshots"));
    QApplication::setApplicationDisplayName(ZoText(60000));
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        std::fprintf(stderr, "zoevents-screenshots: needs the xcb platform (an X display), not %s\n",
                     qPrintable(QGuiApplication::platformName()));
        return 2;
    }

    g_output = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]));
    QString const source = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[2]));
    QString const eventName = argc == 4 ? QString::fromLocal8Bit(argv[3]) : QString();
    // The window shows the project's folder: the copy goes to the same place on every run
    // (under the lock, so that two runs never share it) and is removed at the end.
    QDir const temp(QDir::tempPath());
    QLockFile lock(temp.filePath(QStringLiteral("zoevents-screenshots.lock")));
    QDir base(temp.filePath(QStringLiteral("zoevents-screenshots")));
    QDir const copy(base.filePath(QFileInfo(source).fileName()));
    QTemporaryDir settings;
    if (!lock.tryLock(10000) || !QDir().mkpath(g_output) || !settings.isValid()
        || (base.exists() && !base.removeRecursively()) || !QDir().mkpath(copy.path())
        || !CopyFolder(source, copy.path())) {
        std::fprintf(stderr, "zoevents-screenshots: cannot prepare a copy of %s\n", qPrintable(source));
        return 1;
    }
    struct RemoveCopy {
        QDir dir;
        ~RemoveCopy() { dir.removeRecursively(); }
    } const removeCopy{base};

    // Every dialog goes through here; one not expected (a message box, say) is cancelled
    // at once and makes the run fail.
    ZoSetModalRunner([eventName](QDialog& dialog) {
        if (qobject_cast<ZoEDlgEventsCfg*>(&dialog))
            return ShootList(dialog, eventName);
        if (qobject_cast<ZoEDlgEventCfg*>(&dialog))
            return ShootEditor(dialog);
        Fail(dialog.metaObject()->className());
        dialog.reject();
        return int(QDialog::Rejected);
    });

    MainWindow window{RecentFolders(settings.filePath(QStringLiteral("recent.ini")))};
    window.resize(900, 440);
    if (!window.OpenFolder(copy.path())) {
        std::fprintf(stderr, "zoevents-screenshots: cannot open %s\n", qPrintable(source));
        return 1;
    }
    window.statusBar()->clearMessage(); // it names the temporary copy
    window.move(40, 40);
    Show(window);
    Save(window, "main-window.png");

    window.OnEventsList();
    ZoSetModalRunner({});

    window.close();
    if (g_saved != 4)
        Fail("not every window could be taken");
    return g_failures == 0 ? 0 : 1;
}
