// The two seams every dialog goes through: the message box (ZoMessage) and DoModal (ZoModal).
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Clicks `button` of the next message box as soon as it is up, as a user would, after
// checking that the box shows `text` with `icon` under the program's title.
void ClickInNextBox(char const* button, QString const& text, QMessageBox::Icon icon)
{
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        EXPECT_EQ(box->text().toStdString(), text.toStdString());
        EXPECT_EQ(box->icon(), icon);
        EXPECT_EQ(box->windowTitle(), QGuiApplication::applicationDisplayName());
        if (auto* clicked = box->findChild<QPushButton*>(QString::fromLatin1(button)))
            clicked->click();
        else
            box->done(0); // the test then fails on the answer instead of waiting forever
        timer->stop();
        timer->deleteLater();
    });
    timer->start(10);
}

} // namespace

TEST(Messages, RealBoxShowsTheTextAndReturnsTheAnswerClicked)
{
    ZoMessageAnswerer const before = ZoGetMessageAnswerer();
    ZoSetMessageAnswerer({}); // no answerer: the real box
    ClickInNextBox("noButton", ZoText(32792), QMessageBox::Question);
    EXPECT_FALSE(ZoAskYesNo(nullptr, 32792));
    ClickInNextBox("yesButton", ZoText(32774), QMessageBox::Question);
    EXPECT_TRUE(ZoAskYesNo(nullptr, 32774));
    ClickInNextBox("okButton", QStringLiteral("Events of group A"), QMessageBox::Information);
    ZoShowMessageText(nullptr, 32783, L"Events of group A", ZoMsgIcon::Information);
    ZoSetMessageAnswerer(before);
}

TEST(Modal, DoModalInitialisesOnceBeforeRunning)
{
    struct Counting : ZoDialog {
        int inits = 0;
        void OnInitDialog() override { ++inits; }
    } dialog;
    ZoModalRunner const before = ZoGetModalRunner();
    int runs = 0;
    ZoSetModalRunner([&](QDialog& run) {
        EXPECT_EQ(&run, &dialog);
        EXPECT_EQ(dialog.inits, 1) << "initialised before it is run";
        return ++runs == 1 ? int(QDialog::Accepted) : int(QDialog::Rejected);
    });
    EXPECT_EQ(dialog.DoModal(), QDialog::Accepted);
    dialog.EnsureInitialized();
    EXPECT_EQ(dialog.DoModal(), QDialog::Rejected) << "the runner's result is returned";
    EXPECT_EQ(dialog.inits, 1) << "OnInitDialog runs once however often the dialog is run";
    ZoSetModalRunner(before);
}
