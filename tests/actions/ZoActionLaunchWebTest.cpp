#include "ActionEditorTestSupport.h"
#include "actions/ZoEDlgEventActionLaunchWebCfg.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

#include <memory>

namespace {

class WebPageEditor : public ActionEditorTest {
protected:
    ZoEDlgEventActionLaunchWebCfg& Open(wchar_t const* id, bool skipCheck = false, bool keep = false)
    {
        return OpenEditor(m_dialog, id, L"launchWeb", skipCheck, keep);
    }
    QLineEdit* Address() const { return m_dialog->findChild<QLineEdit*>("addressEdit"); }
    QComboBox* Place() const { return m_dialog->findChild<QComboBox*>("placeCombo"); }

    std::unique_ptr<ZoEDlgEventActionLaunchWebCfg> m_dialog;
};

} // namespace

TEST_F(WebPageEditor, ShowsTheStoredAddressAndPlace)
{
    Load("<launchWeb><id>{W-1}</id><url>https://plant/overview</url><window>TAB</window></launchWeb>");
    Open(L"{W-1}");
    EXPECT_EQ(Address()->text(), "https://plant/overview");
    ASSERT_EQ(Place()->count(), 2);
    EXPECT_EQ(Place()->itemText(0), ZoText(38456) + " (" + ZoText(38460) + ")");
    EXPECT_EQ(Place()->itemData(0).toInt(), 0);
    EXPECT_EQ(Place()->itemText(1), ZoText(38457));
    EXPECT_EQ(Place()->itemData(1).toInt(), 1);
    EXPECT_EQ(Place()->currentIndex(), 0);
    EXPECT_EQ(Focused(*m_dialog), "addressEdit");
    EXPECT_GE(Place()->view()->minimumHeight(), 150) << "the drop-down has room";
}

TEST_F(WebPageEditor, ChosenPlaceIsWrittenAsTabOrWindow)
{
    Load("<launchWeb><id>{W-1}</id><url>https://plant</url><window>TAB</window></launchWeb>");
    Open(L"{W-1}");
    Place()->setCurrentIndex(1);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Action(L"{W-1}", L"launchWeb")->Value(L"window", L""), L"WINDOW");
    Open(L"{W-1}");
    EXPECT_EQ(Place()->currentIndex(), 1);
    Place()->setCurrentIndex(0);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Action(L"{W-1}", L"launchWeb")->Value(L"window", L""), L"TAB");
}

TEST_F(WebPageEditor, NoPlaceChosenKeepsTheStoredWindow)
{
    // "tab" in lower case is neither of the two places: nothing is chosen, and OK keeps it.
    Load("<launchWeb><id>{W-1}</id><url>https://plant</url><window>tab</window></launchWeb>"
         "<launchWeb><id>{W-2}</id><url>https://plant</url></launchWeb>");
    Open(L"{W-1}");
    EXPECT_EQ(Place()->currentIndex(), -1);
    EXPECT_EQ(Place()->placeholderText(), ZoText(63322).replace("%s", "tab"));
    Address()->setText("https://plant/pumps");
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Xml(Action(L"{W-1}", L"launchWeb")),
              "<launchWeb><id>{W-1}</id><url>https://plant/pumps</url><window>tab</window></launchWeb>");
    // Without a stored place the box says what the action does, and OK adds no key.
    Open(L"{W-2}");
    EXPECT_EQ(Place()->currentIndex(), -1);
    EXPECT_EQ(Place()->placeholderText(), ZoText(38457));
    Address()->setText("https://plant/tanks");
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Xml(Action(L"{W-2}", L"launchWeb")),
              "<launchWeb><id>{W-2}</id><url>https://plant/tanks</url></launchWeb>");
}

TEST_F(WebPageEditor, EmptyAddressIsRefusedUnlessChecksAreSkipped)
{
    Load("<launchWeb><id>{W-1}</id></launchWeb>");
    Open(L"{W-1}");
    Place()->setCurrentIndex(0);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Rejected);
    EXPECT_EQ(m_answers.Ids(), std::vector<unsigned>{39957});
    EXPECT_EQ(Focused(*m_dialog), "addressEdit");
    EXPECT_EQ(Xml(Activate()), "<activate><launchWeb><id>{W-1}</id></launchWeb></activate>");

    Open(L"{W-1}", true);
    Place()->setCurrentIndex(0);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Xml(Activate()),
              "<activate><launchWeb><id>{W-1}</id><url/><window>TAB</window></launchWeb></activate>");
}

TEST_F(WebPageEditor, UnchangedEndsWithCancelUnlessKept)
{
    Load("<launchWeb><id>{W-1}</id><url>https://plant</url><window>WINDOW</window></launchWeb>");
    Open(L"{W-1}");
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Rejected);
    Open(L"{W-1}", false, true);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(m_answers.Count(), 0);
}
