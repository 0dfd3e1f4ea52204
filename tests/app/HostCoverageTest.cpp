// Events > Time Table Coverage on the demo project: an event opened from an hour's list is
// edited and saved as from the Problems window, and the coverage counts it again.
#include "HostTestSupport.h"
#include "editor/ZoEDlgEventCfg.h"
#include "timeline/ZoDlgTimeTableCoverage.h"

#include <QAction>
#include <QCheckBox>
#include <QTest>
#include <QTreeView>

using namespace host_test;

namespace {

TEST(HostCoverage, AnEventOpenedFromAnHourIsEditedSavedAndCountedAgain)
{
    DemoWindow demo;
    int before = -1;
    int after = -1;
    ModalScript modal(ModalScript::As<ZoDlgTimeTableCoverage>([&](ZoDlgTimeTableCoverage& coverage) {
        coverage.SetWeek(QDate(2026, 3, 2));
        coverage.ChooseHour(10); // Monday 10:00
        auto* list = coverage.findChild<QTreeView*>("eventsList");
        before = list->model()->rowCount();
        EXPECT_EQ(list->model()->index(0, 0).data().toString(), "Tank high level");
        list->setCurrentIndex(list->model()->index(0, 0));
        QTest::keyClick(list, Qt::Key_Return);
        after = list->model()->rowCount();
        return int(QDialog::Rejected);
    }));
    modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        editor.findChild<QCheckBox*>("notifyCheck")->setChecked(false);
        return ModalScript::ClickOk(editor);
    }));
    demo.window.findChild<QAction*>("timeTableCoverageAction")->trigger();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoDlgTimeTableCoverage", "ZoEDlgEventCfg"}));
    EXPECT_GT(before, 1);
    EXPECT_EQ(after, before - 1);
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    EXPECT_EQ(EventNamed(saved, L"Tank high level")->Value(L"notify", L""), L"F");
}

} // namespace
