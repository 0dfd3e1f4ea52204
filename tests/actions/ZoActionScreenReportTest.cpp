#include "ActionEditorTestSupport.h"
#include "actions/ZoEDlgEventActionsScreenReportCfg.h"
#include "actions/ZoScreenReportNames.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace {

// A project folder with screens and reports (and files that are neither), set as the
// configuration folder for the test.
class ScreenReportChooser : public ActionEditorTest {
protected:
    ScreenReportChooser()
        : m_previousFolder(ZoVelmoraSetup::instance().CfgPath())
    {
        EXPECT_TRUE(m_folder.isValid());
        for (char const* name : {"Pumps.2.XSCN", "Overview.1.XSCN", "Boiler.Room.3.XSCN", "Tanks.4.xscn",
                                 "Loose.XSCN", "Notes.txt", "DailyOperations.1.xrpt", "Energy.2.xrpt"}) {
            QFile file(m_folder.filePath(QLatin1String(name)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        ZoVelmoraSetup::instance().SetCfgPath(m_folder.path().toStdWString());
    }
    ~ScreenReportChooser() override { ZoVelmoraSetup::instance().SetCfgPath(m_previousFolder); }

    ZoEDlgEventActionsScreenReportCfg& Open(wchar_t const* id, wchar_t const* tag, bool keep = false)
    {
        OpenEditor(m_dialog, id, tag, false, keep);
        m_tester = std::make_unique<QAbstractItemModelTester>(List()->model(),
                                                               QAbstractItemModelTester::FailureReportingMode::Warning);
        return *m_dialog;
    }
    QTreeView* List() const { return m_dialog->findChild<QTreeView*>("namesList"); }
    QPushButton* Ok() const { return m_dialog->findChild<QPushButton*>("okButton"); }
    // The rows, with "*" on the selected ones.
    QString Rows() const
    {
        QStringList rows;
        QAbstractItemModel const* model = List()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QModelIndex const index = model->index(row, 0);
            rows << index.data().toString() + (List()->selectionModel()->isSelected(index) ? "*" : "");
        }
        return rows.join(", ");
    }
    void Choose(int row)
    {
        List()->selectionModel()->select(List()->model()->index(row, 0), QItemSelectionModel::ClearAndSelect);
    }

    QTemporaryDir m_folder;
    ZoBasicString<wchar_t> m_previousFolder;
    std::unique_ptr<ZoEDlgEventActionsScreenReportCfg> m_dialog;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

} // namespace

TEST_F(ScreenReportChooser, ListsTheProjectsScreensOrReportsByName)
{
    Load("<screen><id>{A-1}</id></screen><report><id>{A-2}</id></report>");
    Open(L"{A-1}", L"screen");
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(63330));
    EXPECT_EQ(Rows(), "Boiler.Room, Overview, Pumps, Tanks");
    EXPECT_FALSE(Ok()->isEnabled()) << "nothing chosen yet";
    EXPECT_EQ(Focused(*m_dialog), "namesList");
    EXPECT_FALSE(m_dialog->findChild<QLabel*>("emptyHint")->isVisibleTo(m_dialog.get()));
    Open(L"{A-2}", L"report");
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(63331));
    EXPECT_EQ(Rows(), "DailyOperations, Energy");
}

TEST_F(ScreenReportChooser, NamesChosenByAnotherActionOfTheMomentAreLeftOut)
{
    // Pumps is shown by another screen action of this moment; Overview only in another
    // moment; Energy is a report, not a screen.
    Load("<screen><id>{A-1}</id><name>Tanks</name></screen>"
         "<screen><id>{A-2}</id><name>Pumps</name></screen>"
         "<report><id>{A-3}</id><name>Energy</name></report>",
         "<screen><id>{B-1}</id><name>Overview</name></screen>");
    Open(L"{A-1}", L"screen");
    EXPECT_EQ(Rows(), "Boiler.Room, Overview, Tanks*") << "the action's own choice stays, selected";
    EXPECT_TRUE(Ok()->isEnabled());
    Open(L"{A-3}", L"report");
    EXPECT_EQ(Rows(), "DailyOperations, Energy*");
}

TEST_F(ScreenReportChooser, OkWritesTheChosenNameAndAnUnchangedChoiceCancels)
{
    Load("<report><id>{A-1}</id><name>Energy</name></report>");
    Open(L"{A-1}", L"report");
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Rejected) << "same name, not kept";
    Open(L"{A-1}", L"report", true);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted) << "kept";
    Open(L"{A-1}", L"report");
    Choose(0);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Xml(Activate()), "<activate><report><id>{A-1}</id><name>DailyOperations</name></report></activate>");
}

TEST_F(ScreenReportChooser, OkNeedsExactlyOneRowUnlessKept)
{
    Load("<screen><id>{A-1}</id></screen>");
    Open(L"{A-1}", L"screen");
    EXPECT_FALSE(Ok()->isEnabled());
    m_dialog->setResult(-1);
    m_dialog->accept();
    EXPECT_EQ(m_dialog->result(), -1) << "OK does nothing without a choice";
    Choose(1);
    EXPECT_TRUE(Ok()->isEnabled());
    List()->selectionModel()->clearSelection();
    EXPECT_FALSE(Ok()->isEnabled());

    Open(L"{A-1}", L"screen", true);
    m_dialog->accept();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << "kept as it stands";
    EXPECT_EQ(Xml(Activate()), "<activate><screen><id>{A-1}</id></screen></activate>");
}

TEST_F(ScreenReportChooser, EnterAndDoubleClickChooseTheRow)
{
    Load("<screen><id>{A-1}</id></screen>");
    Open(L"{A-1}", L"screen");
    Choose(2);
    m_dialog->setResult(-1);
    QTest::keyClick(List(), Qt::Key_Return);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Action(L"{A-1}", L"screen")->Value(L"name", L""), L"Pumps");

    Open(L"{A-1}", L"screen");
    m_dialog->setResult(-1);
    QModelIndex const overview = List()->model()->index(1, 0);
    Choose(1);
    emit List()->doubleClicked(overview);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Action(L"{A-1}", L"screen")->Value(L"name", L""), L"Overview");
}

TEST_F(ScreenReportChooser, MissingOrEmptyFolderGivesAnEmptyListWithoutAMessage)
{
    Load("<screen><id>{A-1}</id><name>Pumps</name></screen>");
    for (std::wstring const folder : {m_folder.filePath("missing").toStdWString(), std::wstring()}) {
        ZoVelmoraSetup::instance().SetCfgPath(folder);
        Open(L"{A-1}", L"screen");
        EXPECT_EQ(Rows(), "");
        EXPECT_FALSE(Ok()->isEnabled());
        EXPECT_TRUE(m_dialog->findChild<QLabel*>("emptyHint")->isVisibleTo(m_dialog.get()));
    }
    EXPECT_EQ(m_answers.Count(), 0);
}

TEST_F(ScreenReportChooser, TheDemoProjectsScreensAndReports)
{
    std::wstring const demo = QString::fromUtf8(ZO_SOURCE_DIR "/examples/demo").toStdWString();
    std::vector<std::wstring> const screens = ZoListProjectNames(demo, ZoProjectFileKind::Screen);
    EXPECT_EQ(screens, (std::vector<std::wstring>{L"Overview", L"Pumps"}));
    std::vector<std::wstring> const reports = ZoListProjectNames(demo, ZoProjectFileKind::Report);
    EXPECT_EQ(reports, std::vector<std::wstring>{L"DailyOperations"});
}

TEST(ScreenReportNames, TheFirstActionHoldingANameDecides)
{
    // The lookup finds the first screen action of the moment with that name; when that is
    // the edited action itself, the name stays free even if a later sibling repeats it.
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse("<activate><screen><id>{1}</id><name>Pumps</name></screen>"
                          "<screen><id>{2}</id><name>Pumps</name></screen></activate>"));
    XmlDocument::XmlNode* moment = doc.Root();
    XmlDocument::XmlNode const* first = moment->Node(L"screen?id={1}?");
    XmlDocument::XmlNode const* second = moment->Node(L"screen?id={2}?");
    std::vector<std::wstring> const names{L"Overview", L"Pumps"};
    EXPECT_EQ(ZoFreeNames(names, moment, *first), names);
    EXPECT_EQ(ZoFreeNames(names, moment, *second), std::vector<std::wstring>{L"Overview"});
    EXPECT_EQ(ZoFreeNames(names, nullptr, *second), names);
}
