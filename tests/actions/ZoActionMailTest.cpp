// The mail action editor driven as the user drives it: what it loads, what OK writes, the
// checks with their messages and focus, the list pane's two flags, and users documents
// that hold nothing.
#include "actions/RecipientsEditorFixture.h"
#include "actions/ZoEDlgEventActionMailCfg.h"
#include "editor/ZoActionChecks.h"
#include "platform/tools/ZoTexts.h"
#include "support/TableText.h"

using namespace recipients_test;

namespace {

char const kStoredMail[] =
    "<mail><id>{X-1}</id><message>Tank high</message><address>lab@site.example;boss@site.example</address>"
    "<users><user>{U-TOM}</user></users><mailLists><mailList>{M-OPS}</mailList></mailLists></mail>";

using MailEditorTest = RecipientsEditorTest<ZoEDlgEventActionMailCfg>;

} // namespace

TEST_F(MailEditorTest, LoadsMessageAddressesUsersAndListsAndStartsInTheMessage)
{
    Open(kStoredMail);
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(63500));
    EXPECT_EQ(Get<QPlainTextEdit>("messageEdit")->toPlainText(), "Tank high");
    EXPECT_EQ(Get<QLineEdit>("addressEdit")->text(), "lab@site.example;boss@site.example");
    EXPECT_EQ(Checks("usersList"), "[ ] anna Berg, [ ] Control Room, [ ] Lab, [x] Tom Hughes");
    EXPECT_EQ(Checks("listsList"), "[ ] Empty list, [x] Operators");
    EXPECT_EQ(Focused(), "messageEdit");
    EXPECT_FALSE(Get<QLineEdit>("addressEdit")->toolTip().isEmpty()) << "the address syntax is explained";
    // Every label and button carries a mnemonic.
    for (char const* name : {"messageLabel", "usersLabel", "listsLabel", "addressLabel"})
        EXPECT_TRUE(Get<QLabel>(name)->text().contains('&')) << name;
    for (char const* name : {"okButton", "cancelButton"})
        EXPECT_TRUE(Get<QPushButton>(name)->text().contains('&')) << name;
    EXPECT_EQ(Get<QPushButton>("okButton")->text().remove('&'), ZoText(311));
}

TEST_F(MailEditorTest, OkWritesEveryKeyAndKeepsWhatItDoesNotEdit)
{
    Open("<mail><id>{X-1}</id><note>kept</note><message>Old</message><users><user>{U-LAB}</user></users></mail>");
    SetMessage("Tank high\nat the reservoir");
    Check("usersList", "Lab", false);
    Check("usersList", "Tom Hughes");
    Check("usersList", "anna Berg");
    Check("listsList", "Operators");
    Get<QLineEdit>("addressEdit")->setText(" lab@site.example ;; boss@site.example; ");
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), "<mail><id>{X-1}</id><note>kept</note><message>Tank high\nat the reservoir</message>"
                        "<users><user>{U-ANNA}</user><user>{U-TOM}</user></users>"
                        "<address>lab@site.example; boss@site.example</address>"
                        "<mailLists><mailList>{M-OPS}</mailList></mailLists></mail>");
    EXPECT_FALSE(ZoCheckMailAction(*m_action.Root())) << "what the editor writes passes the event's check";
}

TEST_F(MailEditorTest, ClearedRecipientsLeaveNoEmptyContainers)
{
    Open(kStoredMail);
    Check("usersList", "Tom Hughes", false);
    Check("listsList", "Operators", false);
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), "<mail><id>{X-1}</id><message>Tank high</message>"
                        "<address>lab@site.example; boss@site.example</address></mail>");
}

TEST_F(MailEditorTest, UnchangedEndsWithCancelUnlessKeepIsSet)
{
    Open(kStoredMail);
    // Blanks after the separator and the order of stored ids are no change.
    Get<QLineEdit>("addressEdit")->setText("lab@site.example; boss@site.example");
    EXPECT_EQ(ClickOk(), QDialog::Rejected);
    EXPECT_EQ(Action(), std::string(kStoredMail));

    Create(kStoredMail).m_keep = true;
    Show();
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), std::string(kStoredMail)) << "kept as it was, not rewritten";

    Open(kStoredMail);
    Get<QLineEdit>("addressEdit")->setText("boss@site.example; lab@site.example");
    EXPECT_EQ(ClickOk(), QDialog::Accepted) << "another order of free addresses is a change";
}

TEST_F(MailEditorTest, SkipCheckAcceptsAnythingAndCountsAsChanged)
{
    ScriptedAnswerer answers;
    Create("<mail><id>{X-1}</id></mail>").m_skipCheck = true;
    Show();
    EXPECT_EQ(Get<QPushButton>("okButton")->text().remove('&'), ZoText(34893));
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(answers.Count(), 0);
    EXPECT_EQ(Action(), "<mail><id>{X-1}</id><message/></mail>");
}

TEST_F(MailEditorTest, AnEmptyMessageIsRefusedWithTheFocusOnIt)
{
    ScriptedAnswerer answers;
    Open("<mail><id>{X-1}</id><address>a@b.io</address></mail>");
    SetMessage("  \n ");
    Get<QLineEdit>("addressEdit")->setFocus();
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{34174});
    EXPECT_EQ(Focused(), "messageEdit");
    EXPECT_EQ(Action(), "<mail><id>{X-1}</id><address>a@b.io</address></mail>");
}

TEST_F(MailEditorTest, NoRecipientIsRefusedWithTheFocusOnTheFirstListThatOffersOne)
{
    ScriptedAnswerer answers;
    Open("<mail><id>{X-1}</id></mail>");
    SetMessage("Hello");
    Get<QLineEdit>("addressEdit")->setText(" ; ");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{34175});
    EXPECT_EQ(Focused(), "usersList");
    EXPECT_EQ(Get<QTreeView>("usersList")->currentIndex().row(), 0);

    // A users document without users or lists leaves only the free addresses.
    XmlDocument empty;
    empty.Create(L"usersBD");
    Open("<mail><id>{X-1}</id></mail>", &empty);
    SetMessage("Hello");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{34175, 34175}));
    EXPECT_EQ(Focused(), "addressEdit");
}

TEST_F(MailEditorTest, AFaultyFreeAddressIsNamedAndSelected)
{
    ScriptedAnswerer answers;
    Open(kStoredMail);
    Get<QLineEdit>("addressEdit")->setText("lab@site.example; tom at site; x@y.io");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{63517});
    EXPECT_EQ(QString::fromStdWString(answers.LastText()), Said(63517, L"tom at site"));
    EXPECT_EQ(Focused(), "addressEdit");
    EXPECT_EQ(Get<QLineEdit>("addressEdit")->selectedText(), "tom at site");
    EXPECT_EQ(Action(), std::string(kStoredMail));
}

TEST_F(MailEditorTest, WorksWithAnEmptyOrMissingUsersDocument)
{
    XmlDocument empty;
    empty.Create(L"usersBD");
    for (XmlDocument* users : {&empty, static_cast<XmlDocument*>(nullptr)}) {
        Open("<mail><id>{X-1}</id><users><user>{U-TOM}</user></users></mail>", users);
        EXPECT_EQ(Checks("usersList"), "[x] " + ZoText(63514).toStdString()) << "a stored user is never dropped unseen";
        EXPECT_EQ(Checks("listsList"), "");
        SetMessage("Pump stopped");
        Check("usersList", ZoText(63514), false);
        Get<QLineEdit>("addressEdit")->setText("duty@site.example");
        EXPECT_EQ(ClickOk(), QDialog::Accepted);
        EXPECT_EQ(Action(), "<mail><id>{X-1}</id><message>Pump stopped</message>"
                            "<address>duty@site.example</address></mail>");
    }
}

TEST_F(MailEditorTest, TheSpaceBarChecksTheCurrentUserAndAUserWithoutAddressCannotBeChosen)
{
    Open("<mail><id>{X-1}</id></mail>");
    QTreeView* users = Get<QTreeView>("usersList");
    users->setFocus();
    users->setCurrentIndex(users->model()->index(3, 0));
    QTest::keyClick(users, Qt::Key_Space);
    EXPECT_EQ(Checks("usersList"), "[ ] anna Berg, [ ] Control Room, [ ] Lab, [x] Tom Hughes");
    EXPECT_FALSE(users->model()->flags(users->model()->index(1, 0)) & Qt::ItemIsEnabled) << "Control Room";
    EXPECT_EQ(users->model()->index(1, 1).data().toString(), ZoText(63512));
}
