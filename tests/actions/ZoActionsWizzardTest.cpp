// The actions wizard: one link per allowed kind, in the fixed order, the dialog as tall as
// its links; a link ends it with OK and its kind, Cancel with nothing.
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/ui/ZoHyperlink.h"

#include "platform/tools/ZoTexts.h"
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

// The links' captions of these kinds, as Links() gives them, in the language of the run.
std::string Captions(std::initializer_list<unsigned> ids)
{
    QStringList captions;
    for (unsigned const id : ids)
        captions << ZoText(id);
    return captions.join(QLatin1Char('|')).toStdString();
}

TEST(ActionsWizzard, AServerWhileListOffersTwoLinksAndIsShort)
{
    Wizard server(kServerWhileMask);
    Wizard client(kClientActionsMask);
    EXPECT_EQ(server.Links(), Captions({32846, 32847})); // force a variable, run a command
    // Run a command, show a screen, print a report, act on a device, beep, web page.
    EXPECT_EQ(client.Links(), Captions({32847, 34108, 34109, 34110, 34111, 39954}));
    EXPECT_LT(server.dialog.height(), client.dialog.height()) << "as tall as its links";
    EXPECT_FALSE(server.Link("mailLink")->isEnabled());
    EXPECT_EQ(server.dialog.windowTitle(), ZoText(32844));
    EXPECT_EQ(server.dialog.findChild<QLabel*>("introText")->text(), ZoText(32845));
    EXPECT_EQ(server.dialog.focusWidget(), server.Link("forceLink"));
}

TEST(ActionsWizzard, EveryKindHasItsLinkWithAnIconInTableOrder)
{
    Wizard all(0x1FF);
    EXPECT_EQ(all.Links(), Captions({32846, 32847, 34108, 34109, 34110, 34111, 34141, 36276, 39954}));
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
