// zoevents-screenshots [--lang en|de] OUTPUT_FOLDER PROJECT_FOLDER [EVENT NAME]
//
// Opens the host editor's window on a copy of the project, then the events list with the
// named event selected (the first one when no event has that name) and the event editor on
// that event, then the time-tables setup on the project's time tables with each of its
// dialogs, and saves a PNG of each window into OUTPUT_FOLDER:
//   main-window.png, events-list.png, event-editor.png (General tab),
//   event-editor-advanced.png (Advanced tab), event-editor-faulty-condition.png, time-tables.png, time-table-kind.png,
//   time-table-day.png, time-slot.png, time-table-week.png, time-table-calendar.png,
//   fast-selection.png, formula-wizard.png (the formula wizard on a condition, as the event
//   editor opens it), variable-chooser.png (the device chooser picking a variable)
// Further scenes live in files of their own beside this one (ShotSupport.h registers them)
// and run after these.
// Every dialog is cancelled and the project is copied first, so nothing is ever written
// into PROJECT_FOLDER. Needs a real display (scripts/screenshots.sh uses xvfb-run).
#include "MainWindow.h"
#include "ShotSupport.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/calendar/CDlgFastSelection.h"
#include "platform/calendar/ZoCalendar.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/reports/CDlgWizzard.h"
#include "timetables/SlotGridCtrl.h"
#include "timetables/ZoDlgEventNewModifySlot.h"
#include "timetables/ZoDlgTimeTableDaily.h"
#include "timetables/ZoDlgTimeTableSetup.h"
#include "timetables/ZoDlgTimeTableWeekly.h"
#include "timetables/ZoDlgTimeTableWizzard.h"
#include "timetables/ZoDlgTimeTableYearly.h"
#include "platform/tools/ZoLanguage.h"
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
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QThread>
#include <QTest>
#include <QTableView>
#include <QTreeView>

#include <algorithm>
#include <cstdio>

namespace {
QString g_output;
int g_failures = 0;
int g_saved = 0;
} // namespace

void Fail(char const* what)
{
    std::fprintf(stderr, "zoevents-screenshots: %s\n", what);
    ++g_failures;
}

void Settle(int ms)
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

void SelectRow(QAbstractItemView* view, QString const& name)
{
    QAbstractItemModel* model = view->model();
    QModelIndexList const found = model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly);
    QModelIndex const row = found.value(0, model->index(0, 0));
    view->setCurrentIndex(row);
    view->selectionModel()->select(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ClickButton(QDialog& dialog, char const* name)
{
    if (auto* button = dialog.findChild<QPushButton*>(QLatin1String(name)))
        button->click();
    else
        Fail(name);
}

std::vector<ShotScene>& ShotScenes()
{
    static std::vector<ShotScene> scenes;
    return scenes;
}

bool RegisterShotScene(ShotScene scene)
{
    ShotScenes().push_back(std::move(scene));
    return true;
}

namespace {

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
        tabs->setCurrentIndex(ZoEDlgEventCfg::TabGeneral);
    } else {
        Fail("the event editor has no tabs");
    }
    // A condition with a fault: its label names it as the user types, and the tooltip
    // explains where.
    if (auto* condition = dialog.findChild<QLineEdit*>(QStringLiteral("conditionEdit"))) {
        condition->setText(QStringLiteral("[PLC1.TANK_LEVEL] > 95 AND [PUMP1.RUNING]"));
        condition->setFocus();
        condition->setCursorPosition(static_cast<int>(condition->text().size()));
        Save(dialog, "event-editor-faulty-condition.png");
    } else {
        Fail("the event editor has no condition field");
    }
    dialog.reject();
    return QDialog::Rejected;
}

// The events list with one row selected; then its Modify button opens the editor. Cancelled.
int ShootList(QDialog& dialog, QString const& eventName)
{
    dialog.resize(960, 560);
    Show(dialog);
    auto* view = dialog.findChild<QTableView*>(QStringLiteral("eventsList"));
    if (!view || !view->model() || view->model()->rowCount() == 0) {
        Fail("the events list shows no event");
        dialog.reject();
        return QDialog::Rejected;
    }
    // The list shares its width among the columns by fixed proportions: widen the dialog
    // until the longest name fits in its column (a quarter of the width).
    int const nameWidth = static_cast<QAbstractItemView*>(view)->sizeHintForColumn(0);
    int const shortBy = nameWidth - view->horizontalHeader()->sectionSize(0);
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


// The setup list; then the kind chooser, and each editor on a table of the demo.
int ShootTimeTables(QDialog& dialog)
{
    dialog.resize(560, 400);
    Show(dialog);
    auto* view = dialog.findChild<QTreeView*>(QStringLiteral("timeTablesList"));
    if (!view || view->model()->rowCount() == 0) {
        Fail("the time-tables list shows no table");
        dialog.reject();
        return QDialog::Rejected;
    }
    SelectRow(view, QStringLiteral("Working hours"));
    view->setFocus();
    Save(dialog, "time-tables.png");
    ClickButton(dialog, "addButton");
    for (char const* name : {"Working hours", "Operations week", "Public holidays"}) {
        SelectRow(view, QString::fromLatin1(name));
        ClickButton(dialog, "modifyButton");
    }
    dialog.reject();
    return QDialog::Rejected;
}

int ShootKindChooser(QDialog& dialog)
{
    Show(dialog);
    Save(dialog, "time-table-kind.png");
    dialog.reject();
    return QDialog::Rejected;
}

// The day editor with its first slot selected; its Modify button opens the slot editor.
int ShootDayEditor(QDialog& dialog)
{
    dialog.resize(520, 460);
    Show(dialog);
    if (auto* slotList = dialog.findChild<QTreeView*>(QStringLiteral("slotsList")))
        SelectRow(slotList, QString());
    Save(dialog, "time-table-day.png");
    ClickButton(dialog, "modifySlotButton");
    dialog.reject();
    return QDialog::Rejected;
}

// The slot editor after a drag from 07:00 to 15:15 over its grid.
int ShootSlotEditor(QDialog& dialog)
{
    Show(dialog);
    if (auto* grid = dialog.findChild<SlotGridCtrl*>(QStringLiteral("slotGrid"))) {
        QTest::mousePress(grid, Qt::LeftButton, {}, grid->QuarterCenter(7 * 60));
        QTest::mouseMove(grid, grid->QuarterCenter(12 * 60));
        QTest::mouseMove(grid, grid->QuarterCenter(15 * 60 + 15));
        QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->QuarterCenter(15 * 60 + 15));
    } else {
        Fail("the slot editor has no grid");
    }
    Save(dialog, "time-slot.png");
    dialog.reject();
    return QDialog::Rejected;
}

int ShootWeekEditor(QDialog& dialog)
{
    Show(dialog);
    Save(dialog, "time-table-week.png");
    dialog.reject();
    return QDialog::Rejected;
}

// The calendar editor on the demo's first painted year with a day program chosen; then the
// fast selection.
int ShootCalendarEditor(QDialog& dialog)
{
    dialog.resize(1100, 640);
    Show(dialog);
    if (auto* programs = dialog.findChild<QTreeView*>(QStringLiteral("dayProgramsList")))
        SelectRow(programs, QStringLiteral("Holiday"));
    Save(dialog, "time-table-calendar.png");
    ClickButton(dialog, "fastSelectionButton");
    dialog.reject();
    return QDialog::Rejected;
}

int ShootFastSelection(QDialog& dialog)
{
    if (auto* fast = qobject_cast<CDlgFastSelection*>(&dialog))
        fast->SetMasks(0b000001000001, 0b1000000); // January and July, Sundays
    Show(dialog);
    Save(dialog, "fast-selection.png");
    dialog.reject();
    return QDialog::Rejected;
}

// The formula wizard on a condition, with the tree filtered on the pumps and a function
// selected.
int ShootFormulaWizard(QDialog& dialog)
{
    dialog.resize(940, 640);
    Show(dialog);
    if (auto* filter = dialog.findChild<QLineEdit*>(QStringLiteral("filterEdit")))
        QTest::keyClicks(filter, QStringLiteral("pump1"));
    if (auto* functions = dialog.findChild<QTreeView*>(QStringLiteral("functionsList")))
        SelectRow(functions, QStringLiteral("between(x, low, high)"));
    if (auto* expression = dialog.findChild<QPlainTextEdit*>(QStringLiteral("expressionEdit")))
        expression->setFocus();
    Save(dialog, "formula-wizard.png");
    dialog.reject();
    return QDialog::Rejected;
}

// The variable chooser with a filter typed and a variable current.
int ShootVariableChooser(QDialog& dialog)
{
    dialog.resize(720, 520);
    Show(dialog);
    if (auto* filter = dialog.findChild<QLineEdit*>(QStringLiteral("filterEdit")))
        QTest::keyClicks(filter, QStringLiteral("speed"));
    if (auto* tree = dialog.findChild<QTreeView*>(QStringLiteral("devicesTree"))) {
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Down);
    }
    Save(dialog, "variable-chooser.png");
    dialog.reject();
    return QDialog::Rejected;
}

// The time-tables document of the project copy, as the host reads it.
bool LoadTimeTables(QString const& folder, XmlDocument& document)
{
    return LoadShotDocument(folder, "TimeTables.zocfg", document);
}

} // namespace

int main(int argc, char** argv)
{
    ZoApplyLanguage(ZoTakeLanguageOption(argc, argv));
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: zoevents-screenshots [--lang en|de] OUTPUT_FOLDER PROJECT_FOLDER [EVENT NAME]\n");
        return 2;
    }
    QApplication app(argc, argv);
    ZoInstallQtTranslations();
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

    XmlDocument timeTables;
    if (LoadTimeTables(copy.path(), timeTables)) {
        ZoSetModalRunner([](QDialog& dialog) {
            if (qobject_cast<ZoDlgTimeTableSetup*>(&dialog))
                return ShootTimeTables(dialog);
            if (qobject_cast<ZoDlgTimeTableWizzard*>(&dialog))
                return ShootKindChooser(dialog);
            if (qobject_cast<ZoDlgTimeTableDaily*>(&dialog))
                return ShootDayEditor(dialog);
            if (qobject_cast<ZoDlgEventNewModifySlot*>(&dialog))
                return ShootSlotEditor(dialog);
            if (qobject_cast<ZoDlgTimeTableWeekly*>(&dialog))
                return ShootWeekEditor(dialog);
            if (qobject_cast<ZoDlgTimeTableYearly*>(&dialog))
                return ShootCalendarEditor(dialog);
            if (qobject_cast<CDlgFastSelection*>(&dialog))
                return ShootFastSelection(dialog);
            Fail(dialog.metaObject()->className());
            dialog.reject();
            return int(QDialog::Rejected);
        });
        ZoDlgTimeTableSetup setup(&window, &timeTables);
        setup.DoModal();
    } else {
        Fail("the project's time tables cannot be read");
    }

    ZoSetModalRunner([](QDialog& dialog) {
        if (qobject_cast<CDlgWizzard*>(&dialog))
            return ShootFormulaWizard(dialog);
        if (qobject_cast<ZoSelectDriver*>(&dialog))
            return ShootVariableChooser(dialog);
        Fail(dialog.metaObject()->className());
        dialog.reject();
        return int(QDialog::Rejected);
    });
    {
        // As the event editor opens it on a condition, with the caller's selection.
        std::wstring const condition = L"[PLC1.TANK_LEVEL] > 95 AND [PUMP1.RUNNING] = 1 AND [PUMP1.CURRENT] = 12";
        CDlgWizzard wizard(&window, std::bitset<34>(4), false, 13);
        wizard.SetExpression(condition, static_cast<int>(condition.find(L"[PUMP1.CURRENT]")),
                             static_cast<int>(condition.size()));
        wizard.m_bShowStatus = true;
        wizard.DoModal();
        std::wstring variable = L"PUMP2.SPEED_SP";
        ZoSelectDriver::SelectDriverAndVar(&window, variable, ZoTypeSet().set(), true);
    }
    ZoSetModalRunner({});

    int expected = 14;
    for (ShotScene const& scene : ShotScenes()) {
        int const before = g_saved;
        scene.run(window, copy.path());
        ZoSetModalRunner({});
        expected += scene.pictures;
        if (g_saved - before != scene.pictures)
            Fail(scene.name);
    }

    window.close();
    if (g_saved != expected)
        Fail("not every window could be taken");
    return g_failures == 0 ? 0 : 1;
}
