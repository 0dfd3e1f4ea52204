// The SMS action editor driven as the user drives it: the live count at the single-message
// limits of both alphabets, what forceBreakMessage does, the checks with their messages
// and focus, the list pane's two flags, and users documents that hold nothing.
#include "actions/RecipientsEditorFixture.h"
#include "actions/ZoEDlgEventActionSmsCfg.h"
#include "platform/tools/ZoTexts.h"
#include "support/TableText.h"

using namespace recipients_test;

namespace {

char const kStoredSms[] =
    "<sms><id>{X-2}</id><message>Overflow</message><phone>+44 20 7946 0199</phone>"
    "<users><user>{U-ROOM}</user></users><phoneLists><phoneList>{P-CALL}</phoneList></phoneLists>"
    "<forceBreakMessage>T</forceBreakMessage></sms>";

using SmsEditorTest = RecipientsEditorTest<ZoEDlgEventActionSmsCfg>;

QString Count(int characters, int messages, bool gsm, int perMessage)
{
    QString const encoding = ZoText(gsm ? 63531 : 63532).replace("%d", QString::number(perMessage));
    QString text = ZoText(messages == 1 ? 63528 : 63529);
    text.replace(text.indexOf("%d"), 2, QString::number(characters));
    if (messages != 1)
        text.replace(text.indexOf("%d"), 2, QString::number(messages));
    return text.replace("%s", encoding);
}

} // namespace

TEST_F(SmsEditorTest, LoadsMessageNumbersUsersListsAndTheBreakFlag)
{
    Open(kStoredSms);
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(63501));
    EXPECT_EQ(Get<QPlainTextEdit>("messageEdit")->toPlainText(), "Overflow");
    EXPECT_EQ(Get<QLineEdit>("phoneEdit")->text(), "+44 20 7946 0199");
    EXPECT_TRUE(Get<QCheckBox>("forceBreakCheck")->isChecked());
    // Lab has no phone number; the lists are the phone lists, not the mailing lists.
    EXPECT_EQ(Checks("usersList"), "[ ] anna Berg, [x] Control Room, [ ] Lab, [ ] Tom Hughes");
    EXPECT_FALSE(Get<QTreeView>("usersList")->model()->flags(Get<QTreeView>("usersList")->model()->index(2, 0))
                 & Qt::ItemIsEnabled);
    EXPECT_EQ(Checks("listsList"), "[x] On call");
    EXPECT_EQ(Get<QLabel>("countLabel")->text(), Count(8, 1, true, 160));
    EXPECT_EQ(Focused(), "messageEdit");
    for (char const* name : {"messageLabel", "usersLabel", "listsLabel", "phoneLabel"})
        EXPECT_TRUE(Get<QLabel>(name)->text().contains('&')) << name;
    EXPECT_TRUE(Get<QCheckBox>("forceBreakCheck")->text().contains('&'));
    EXPECT_FALSE(Get<QLineEdit>("phoneEdit")->toolTip().isEmpty()) << "the number format is explained";
}

TEST_F(SmsEditorTest, OkWritesEveryKey)
{
    Open("<sms><id>{X-2}</id></sms>");
    SetMessage("Pump 1 fault");
    Check("usersList", "Tom Hughes");
    Check("listsList", "On call");
    Get<QLineEdit>("phoneEdit")->setText("+44 20 7946 0199;0044 7700 900 555");
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), "<sms><id>{X-2}</id><message>Pump 1 fault</message>"
                        "<phone>+44 20 7946 0199; 0044 7700 900 555</phone>"
                        "<users><user>{U-TOM}</user></users><phoneLists><phoneList>{P-CALL}</phoneList></phoneLists>"
                        "<forceBreakMessage>F</forceBreakMessage></sms>");
}

TEST_F(SmsEditorTest, TheCountFollowsTheTextAtTheLimitsOfBothAlphabets)
{
    Open("<sms><id>{X-2}</id><forceBreakMessage>T</forceBreakMessage></sms>");
    QLabel* count = Get<QLabel>("countLabel");
    SetMessage(QString(160, 'a'));
    EXPECT_EQ(count->text(), Count(160, 1, true, 160));
    SetMessage(QString(161, 'a'));
    EXPECT_EQ(count->text(), Count(161, 2, true, 153));
    SetMessage(QString(69, 'a') + QChar(0x0142));
    EXPECT_EQ(count->text(), Count(70, 1, false, 70));
    SetMessage(QString(70, 'a') + QChar(0x0142));
    EXPECT_EQ(count->text(), Count(71, 2, false, 67));
    EXPECT_FALSE(count->property("cut").toBool());

    // Without forceBreakMessage a long text is cut, and the count says where.
    Get<QCheckBox>("forceBreakCheck")->setChecked(false);
    EXPECT_TRUE(count->property("cut").toBool());
    EXPECT_TRUE(count->text().startsWith("71 ")) << count->text().toStdString();
    EXPECT_TRUE(count->text().endsWith(" 70" + ZoText(63530).section("%d", 2))) << count->text().toStdString();
    SetMessage(QString(160, 'a'));
    EXPECT_FALSE(count->property("cut").toBool());
    EXPECT_EQ(count->text(), Count(160, 1, true, 160));
}

TEST_F(SmsEditorTest, ATextToBeCutIsAskedAboutAndNoKeepsTheEditorOpen)
{
    ScriptedAnswerer answers{ZoAnswer::No};
    Open(kStoredSms);
    Get<QCheckBox>("forceBreakCheck")->setChecked(false);
    SetMessage(QString(161, 'a'));
    Get<QLineEdit>("phoneEdit")->setFocus();
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{63521});
    EXPECT_NE(answers.LastText().find(L" 160 "), std::wstring::npos);
    EXPECT_EQ(Focused(), "messageEdit");
    EXPECT_EQ(Action(), std::string(kStoredSms));

    EXPECT_EQ(ClickOk(), QDialog::Accepted) << "Yes keeps the text as it is";
    EXPECT_NE(Action().find("<forceBreakMessage>F</forceBreakMessage>"), std::string::npos);
    EXPECT_NE(Action().find(std::string(161, 'a')), std::string::npos);
}

TEST_F(SmsEditorTest, FaultsAreNamedWithTheFocusOnTheirControl)
{
    ScriptedAnswerer answers;
    Open("<sms><id>{X-2}</id></sms>");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(Focused(), "messageEdit");
    SetMessage("Intrusion");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(Focused(), "usersList");
    Get<QLineEdit>("phoneEdit")->setText("+44 20 7946 0199; 020-7946-0100");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{63519, 63520, 63518}));
    EXPECT_EQ(QString::fromStdWString(answers.LastText()), Said(63518, L"020-7946-0100"));
    EXPECT_EQ(Focused(), "phoneEdit");
    EXPECT_EQ(Get<QLineEdit>("phoneEdit")->selectedText(), "020-7946-0100");
    EXPECT_EQ(Action(), "<sms><id>{X-2}</id></sms>");
}

TEST_F(SmsEditorTest, UnchangedEndsWithCancelUnlessKeepIsSetAndSkipCheckWritesAnyway)
{
    Open(kStoredSms);
    EXPECT_EQ(ClickOk(), QDialog::Rejected);

    Create(kStoredSms).m_keep = true;
    Show();
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), std::string(kStoredSms));

    Open(kStoredSms);
    Get<QCheckBox>("forceBreakCheck")->setChecked(false);
    EXPECT_EQ(ClickOk(), QDialog::Accepted) << "the break flag alone is a change";

    ScriptedAnswerer answers;
    Create("<sms><id>{X-2}</id></sms>").m_skipCheck = true;
    Show();
    EXPECT_EQ(Get<QPushButton>("okButton")->text().remove('&'), ZoText(34893));
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(answers.Count(), 0);
}

TEST_F(SmsEditorTest, AnEmptyUsersDocumentLeavesFreeNumbers)
{
    XmlDocument empty;
    empty.Create(L"usersBD");
    Open("<sms><id>{X-2}</id></sms>", &empty);
    EXPECT_EQ(Checks("usersList"), "");
    EXPECT_EQ(Checks("listsList"), "");
    ScriptedAnswerer answers;
    SetMessage("Mains lost");
    EXPECT_EQ(ClickOk(), -1);
    EXPECT_EQ(Focused(), "phoneEdit");
    Get<QLineEdit>("phoneEdit")->setText("+44 20 7946 0199");
    EXPECT_EQ(ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Action(), "<sms><id>{X-2}</id><message>Mains lost</message><phone>+44 20 7946 0199</phone>"
                        "<forceBreakMessage>F</forceBreakMessage></sms>");
}
