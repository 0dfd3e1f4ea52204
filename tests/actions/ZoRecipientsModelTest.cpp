// The checkable recipients lists of the mail and SMS editors, read from the users
// document: users by name with their contact, lists with their members, ids the document
// no longer knows, and the ids written back into an action.
#include "actions/ZoRecipientsModel.h"
#include "actions/RecipientsTestDocs.h"
#include "support/XmlText.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

using namespace recipients_test;

namespace {

ZoRecipientTexts Texts()
{
    return {"Name", "Detail", "No address", "No address tip", "Unknown", "Unknown tip", "No members"};
}

// "[x] name | detail" per row, "-" before a row that cannot be touched, "~" before one
// that can only be cleared.
std::string Rows(ZoRecipientsModel const& model)
{
    std::string out;
    for (int row = 0; row < model.rowCount(); ++row) {
        QModelIndex const index = model.index(row, 0);
        Qt::ItemFlags const flags = model.flags(index);
        std::string const mark = !(flags & Qt::ItemIsEnabled) ? "-" : !model.RowAt(row).available ? "~" : "";
        bool const checked = model.data(index, Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
        out += mark + (checked ? "[x] " : "[ ] ") + model.data(index).toString().toStdString() + " | "
            + model.data(model.index(row, 1)).toString().toStdString() + "\n";
    }
    return out;
}

bool SetChecked(ZoRecipientsModel& model, int row, bool checked)
{
    return model.setData(model.index(row, 0), checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

class RecipientsModelTest : public ::testing::Test {
protected:
    RecipientsModelTest() { Load(m_users, kUsers); }
    XmlDocument m_users;
    ZoRecipientsModel m_model{Texts()};
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(RecipientsModelTest, UsersAreSortedByNameIgnoringCaseAndThoseWithoutTheContactAreGreyed)
{
    m_model.LoadUsers(m_users.Root(), L"mail");
    EXPECT_EQ(Rows(m_model), "[ ] anna Berg | anna@site.example\n"
                             "-[ ] Control Room | No address\n"
                             "[ ] Lab | lab@site.example\n"
                             "[ ] Tom Hughes | tom@site.example\n");
    EXPECT_FALSE(SetChecked(m_model, 1, true)) << "a user without a mail address cannot be chosen";
    EXPECT_EQ(m_model.data(m_model.index(1, 0), Qt::ToolTipRole).toString(), "No address tip");
    EXPECT_EQ(m_model.headerData(1, Qt::Horizontal).toString(), "Detail");

    m_model.LoadUsers(m_users.Root(), L"phone");
    EXPECT_EQ(Rows(m_model), "[ ] anna Berg | +44 7700 900101\n"
                             "[ ] Control Room | +44 20 7946 0100\n"
                             "-[ ] Lab | No address\n"
                             "[ ] Tom Hughes | +44 7700 900102\n");
}

TEST_F(RecipientsModelTest, ListsNameTheirMembersInTheirOwnOrder)
{
    m_model.LoadLists(m_users.Root(), L"mailLists");
    EXPECT_EQ(Rows(m_model), "[ ] Empty list | No members\n"
                             "[ ] Operators | Tom Hughes, anna Berg\n");
    m_model.LoadLists(m_users.Root(), L"phoneLists");
    EXPECT_EQ(Rows(m_model), "[ ] On call | anna Berg, Unknown\n");
}

TEST_F(RecipientsModelTest, StoredIdsAreCheckedAndUnknownOnesKeptAsRowsThatCanOnlyBeCleared)
{
    m_model.LoadUsers(m_users.Root(), L"mail");
    XmlDocument action;
    Load(action, "<mail><users><user>{U-TOM}</user><user>{U-GONE}</user><user>{U-ROOM}</user></users></mail>");
    m_model.CheckIds(action.Root()->Child(L"users"));
    // Control Room lost its address since it was chosen: still checked, can be cleared.
    EXPECT_EQ(Rows(m_model), "[ ] anna Berg | anna@site.example\n"
                             "~[x] Control Room | No address\n"
                             "[ ] Lab | lab@site.example\n"
                             "[x] Tom Hughes | tom@site.example\n"
                             "~[x] Unknown | {U-GONE}\n");
    EXPECT_EQ(m_model.CheckedIds(), (std::vector<std::wstring>{L"{U-ROOM}", L"{U-TOM}", L"{U-GONE}"}));

    EXPECT_TRUE(SetChecked(m_model, 4, false));
    EXPECT_TRUE(SetChecked(m_model, 0, true));
    EXPECT_FALSE(SetChecked(m_model, 4, true)) << "an unknown id once cleared cannot come back";
    EXPECT_EQ(m_model.CheckedIds(), (std::vector<std::wstring>{L"{U-ANNA}", L"{U-ROOM}", L"{U-TOM}"}));
    EXPECT_EQ(Rows(m_model).substr(0, 22), "[x] anna Berg | anna@s");
}

TEST_F(RecipientsModelTest, AnEmptyOrMissingUsersDocumentGivesNoRowsButKeepsStoredIds)
{
    XmlDocument empty;
    empty.Create(L"usersBD");
    m_model.LoadUsers(empty.Root(), L"mail");
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_FALSE(m_model.HasAvailableRows());
    m_model.LoadLists(nullptr, L"mailLists");
    EXPECT_EQ(m_model.rowCount(), 0);

    XmlDocument action;
    Load(action, "<mail><mailLists><mailList>{M-OPS}</mailList></mailLists></mail>");
    m_model.CheckIds(action.Root()->Child(L"mailLists"));
    EXPECT_EQ(Rows(m_model), "~[x] Unknown | {M-OPS}\n");
    EXPECT_FALSE(m_model.HasAvailableRows());
}

TEST_F(RecipientsModelTest, AUserWithoutIdCannotBeChosen)
{
    XmlDocument users;
    Load(users, "<usersBD><users><user><name>Nobody</name><mail>n@site.example</mail></user></users></usersBD>");
    m_model.LoadUsers(users.Root(), L"mail");
    EXPECT_EQ(Rows(m_model), "-[ ] Nobody | n@site.example\n");
}

TEST(ZoRecipientIds, AreComparedAsSetsAndWrittenInPlaceOrRemoved)
{
    EXPECT_TRUE(ZoSameRecipientIds({L"b", L"a"}, {L"a", L"b"}));
    EXPECT_FALSE(ZoSameRecipientIds({L"a"}, {L"a", L"b"}));

    XmlDocument action;
    Load(action, "<mail><id>1</id><users><user>{A}</user></users><message>m</message></mail>");
    ZoWriteRecipientIds(*action.Root(), L"users", L"user", {L"{B}", L"{C}"});
    ZoWriteRecipientIds(*action.Root(), L"mailLists", L"mailList", {L"{L}"});
    EXPECT_EQ(Xml(action.Root()), "<mail><id>1</id><users><user>{B}</user><user>{C}</user></users><message>m</message>"
                                  "<mailLists><mailList>{L}</mailList></mailLists></mail>");
    ZoWriteRecipientIds(*action.Root(), L"users", L"user", {});
    ZoWriteRecipientIds(*action.Root(), L"phoneLists", L"phoneList", {});
    EXPECT_EQ(Xml(action.Root()), "<mail><id>1</id><message>m</message><mailLists><mailList>{L}</mailList></mailLists></mail>");
    EXPECT_EQ(ZoRecipientIds(action.Root()->Child(L"mailLists")), std::vector<std::wstring>{L"{L}"});
    EXPECT_TRUE(ZoRecipientIds(nullptr).empty());
}
