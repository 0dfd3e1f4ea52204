// The actions wizard: one link per allowed kind, in the fixed order, the dialog as tall as
// its links; a link ends it with OK and its kind, Cancel with nothing.
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/ui/ZoHyperlink.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct Wizard {
    explicit Wizard(unsigned mask)
        : dialog(nullptr, mask)
    {
        dialog.EnsureInitialized();
        dialog.setResult(-1);
        dialog.show();
    }
    // The visible links' captions without their mnemonic marks, joined by "|".
    std::string Links() const
    {
        QStringList captions;
        for (ZoHyperlink const* link : dialog.findChildren<ZoHyperlink*>())
            if (link->isVisible())
                captions << link->text().remove(QLatin1Char('&'));
        return captions.join(QLatin1Char('|')).toStdString();
    }
    ZoHyperlink* Link(char const* name) const { return dialog.findChild<ZoHyperlink*>(QLatin1String(name)); }

    ZoEDlgEventActionsWizzard dialog;
};

TEST(ActionsWizzard, AServerWhileListOffersTwoLinksAndIsShort)
{
    Wizard server(kServerWhileMask);
    Wizard client(kClientActionsMask);
    EXPECT_EQ(server.Links(), "Force a variable|Run a command");
    EXPECT_EQ(client.Links(), "Run a command|Show a screen|Print a report|Act on a device|Beep|Web page");
    EXPECT_LT(server.dialog.height(), client.dialog.height()) << "as tall as its links";
    EXPECT_FALSE(server.Link("mailLink")->isEnabled());
    EXPECT_EQ(server.dialog.windowTitle(), "New action");
    EXPECT_EQ(server.dialog.findChild<QLabel*>("introText")->text(), "Choose the kind of action to add:");
    EXPECT_EQ(server.dialog.focusWidget(), server.Link("forceLink"));
}

TEST(ActionsWizzard, EveryKindHasItsLinkWithAnIconInTableOrder)
{
    Wizard all(0x1FF);
    EXPECT_EQ(all.Links(), "Force a variable|Run a command|Show a screen|Print a report|Act on a device|Beep|Mail|SMS"
                           "|Web page");
    for (ZoHyperlink const* link : all.dialog.findChildren<ZoHyperlink*>()) {
        EXPECT_FALSE(link->icon().isNull()) << link->objectName().toStdString();
        EXPECT_TRUE(link->text().contains(QLatin1Char('&'))) << "every link has its Alt key";
        EXPECT_EQ(link->focusPolicy(), Qt::StrongFocus);
    }
}

TEST(ActionsWizzard, AClickEndsWithOkAndTheKind)
{
    Wizard wizard(kServerActionsMask);
    QTest::mouseClick(wizard.Link("smsLink"), Qt::LeftButton);
    EXPECT_EQ(wizard.dialog.result(), QDialog::Accepted);
    EXPECT_EQ(wizard.dialog.Kind(), unsigned(kActionSms));
}

TEST(ActionsWizzard, EnterOrSpaceOnALinkChoosesIt)
{
    Wizard enter(kClientActionsMask);
    QTest::keyClick(enter.Link("beepLink"), Qt::Key_Return);
    EXPECT_EQ(enter.dialog.Kind(), unsigned(kActionBeep));
    EXPECT_EQ(enter.dialog.result(), QDialog::Accepted);

    Wizard space(kClientActionsMask);
    QTest::keyClick(space.Link("launchWebLink"), Qt::Key_Space);
    EXPECT_EQ(space.dialog.Kind(), unsigned(kActionLaunchWeb));
}

TEST(ActionsWizzard, CancelChoosesNothing)
{
    Wizard wizard(kServerActionsMask);
    wizard.dialog.findChild<QPushButton*>("cancelButton")->click();
    EXPECT_EQ(wizard.dialog.result(), QDialog::Rejected);
    EXPECT_EQ(wizard.dialog.Kind(), 0u);

    Wizard escape(kServerActionsMask);
    QTest::keyClick(&escape.dialog, Qt::Key_Escape);
    EXPECT_EQ(escape.dialog.result(), QDialog::Rejected);
    escape.dialog.Choose(kActionScreen);
    EXPECT_EQ(escape.dialog.Kind(), 0u) << "a kind the mask does not allow is never chosen";
}

} // namespace
