// Which kinds each of the eight lists offers, what a row shows for every kind, and how the
// rows sort.
#include "ActionsPaneFixture.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/ui/ZoHyperlink.h"
#include "support/ModalScript.h"

#include <QHeaderView>

using namespace actions_test;

namespace {

// The object names of the wizard's visible links, joined by " ", without "Link".
std::string OfferedKinds(ZoEDlgEventActionsWizzard const& wizard)
{
    std::string out;
    for (ZoHyperlink const* link : wizard.findChildren<ZoHyperlink*>())
        if (!link->isHidden() && link->isEnabled())
            out += (out.empty() ? "" : " ") + link->objectName().chopped(4).toStdString();
    return out;
}

class ActionKinds : public PaneTest {
protected:
    // The kinds the pane's New offers, as the wizard shows them.
    std::string Offered(int side, int moment, std::string const& inner = {})
    {
        Open(side, moment, inner);
        std::string offered;
        ModalScript modal(ModalScript::As<ZoEDlgEventActionsWizzard>([&](ZoEDlgEventActionsWizzard& wizard) {
            offered = OfferedKinds(wizard);
            return int(QDialog::Rejected);
        }));
        m_pane->OnNew();
        EXPECT_EQ(modal.Count(), 1);
        return offered;
    }
};

TEST_F(ActionKinds, EachOfTheEightListsOffersItsOwnKinds)
{
    std::string const server = "force shellExecute mail sms";
    std::string const client = "shellExecute screen report device beep launchWeb";
    EXPECT_EQ(Offered(0, 0), server);
    EXPECT_EQ(Offered(0, 1), "force shellExecute");
    EXPECT_EQ(Offered(0, 2), server);
    EXPECT_EQ(Offered(0, 3), server);
    EXPECT_EQ(Offered(1, 0), client);
    EXPECT_EQ(Offered(1, 1), "shellExecute beep launchWeb");
    EXPECT_EQ(Offered(1, 2), client);
    EXPECT_EQ(Offered(1, 3), client);
    EXPECT_EQ(Children(), "") << "a cancelled choice adds nothing";
}

// A client moment shows at most one of a device, a screen and a report.
TEST_F(ActionKinds, AClientMomentHoldsOneDeviceScreenOrReport)
{
    std::string const rest = "shellExecute beep launchWeb";
    EXPECT_EQ(Offered(1, 0, "<screen><id>{S}</id><name>Overview</name></screen>"), rest);
    EXPECT_EQ(Offered(1, 2, "<report><id>{R}</id><name>Daily</name></report>"), rest);
    EXPECT_EQ(Offered(1, 3, "<device><id>{D}</id><name>BOILER</name></device>"), rest);
    EXPECT_EQ(Offered(1, 0, "<beep><id>{B}</id></beep><launchWeb><id>{W}</id></launchWeb>"),
              "shellExecute screen report device beep launchWeb");
    EXPECT_EQ(ZoAllowedActionKinds(nullptr, 1, true), 290u);
    EXPECT_EQ(ZoAllowedActionKinds(nullptr, 0, true), 318u);
    EXPECT_EQ(ZoAllowedActionKinds(nullptr, 1, false), 3u);
    EXPECT_EQ(ZoAllowedActionKinds(nullptr, 3, false), 195u);
}

// Rows are not filtered by side: a document holding every kind in one moment shows them all.
TEST_F(ActionKinds, EveryKindShowsItsNameAndSummary)
{
    Open(0, 0, kEveryKind);
    m_pane->SetEditorFlags(0, false, false); // a preset index keeps document order
    EXPECT_EQ(Rows(), "Force:[BOILER.SP] = (10)|Command:a.exe |Screen:Overview|Report:Daily|Device:BOILER|Beep:"
                      "|Mail:Boiler hot|SMS:Call me|Web page:http://plant - Browser (new tab)");
}

TEST_F(ActionKinds, SummariesKeepTheirExactForms)
{
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse("<m><force><variable>V1</variable><value>10</value></force>"
                          "<shellExecute><command>a.exe</command></shellExecute>"
                          "<shellExecute><parameter>-x</parameter></shellExecute>"
                          "<launchWeb><url>u</url><window>tab</window></launchWeb>"
                          "<launchWeb><url>u</url><window>WINDOW</window></launchWeb>"
                          "<launchWeb><url>u</url></launchWeb><force/></m>"));
    std::vector<std::wstring> summaries;
    for (XmlNode const* action = doc.Root()->FirstChild(); action; action = action->NextSibling())
        summaries.push_back(ZoActionSummary(*action));
    // The command keeps its blank without a parameter; only "TAB" exactly is a tab.
    std::wstring const window = L"u - " + ZoLoadString(38457); // "New browser window"
    EXPECT_EQ(summaries, (std::vector<std::wstring>{L"V1 = (10)", L"a.exe ", L" -x", window, window, window, L" = ()"}));
}

// Unknown children stay in the tree but never show.
TEST_F(ActionKinds, UnknownChildrenAreNotShown)
{
    Open(1, 0, "<note>keep me</note><beep><id>{B}</id></beep><Beep><id>{X}</id></Beep>");
    EXPECT_EQ(Rows(), "Beep:");
    EXPECT_EQ(Children(), "note beep Beep");
}

class ActionsSort : public PaneTest {
protected:
    void SetUp() override
    {
        Open(0, 0,
             "<force><id>{1}</id><variable>[b]</variable><value>1</value></force>"
             "<shellExecute><id>{2}</id><command>Zed</command></shellExecute>"
             "<mail><id>{3}</id><message>alarm</message></mail>"
             "<force><id>{4}</id><variable>[A]</variable><value>1</value></force>");
    }
    void ClickHeader(int column) const { m_list->header()->sectionClicked(column); }
    // The rows in document order; two of one kind differ only in the case of their summaries.
    inline static std::vector<std::string> const kRows = {"Force:[b] = (1)", "Command:Zed ", "Mail:alarm",
                                                           "Force:[A] = (1)"};
};

TEST_F(ActionsSort, ByKindThenSummaryCaseInsensitiveAndToggled)
{
    EXPECT_EQ(Rows(), ByKind(kRows));
    ClickHeader(0);
    EXPECT_EQ(Rows(), ByKind(kRows, true)) << "descending reverses the kinds and their ties alike";
    EXPECT_EQ(m_list->header()->sortIndicatorOrder(), Qt::DescendingOrder);
    ClickHeader(0);
    EXPECT_EQ(Rows(), ByKind(kRows));
}

TEST_F(ActionsSort, AnotherColumnSortsAscendingBySummaryOnly)
{
    ClickHeader(0);
    ClickHeader(1);
    EXPECT_EQ(Rows(), "Force:[A] = (1)|Force:[b] = (1)|Mail:alarm|Command:Zed ");
    EXPECT_EQ(m_list->header()->sortIndicatorSection(), 1);
    ClickHeader(1);
    EXPECT_EQ(Rows(), "Command:Zed |Mail:alarm|Force:[b] = (1)|Force:[A] = (1)");
}

TEST_F(ActionsSort, APresetIndexKeepsDocumentOrder)
{
    m_pane->SetEditorFlags(1, false, false);
    EXPECT_EQ(Rows(), "Force:[b] = (1)|Command:Zed |Mail:alarm|Force:[A] = (1)");
    m_pane->SetEditorFlags(-1, false, false);
    EXPECT_EQ(Rows(), ByKind(kRows));
}

} // namespace
