// The time-tables setup dialog driven offscreen: its rows and sorting, add through the kind
// chooser, modify by name, delete leaving dangling ids, copy and paste over all three kinds.
#include "timetables/ZoDlgTimeTableSetup.h"
#include "timetables/TimeTablesClipboard.h"
#include "timetables/ZoDlgTimeTableDaily.h"
#include "timetables/ZoDlgTimeTableWeekly.h"
#include "timetables/ZoDlgTimeTableWizzard.h"
#include "timetables/ZoDlgTimeTableYearly.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoClipboard.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include "timetables/TimeTableTestDocs.h"
#include <QAbstractItemModelTester>
#include <QAction>
#include <QCommandLinkButton>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <set>

using namespace timetables_test;

namespace {

struct SetupDialog {
    explicit SetupDialog(std::string const& xml)
    {
        Load(doc, xml);
        dialog = std::make_unique<ZoDlgTimeTableSetup>(nullptr, &doc);
        dialog->EnsureInitialized();
        dialog->show();
        list = dialog->findChild<QTreeView*>("timeTablesList");
        tester = std::make_unique<QAbstractItemModelTester>(list->model(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    QAbstractItemModel* Model() const { return list->model(); }
    // "name:kind" of every row, joined by ",", the kind as d, w or c.
    std::string Rows() const
    {
        std::string out;
        for (int row = 0; row < Model()->rowCount(); ++row) {
            QString const kind = Model()->index(row, 1).data().toString();
            char const letter = kind == ZoText(32696) ? 'd' : kind == ZoText(32697) ? 'w' : kind == ZoText(32771) ? 'c' : '?';
            out += (out.empty() ? "" : ",") + Model()->index(row, 0).data().toString().toStdString() + ":" + letter;
        }
        return out;
    }
    void Select(std::initializer_list<int> rows) const
    {
        list->selectionModel()->clearSelection();
        for (int row : rows)
            list->selectionModel()->select(Model()->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    std::string Buttons() const
    {
        return std::string(dialog->findChild<QPushButton*>("modifyButton")->isEnabled() ? "M" : "-")
            + (dialog->findChild<QPushButton*>("deleteButton")->isEnabled() ? "D" : "-");
    }
    void Click(char const* button) const { dialog->findChild<QPushButton*>(button)->click(); }
    int Close(char const* button)
    {
        dialog->setResult(-1);
        Click(button);
        return dialog->result();
    }
    QStringList Menu() const
    {
        QStringList entries;
        if (std::unique_ptr<QMenu> const menu = dialog->CreateContextMenu())
            for (QAction const* action : menu->actions())
                entries << action->objectName();
        return entries;
    }
    XmlNode* Container(wchar_t const* tag) { return doc.Root()->Child(tag); }

    XmlDocument doc;
    std::unique_ptr<ZoDlgTimeTableSetup> dialog;
    QTreeView* list = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

void SetClipboard(std::string const& text)
{
    PutToClipboard(text.c_str(), text.size() + 1, 1);
}

ModalScript::Step ChooseKind(char const* link)
{
    return ModalScript::As<ZoDlgTimeTableWizzard>([link](ZoDlgTimeTableWizzard& chooser) {
        chooser.findChild<QCommandLinkButton*>(link)->click();
        return chooser.result();
    });
}

template <class Editor>
ModalScript::Step NameAndOk(QString name, QString* shown = nullptr)
{
    return ModalScript::As<Editor>([=](Editor& editor) {
        auto* edit = editor.template findChild<QLineEdit*>("nameEdit");
        if (shown)
            *shown = edit->text();
        edit->setText(name);
        return ModalScript::ClickOk(editor);
    });
}

std::string const kMixed = TimeTables(Join({Day("night", "000080"), Day("Alpha", "00FF00")}),
                                      Week("Office"), Calendar("beta"));

} // namespace

TEST(TimeTableSetup, ListsAllKindsAndSortsByTheClickedColumn)
{
    SetupDialog setup(TimeTables(Join({Day("night", "000080"), "<other><name>skip</name></other>", Day("Alpha", "00FF00")}),
                                 Week("Office"), Calendar("beta")));
    EXPECT_EQ(setup.Rows(), "Alpha:d,beta:c,night:d,Office:w"); // names without regard to case
    EXPECT_EQ(setup.dialog->windowTitle(), ZoText(32772));
    EXPECT_EQ(setup.Buttons(), "--");

    QHeaderView* header = setup.list->header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(header->sectionViewportPosition(0) + 5, 5));
    EXPECT_EQ(setup.Rows(), "Office:w,night:d,beta:c,Alpha:d"); // the same column again: descending
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(header->sectionViewportPosition(1) + 5, 5));
    // The kind words ascending (Calendar, Day program, Week program), ties by name ascending.
    EXPECT_EQ(setup.Rows(), "beta:c,Alpha:d,night:d,Office:w");
    setup.dialog->findChild<QHeaderView*>()->sectionClicked(1);
    EXPECT_EQ(setup.Rows(), "Office:w,night:d,Alpha:d,beta:c"); // descending: ties by name descending too

    setup.Select({0});
    EXPECT_EQ(setup.Buttons(), "MD");
    setup.Select({0, 1});
    EXPECT_EQ(setup.Buttons(), "-D");
}

TEST(TimeTableSetup, AddRunsTheKindChooserThenTheEditorOnACopy)
{
    SetupDialog setup(kMixed);
    std::string const before = Xml(setup.doc.Root());

    // Cancel in the kind chooser, then Cancel in the editor: nothing changes.
    ModalScript modal(ModalScript::Reject());
    modal.Then(ChooseKind("weekLink")).Then(ModalScript::Reject());
    setup.Click("addButton");
    QTest::keyClick(setup.list, Qt::Key_Insert);
    EXPECT_EQ(Xml(setup.doc.Root()), before);
    EXPECT_FALSE(setup.dialog->IsModified());

    modal.Then(ChooseKind("dayLink")).Then(NameAndOk<ZoDlgTimeTableDaily>("Evening"));
    modal.Then(ChooseKind("calendarLink")).Then(NameAndOk<ZoDlgTimeTableYearly>("Holidays"));
    setup.Click("addButton");
    setup.Click("addButton");
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoDlgTimeTableWizzard", "ZoDlgTimeTableWizzard", "ZoDlgTimeTableWeekly",
                                            "ZoDlgTimeTableWizzard", "ZoDlgTimeTableDaily", "ZoDlgTimeTableWizzard",
                                            "ZoDlgTimeTableYearly"}));
    EXPECT_EQ(setup.Rows(), "Alpha:d,beta:c,Evening:d,Holidays:c,night:d,Office:w");
    XmlNode const* evening = setup.doc.Node(L"days/day?name=Evening?");
    ASSERT_TRUE(evening);
    EXPECT_EQ(evening->Value(L"color", L""), L"FFFFFF"); // a new day program is white
    EXPECT_EQ(evening->Value(L"id", L"").size(), 38u);
    EXPECT_EQ(setup.Close("okButton"), QDialog::Accepted);
}

TEST(TimeTableSetup, AddCreatesAMissingContainer)
{
    SetupDialog setup("<timeTables><days>" + Day("Alpha", "00FF00") + "</days></timeTables>");
    ModalScript modal(ChooseKind("weekLink"));
    modal.Then(NameAndOk<ZoDlgTimeTableWeekly>("Office"));
    setup.Click("addButton");
    EXPECT_EQ(Names(setup.Container(L"weeks")), "Office");
    EXPECT_EQ(setup.Rows(), "Alpha:d,Office:w");
}

TEST(TimeTableSetup, ModifyFindsTheTableByNameInACopyAndEnterOpensIt)
{
    SetupDialog setup(kMixed);
    setup.Select({3}); // Office
    QString shown;
    ModalScript modal(NameAndOk<ZoDlgTimeTableWeekly>("Plant", &shown));
    QTest::keyClick(setup.list, Qt::Key_Return);
    EXPECT_EQ(shown, "Office");
    EXPECT_EQ(Names(setup.Container(L"weeks")), "Plant");
    EXPECT_EQ(setup.Rows(), "Alpha:d,beta:c,night:d,Plant:w");
    EXPECT_EQ(setup.list->selectionModel()->selectedRows().value(0).row(), 3);

    // A double click opens the row; a cancelled editor leaves the document as it was.
    modal.Then(ModalScript::Reject());
    std::string const before = Xml(setup.doc.Root());
    QRect const rect = setup.list->visualRect(setup.Model()->index(1, 0));
    QTest::mouseClick(setup.list->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(setup.list->viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(modal.Classes().last(), "ZoDlgTimeTableYearly");
    EXPECT_EQ(Xml(setup.doc.Root()), before);
}

TEST(TimeTableSetup, DeleteAsksAndLeavesDanglingReferences)
{
    SetupDialog setup(TimeTables(Join({Day("Work", "00FF00"), Day("Rest", "0000FF")}),
                                 Week("Office", "<day1>D-Work</day1><day2>D-Rest</day2>")));
    std::string const before = Xml(setup.doc.Root());
    setup.Select({2}); // Office, Rest, Work
    ScriptedAnswerer answers{ZoAnswer::No};
    QTest::keyClick(setup.list, Qt::Key_Delete);
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32774}));
    EXPECT_EQ(Xml(setup.doc.Root()), before);

    setup.Click("deleteButton"); // Yes
    EXPECT_EQ(Names(setup.Container(L"days")), "Rest");
    // The week keeps the deleted day program's id; it still lists and opens.
    EXPECT_EQ(setup.doc.Node(L"weeks/week")->Value(L"day1", L""), L"D-Work");
    EXPECT_EQ(setup.Rows(), "Office:w,Rest:d");
    // Cancel undoes nothing, and ends with Cancel all the same.
    EXPECT_EQ(setup.Close("cancelButton"), QDialog::Rejected);
    EXPECT_EQ(Names(setup.Container(L"days")), "Rest");
    EXPECT_TRUE(setup.dialog->IsModified());
}

TEST(TimeTableSetup, CopyAndPasteNameTablesOverAllThreeKinds)
{
    SetupDialog setup(TimeTables(Join({Day("Night", "000080"), Day("Night_1", "00FF00")}), Week("Office"),
                                 Calendar("Holidays")));
    setup.Select({0, 2, 3}); // Holidays, Night_1, Office
    QTest::keyClick(setup.list, Qt::Key_C, Qt::ControlModifier);
    std::string copied;
    GetFromClipboard(copied, 1);
    EXPECT_EQ(copied.substr(0, 58), "<eventsTimeTableClipboard><calendar><id>C-Holidays</id><na");

    QTest::keyClick(setup.list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(setup.Rows(), "Holidays:c,Holidays_1:c,Night:d,Night_1:d,Night_1_1:d,Office:w,Office_1:w");
    QTest::keyClick(setup.list, Qt::Key_V, Qt::ControlModifier); // again: the next free suffix
    EXPECT_EQ(Names(setup.Container(L"calendars")), "Holidays,Holidays_1,Holidays_2");
    // Every pasted copy has an id of its own.
    std::set<std::wstring> ids;
    for (wchar_t const* container : {L"days", L"weeks", L"calendars"})
        for (XmlNode const* e = setup.Container(container)->FirstChild(); e; e = e->NextSibling())
            EXPECT_TRUE(ids.insert(e->Value(L"id", L"")).second);
    EXPECT_EQ(setup.Close("okButton"), QDialog::Accepted);
}

TEST(TimeTableSetup, PasteComparesWithTheListBeforeThePasteOnly)
{
    SetupDialog setup(TimeTables(Join({Day("Night", "000080"), Day("Night_1", "00FF00")})));
    // NIGHT clashes without regard to case; two elements both named Night get the same new
    // name; a nameless one and other tags are dropped; day references are kept as they are.
    SetClipboard("<eventsTimeTableClipboard>" + Day("NIGHT", "111111") + Day("Night", "222222") + "<day><id>x</id></day>"
                 + "<slot/>" + Week("Fresh", "<day1>D-Night</day1>") + Week("Fresh") + Calendar("a?b")
                 + "</eventsTimeTableClipboard>");
    setup.dialog->PasteFromClipboard();
    EXPECT_EQ(Names(setup.Container(L"days")), "Night,Night_1,NIGHT_2,Night_2");
    EXPECT_EQ(Names(setup.Container(L"weeks")), "Fresh,Fresh");
    EXPECT_EQ(setup.doc.Node(L"weeks/week")->Value(L"day1", L""), L"D-Night");
    EXPECT_EQ(Names(setup.Container(L"calendars")), ""); // created, but "a?b" is no valid name
    EXPECT_NE(setup.doc.Node(L"weeks/week")->Value(L"id", L""), L"W-Fresh");
    EXPECT_TRUE(setup.dialog->IsModified());
}

TEST(TimeTableSetup, ForeignClipboardsPasteNothingAndOfferNoPaste)
{
    SetupDialog setup(kMixed);
    std::string const before = Xml(setup.doc.Root());
    for (std::string const& text : {std::string(), std::string("not xml <"), std::string("<eventsClipboard/>"),
                                   std::string("<eventsTimeTableClipboard><day>")}) {
        SetClipboard(text);
        setup.dialog->PasteFromClipboard();
        EXPECT_EQ(setup.Menu(), QStringList{});
    }
    EXPECT_EQ(Xml(setup.doc.Root()), before);
    EXPECT_FALSE(setup.dialog->IsModified());
    EXPECT_EQ(setup.Close("okButton"), QDialog::Rejected);

    setup.Select({0});
    EXPECT_EQ(setup.Menu(), QStringList{"copyAction"});
    SetClipboard("<eventsTimeTableClipboard/>");
    EXPECT_EQ(setup.Menu(), (QStringList{"copyAction", "pasteAction"}));
    setup.Select({});
    EXPECT_EQ(setup.Menu(), QStringList{"pasteAction"});
}
