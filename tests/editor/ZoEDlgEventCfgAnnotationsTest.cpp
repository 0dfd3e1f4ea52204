// The event editor's annotation area: the annotation wizard over the three texts, the
// argument list with its dialog, and the group memberships.
#include "AnnotationEditorFixture.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include "editor/ZoAnnotationData.h"
#include "editor/ZoAnnotationPlaceholders.h"
#include "editor/ZoEDlgAnnotationSelectWizzard.h"
#include "editor/ZoEDlgAnnotationWizzard.h"
#include "editor/ZoEDlgEventArgumentCfg.h"
#include "groups/ZoDlgSelect.h"
#include "platform/tools/ZoTexts.h"

#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QShortcut>
#include <QTest>

namespace {

char const* const kTwoArguments =
    "<arguments><argument><id>{A-1}</id><value>[BOILER.T1]</value><format>.1</format></argument>"
    "<argument><id>{A-2}</id><value>[BOILER.SP] * 2</value><format>.3</format></argument></arguments>";
// The first reference names a group that was deleted since.
char const* const kGroupRefs =
    "<eventsGroups><eventsGroup>{G-GONE}</eventsGroup><eventsGroup>{G-3}</eventsGroup>"
    "<eventsGroup>{G-1}</eventsGroup></eventsGroups>";

// The annotation wizard's step: checks choice `choice` and clicks OK.
ModalScript::Step Choose(int choice)
{
    return ModalScript::As<ZoEDlgAnnotationWizzard>([choice](ZoEDlgAnnotationWizzard& wizard) {
        wizard.findChild<QRadioButton*>(QStringLiteral("choice%1").arg(choice))->setChecked(true);
        return ModalScript::ClickOk(wizard);
    });
}

// The select wizard's step: records its rows, selects `row` (none when -1) and clicks OK.
ModalScript::Step Pick(int row, QString* rows = nullptr)
{
    return ModalScript::As<ZoEDlgAnnotationSelectWizzard>([row, rows](ZoEDlgAnnotationSelectWizzard& select) {
        auto* list = select.findChild<QTreeView*>(QStringLiteral("selectList"));
        if (rows)
            *rows = ListRows(list);
        list->selectionModel()->clearSelection();
        if (row >= 0)
            list->setCurrentIndex(list->model()->index(row, 0));
        return ModalScript::ClickOk(select);
    });
}

} // namespace

TEST_F(AnnotationEditorTest, WizardReplacesTheSelectionOrInsertsAtTheCaret)
{
    OpenEvent();
    std::wstring text = L"Tank XX high";
    {
        ModalScript modal(Choose(0));
        EXPECT_EQ(m_dialog->AnnotationWizzard(text, 5, 7), 2);
        EXPECT_EQ(text, L"Tank %n high");
    }
    {
        ModalScript modal(Choose(9));
        EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 0), 2);
        EXPECT_EQ(text, L"%%Tank %n high");
    }
    // Positions past the text: all of it comes before the placeholder, nothing after.
    {
        ModalScript modal(Choose(6));
        EXPECT_EQ(m_dialog->AnnotationWizzard(text, 99, 120), 2);
        EXPECT_EQ(text, L"%%Tank %n high%t");
    }

    // The field's button: the selection is replaced and the caret goes after the placeholder.
    QLineEdit* field = Edit("deaAnnotationEdit");
    field->setText(QStringLiteral("Ended at NOW, ok"));
    field->setSelection(9, 3);
    ModalScript modal(Choose(4));
    Click("deaAnnotationWizardButton");
    EXPECT_EQ(field->text(), QStringLiteral("Ended at %e, ok"));
    EXPECT_EQ(field->cursorPosition(), 11);
    EXPECT_FALSE(field->hasSelectedText());
    // Ctrl+Space in the field opens the same wizard, at the caret.
    modal.Then(Choose(3));
    auto* shortcut = field->findChild<QShortcut*>();
    ASSERT_NE(shortcut, nullptr);
    EXPECT_EQ(shortcut->key(), QKeySequence(Qt::CTRL | Qt::Key_Space));
    emit shortcut->activated();
    EXPECT_EQ(field->text(), QStringLiteral("Ended at %e%b, ok"));
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgAnnotationWizzard", "ZoEDlgAnnotationWizzard"}));
}

TEST_F(AnnotationEditorTest, ArgumentAndGroupPlaceholdersCountAsTheListsNumber)
{
    OpenEvent(std::string("<arguments><argument><id>{A-1}</id><value>[BOILER.T1]</value></argument></arguments>")
              + "<eventsGroups><eventsGroup>{G-GONE}</eventsGroup><eventsGroup>{G-2}</eventsGroup></eventsGroups>");
    std::wstring text = L"T=";
    QString rows;
    ModalScript modal(Choose(8));
    modal.Then(Pick(0, &rows));
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 2, 2), 3);
    EXPECT_EQ(text, L"T=%a1");
    EXPECT_EQ(rows, QStringLiteral("1 [BOILER.T1]"));

    // A reference to a group that no longer exists is not counted: the one left is "%g1".
    modal.Then(Choose(7)).Then(Pick(0, &rows));
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 0), 3);
    EXPECT_EQ(text, L"%g1T=%a1");
    EXPECT_EQ(rows, QStringLiteral("1 Alarms"));
    EXPECT_EQ(Rows("groupsList"), rows);
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgAnnotationWizzard", "ZoEDlgAnnotationSelectWizzard",
                                            "ZoEDlgAnnotationWizzard", "ZoEDlgAnnotationSelectWizzard"}));
}

TEST_F(AnnotationEditorTest, CancelAtAnyStepLeavesTheTextAsItWas)
{
    OpenEvent(kTwoArguments);
    std::wstring text = L"Level high";
    ModalScript modal(ModalScript::Reject());
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 5), -1);
    modal.Then(Choose(8)).Then(ModalScript::Reject());
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 5), -1);
    // OK in the select wizard without a row acts as Cancel.
    modal.Then(Choose(8)).Then(Pick(-1));
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 5), -1);
    modal.Then(Choose(7)).Then(Pick(-1));
    EXPECT_EQ(m_dialog->AnnotationWizzard(text, 0, 5), -1);
    EXPECT_EQ(text, L"Level high");
    EXPECT_EQ(modal.Count(), 7);

    QLineEdit* field = Edit("annotationEdit");
    QString const before = field->text();
    modal.Then(ModalScript::Reject());
    Click("annotationWizardButton");
    EXPECT_EQ(field->text(), before);
}

TEST_F(AnnotationEditorTest, StopConditionChoiceOnlyForEventsThatHaveOne)
{
    OpenEvent();
    for (bool stop : {true, false}) {
        Check("stopConditionCheck")->setChecked(stop);
        bool visible = !stop;
        bool enabled = !stop;
        int choices = 0;
        ModalScript modal(ModalScript::As<ZoEDlgAnnotationWizzard>([&](ZoEDlgAnnotationWizzard& wizard) {
            auto* radio = wizard.findChild<QRadioButton*>(QStringLiteral("choice2"));
            visible = !radio->isHidden();
            enabled = radio->isEnabled();
            choices = int(wizard.findChildren<QRadioButton*>().size());
            EXPECT_TRUE(wizard.findChild<QRadioButton*>(QStringLiteral("choice0"))->isChecked());
            EXPECT_EQ(wizard.windowTitle(), ZoText(34169));
            return int(QDialog::Rejected);
        }));
        std::wstring text;
        m_dialog->AnnotationWizzard(text, 0, 0);
        EXPECT_EQ(visible, stop);
        EXPECT_EQ(enabled, stop);
        EXPECT_EQ(choices, 10);
    }
}

TEST_F(AnnotationEditorTest, AddingAnArgumentKeepsItOnlyAfterOk)
{
    OpenEvent();
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::None);
    EXPECT_FALSE(Get<QPushButton>("modifyArgumentButton")->isEnabled());
    EXPECT_FALSE(Get<QPushButton>("deleteArgumentButton")->isEnabled());

    ModalScript modal(ModalScript::As<ZoEDlgEventArgumentCfg>([](ZoEDlgEventArgumentCfg& dialog) {
        EXPECT_EQ(dialog.windowTitle(), ZoText(32809));
        dialog.findChild<QLineEdit*>(QStringLiteral("valueEdit"))->setText(QStringLiteral("[BOILER.T1]"));
        return int(QDialog::Rejected);
    }));
    Click("addArgumentButton");
    EXPECT_EQ(ZoArgumentsOf(*m_event).size(), 0u);
    EXPECT_EQ(Rows("argumentsList"), QString());
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::None);

    modal.Then(ModalScript::As<ZoEDlgEventArgumentCfg>([](ZoEDlgEventArgumentCfg& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("valueEdit"))->setText(QStringLiteral("[BOILER.T1] / 10"));
        return ModalScript::ClickOk(dialog);
    }));
    Click("addArgumentButton");
    ASSERT_EQ(ZoArgumentsOf(*m_event).size(), 1u);
    XmlNode const* argument = ZoArgumentsOf(*m_event).front();
    EXPECT_EQ(argument->Value(L"id", L"").size(), 38u); // a fresh GUID
    EXPECT_EQ(argument->Value(L"format", L""), L".3");
    EXPECT_EQ(argument->Value(L"thousandSeparator", L""), L"F");
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("1 [BOILER.T1] / 10"));
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag);
    // The new row is selected, ready to be modified.
    EXPECT_TRUE(Get<QPushButton>("modifyArgumentButton")->isEnabled());
}

TEST_F(AnnotationEditorTest, ArgumentsAreModifiedByButtonEnterOrDoubleClickAndDeletedWithoutRenumbering)
{
    OpenEvent(kTwoArguments);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("1 [BOILER.T1]|2 [BOILER.SP] * 2"));
    auto const setValue = [](QString value) {
        return ModalScript::As<ZoEDlgEventArgumentCfg>([value](ZoEDlgEventArgumentCfg& dialog) {
            EXPECT_EQ(dialog.windowTitle(), ZoText(32810));
            dialog.findChild<QLineEdit*>(QStringLiteral("valueEdit"))->setText(value);
            return ModalScript::ClickOk(dialog);
        });
    };
    ModalScript modal(setValue(QStringLiteral("[BOILER.T1] + 1")));
    Select("argumentsList", {0});
    Click("modifyArgumentButton");
    modal.Then(setValue(QStringLiteral("2")));
    Select("argumentsList", {1});
    QTest::keyClick(List("argumentsList"), Qt::Key_Return);
    modal.Then(setValue(QStringLiteral("3")));
    QTreeView* list = List("argumentsList");
    m_dialog->show();
    Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
    QPoint const cell = list->visualRect(list->model()->index(1, 1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cell);
    EXPECT_EQ(modal.Count(), 3);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("1 [BOILER.T1] + 1|2 3"));
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag);

    // Deleting the first argument renumbers the list but never the texts: "%a1" in the
    // annotation now shows what was argument 2. The user fixes the text if needed.
    Select("argumentsList", {0});
    QTest::keyClick(List("argumentsList"), Qt::Key_Delete);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("1 3"));
    EXPECT_EQ(Edit("annotationEdit")->text(), QStringLiteral("Boiler %a1"));
    EXPECT_EQ(m_event->Value(L"annotation", L""), L"Boiler %a1");
    EXPECT_EQ(ZoArgumentValues(*m_event), (std::vector<std::wstring>{L"3"}));
}

TEST_F(AnnotationEditorTest, ArgumentListSortsByTheClickedColumnAndToggles)
{
    OpenEvent("<arguments><argument><value>b</value></argument><argument><value>C</value></argument>"
              "<argument><value>a</value></argument></arguments>");
    QHeaderView* header = List("argumentsList")->header();
    Select("argumentsList", {1});
    header->sectionClicked(1);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("3 a|1 b|2 C"));
    // The selection stays on its argument.
    EXPECT_EQ(List("argumentsList")->selectionModel()->selectedRows().value(0).row(), 2);
    header->sectionClicked(1);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("2 C|1 b|3 a"));
    header->sectionClicked(0);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("1 b|2 C|3 a"));
    header->sectionClicked(0);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("3 a|2 C|1 b"));
    // The order holds when the list is filled again.
    ScriptedAnswerer keep{ZoAnswer::Yes}; // "b" is no formula; kept all the same
    ModalScript modal(ModalScript::As<ZoEDlgEventArgumentCfg>(&ModalScript::ClickOk));
    Select("argumentsList", {0});
    Click("modifyArgumentButton");
    EXPECT_EQ(modal.Count(), 1);
    EXPECT_EQ(Rows("argumentsList"), QStringLiteral("3 a|2 C|1 b"));
    EXPECT_EQ(header->sortIndicatorSection(), 0);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(AnnotationEditorTest, GroupListSkipsReferencesToDeletedGroupsWithoutUsingANumber)
{
    OpenEvent(kGroupRefs);
    EXPECT_EQ(Rows("groupsList"), QStringLiteral("1 Pumps|2 Boilers"));
    EXPECT_FALSE(Get<QPushButton>("deleteGroupButton")->isEnabled());
    List("groupsList")->header()->sectionClicked(1);
    EXPECT_EQ(Rows("groupsList"), QStringLiteral("2 Boilers|1 Pumps"));
    List("groupsList")->header()->sectionClicked(1);
    EXPECT_EQ(Rows("groupsList"), QStringLiteral("1 Pumps|2 Boilers"));
    // The dangling reference stays in the event.
    EXPECT_EQ(m_event->Node(L"eventsGroups")->Size(), 3);
}

TEST_F(AnnotationEditorTest, AddingGroupsOffersOnlyThoseNotShown)
{
    OpenEvent(kGroupRefs);
    std::vector<std::wstring> offered;
    ModalScript modal(ModalScript::As<ZoDlgSelect>([&offered](ZoDlgSelect& select) {
        auto* list = select.findChild<QTreeView*>(QStringLiteral("selectList"));
        for (int row = 0; row < list->model()->rowCount(); ++row)
            offered.push_back(list->model()->index(row, 0).data().toString().toStdWString());
        list->selectAll();
        return ModalScript::ClickOk(select);
    }));
    Click("addGroupButton");
    EXPECT_EQ(offered, (std::vector<std::wstring>{L"Alarms"}));
    EXPECT_EQ(Rows("groupsList"), QStringLiteral("1 Pumps|2 Boilers|3 Alarms"));
    EXPECT_EQ(m_event->Node(L"eventsGroups")->Size(), 4);
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag);

    // Every group is a member now: the offer is empty.
    offered.clear();
    modal.Then(ModalScript::As<ZoDlgSelect>([&offered](ZoDlgSelect& select) {
        offered.push_back(std::to_wstring(select.findChild<QTreeView*>(QStringLiteral("selectList"))->model()->rowCount()));
        return int(QDialog::Rejected);
    }));
    Click("addGroupButton");
    EXPECT_EQ(offered, (std::vector<std::wstring>{L"0"}));
    EXPECT_EQ(m_event->Node(L"eventsGroups")->Size(), 4);
}

TEST_F(AnnotationEditorTest, AnEventWithoutGroupsGainsItsGroupsElementOnTheFirstAddition)
{
    OpenEvent();
    EXPECT_EQ(m_event->Node(L"eventsGroups"), nullptr);
    std::size_t offered = 0;
    ModalScript modal(ModalScript::As<ZoDlgSelect>([&offered](ZoDlgSelect& select) {
        auto* list = select.findChild<QTreeView*>(QStringLiteral("selectList"));
        offered = std::size_t(list->model()->rowCount());
        list->selectionModel()->select(list->model()->index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        return ModalScript::ClickOk(select);
    }));
    Click("addGroupButton");
    EXPECT_EQ(offered, 3u);
    EXPECT_EQ(Rows("groupsList"), QStringLiteral("1 Boilers|2 Pumps"));
    EXPECT_EQ(Xml(m_event->Node(L"eventsGroups")),
              "<eventsGroups><eventsGroup>{G-1}</eventsGroup><eventsGroup>{G-3}</eventsGroup></eventsGroups>");
}

TEST_F(AnnotationEditorTest, DeletingSeveralGroupsAsksOnceAndKeepsTheTexts)
{
    OpenEvent(kGroupRefs);
    Edit("ackAnnotationEdit")->setText(QStringLiteral("Seen in %g2"));
    Select("groupsList", {0, 1});
    EXPECT_TRUE(Get<QPushButton>("deleteGroupButton")->isEnabled());
    {
        ScriptedAnswerer answers{ZoAnswer::No};
        Click("deleteGroupButton");
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32788});
        EXPECT_EQ(Rows("groupsList"), QStringLiteral("1 Pumps|2 Boilers"));
        EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::None);
    }
    ScriptedAnswerer answers{ZoAnswer::Yes};
    Select("groupsList", {0, 1});
    QTest::keyClick(List("groupsList"), Qt::Key_Delete);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32788});
    EXPECT_EQ(Rows("groupsList"), QString());
    // Only the references shown went; the one to a deleted group stays until saved without it.
    EXPECT_EQ(Xml(m_event->Node(L"eventsGroups")), "<eventsGroups><eventsGroup>{G-GONE}</eventsGroup></eventsGroups>");
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag);
    // Removing a membership does not renumber "%g" in the texts.
    EXPECT_EQ(Edit("ackAnnotationEdit")->text(), QStringLiteral("Seen in %g2"));
    EXPECT_FALSE(Get<QPushButton>("deleteGroupButton")->isEnabled());
}

TEST_F(AnnotationEditorTest, WizardButtonCountsPositionsAsTheFieldDoesAndNeverCutsTheText)
{
    OpenEvent();
    // A character outside the basic plane takes two positions in the field and one in the
    // wide text: the placeholder still lands where the user put the caret.
    QLineEdit* field = Edit("annotationEdit");
    field->setText(QString::fromUtf8("\xF0\x9F\x94\xA5 XX!"));
    field->setSelection(3, 2);
    ModalScript modal(Choose(1));
    Click("annotationWizardButton");
    EXPECT_EQ(field->text(), QString::fromUtf8("\xF0\x9F\x94\xA5 %c!"));
    EXPECT_EQ(field->cursorPosition(), 5);

    // A placeholder that would push the text past the field's 256 characters is refused
    // rather than cutting the end of the user's text.
    QString const full(255, QLatin1Char('x'));
    field->setText(full);
    field->setCursorPosition(0);
    modal.Then(Choose(0));
    Click("annotationWizardButton");
    EXPECT_EQ(field->text(), full);
    EXPECT_EQ(modal.Count(), 2);
}

TEST_F(AnnotationEditorTest, SelectWizardIsUsedFromTheKeyboard)
{
    std::vector<std::wstring> const names{L"Boilers", L"Alarms", L"Pumps"};
    ZoEDlgAnnotationSelectWizzard select(nullptr, names, ZoEDlgAnnotationSelectWizzard::kGroups);
    select.EnsureInitialized();
    auto* list = select.findChild<QTreeView*>(QStringLiteral("selectList"));
    QAbstractItemModelTester tester(list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(select.windowTitle(), ZoText(32785));
    EXPECT_EQ(ListRows(list), QStringLiteral("1 Boilers|2 Alarms|3 Pumps"));
    EXPECT_EQ(select.focusWidget(), list);
    // The first row is ready; Down and Enter choose the second.
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(select.result(), QDialog::Accepted);
    EXPECT_EQ(select.Position(), 2);

    ZoEDlgAnnotationSelectWizzard arguments(nullptr, {L"[BOILER.T1]"}, ZoEDlgAnnotationSelectWizzard::kArguments);
    arguments.EnsureInitialized();
    EXPECT_EQ(arguments.windowTitle(), ZoText(32826));
    EXPECT_EQ(arguments.findChild<QLabel*>(QStringLiteral("selectPrompt"))->text().remove(QLatin1Char('&')),
              ZoText(32807));
}

TEST(AnnotationPlaceholders, InsertionNeverDuplicatesOrLosesText)
{
    struct Case { int start, end; wchar_t const* result; };
    for (Case const& c : {Case{2, 4, L"ab%ne"}, Case{-3, 1, L"%nbcde"}, Case{4, 2, L"abcd%ne"},
                          Case{5, 5, L"abcde%n"}, Case{7, -1, L"abcde%n"}}) {
        std::wstring text = L"abcde";
        EXPECT_EQ(ZoInsertPlaceholder(text, c.start, c.end, L"%n"), 2);
        EXPECT_EQ(text, c.result) << c.start << ".." << c.end;
    }
    EXPECT_EQ(ZoNumberedPlaceholder(L'a', 12), L"%a12");
    EXPECT_EQ(ZoPlaceholderText(9), L"%%");
    EXPECT_EQ(ZoPlaceholderText(10), L"");
    EXPECT_EQ(ZoPlaceholderLabel(2), 33137u);
}
