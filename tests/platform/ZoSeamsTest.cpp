// The two seams every dialog test relies on: message boxes (ZoMessage) and nested modal
// dialogs (ZoModal), with their test helpers ScriptedAnswerer and ModalScript.
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// A dialog with an OK button that refuses an empty name, and a counter of initialisations.
class NameDialog : public ZoDialog {
    Q_OBJECT
public:
    NameDialog()
    {
        m_edit = new QLineEdit(this);
        m_edit->setObjectName(QStringLiteral("nameEdit"));
        auto* ok = new QPushButton(ZoText(311), this);
        ok->setObjectName(QStringLiteral("okButton"));
        connect(ok, &QPushButton::clicked, this, [this] {
            if (m_edit->text().isEmpty())
                ZoShowMessage(this, 32797);
            else
                accept();
        });
    }
    int initCount = 0;
    QLineEdit* m_edit;

protected:
    void OnInitDialog() override { ++initCount; }
};

class OtherDialog : public ZoDialog {
    Q_OBJECT
};

// Presses a button of the message box as soon as it is up.
void AnswerRealBoxWith(QString const& buttonName, ZoMessage* seen, QString* title)
{
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        seen->text = box->text().toStdWString();
        seen->icon = box->icon() == QMessageBox::Question ? ZoMsgIcon::Question : ZoMsgIcon::Warning;
        seen->buttons = box->findChild<QPushButton*>(QStringLiteral("yesButton")) ? ZoMsgButtons::YesNo
                                                                                 : ZoMsgButtons::Ok;
        *title = box->windowTitle();
        if (auto* button = box->findChild<QPushButton*>(buttonName))
            button->click();
        timer->stop();
        timer->deleteLater();
    });
    timer->start();
}

} // namespace

TEST(Messages, AnswererReceivesEveryMessageWithItsTextAndButtons)
{
    ScriptedAnswerer answers{ZoAnswer::No, ZoAnswer::Yes};
    ZoShowMessage(nullptr, 32797);
    EXPECT_FALSE(ZoAskYesNo(nullptr, 32792)) << "first scripted answer";
    ZoShowMessageText(nullptr, 32783, L"Events of group A", ZoMsgIcon::Information);
    EXPECT_TRUE(ZoAskYesNoText(nullptr, 32786, L"Remove?")) << "second scripted answer";
    EXPECT_TRUE(ZoAskYesNo(nullptr, 32774)) << "an empty script answers Yes";

    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32797, 32792, 32783, 32786, 32774}));
    std::vector<ZoMessage> const& seen = answers.Messages();
    EXPECT_EQ(seen[0].text, ZoLoadString(32797));
    EXPECT_EQ(seen[0].buttons, ZoMsgButtons::Ok);
    EXPECT_EQ(seen[0].icon, ZoMsgIcon::Warning);
    EXPECT_EQ(seen[1].buttons, ZoMsgButtons::YesNo);
    EXPECT_EQ(seen[1].icon, ZoMsgIcon::Question);
    EXPECT_EQ(seen[2].text, L"Events of group A");
    EXPECT_EQ(seen[2].icon, ZoMsgIcon::Information);
    EXPECT_EQ(answers.LastText(), ZoLoadString(32774));
    EXPECT_EQ(answers.Unused(), 0);
}

TEST(Messages, GuardsNestAndRestore)
{
    // Whatever was installed before (in a test run, perhaps a default answerer) comes back.
    ZoMessageAnswerer const before = ZoGetMessageAnswerer();
    int baseCalls = 0;
    ZoSetMessageAnswerer([&](ZoMessage const&) {
        ++baseCalls;
        return ZoAnswer::No;
    });
    {
        ScriptedAnswerer outer;
        {
            ScriptedAnswerer inner{ZoAnswer::No};
            EXPECT_FALSE(ZoAskYesNo(nullptr, 32792));
            EXPECT_EQ(inner.Count(), 1);
        }
        EXPECT_TRUE(ZoAskYesNo(nullptr, 32792)) << "the outer answerer is back";
        EXPECT_EQ(outer.Count(), 1);
        // Plain messages never use up a scripted answer.
        outer.Then(ZoAnswer::No);
        ZoShowMessage(nullptr, 32797);
        EXPECT_EQ(outer.Unused(), 1);
        EXPECT_FALSE(ZoAskYesNo(nullptr, 32792));
    }
    EXPECT_EQ(baseCalls, 0);
    EXPECT_FALSE(ZoAskYesNo(nullptr, 32792));
    EXPECT_EQ(baseCalls, 1) << "the answerer installed before the guards is back";
    ZoSetMessageAnswerer(before);
}

TEST(Messages, RealBoxShowsTheTextWithYesNoButtons)
{
    // No answerer: the real box, answered here by a timer as a user would.
    ZoMessageAnswerer const before = ZoGetMessageAnswerer();
    ZoSetMessageAnswerer({});
    ZoMessage seen;
    QString title;
    AnswerRealBoxWith(QStringLiteral("noButton"), &seen, &title);
    EXPECT_FALSE(ZoAskYesNo(nullptr, 32792));
    EXPECT_EQ(seen.text, ZoLoadString(32792));
    EXPECT_EQ(seen.buttons, ZoMsgButtons::YesNo);
    EXPECT_EQ(seen.icon, ZoMsgIcon::Question);
    EXPECT_EQ(title, QGuiApplication::applicationDisplayName());

    AnswerRealBoxWith(QStringLiteral("yesButton"), &seen, &title);
    EXPECT_TRUE(ZoAskYesNo(nullptr, 32774));

    AnswerRealBoxWith(QStringLiteral("okButton"), &seen, &title);
    ZoShowMessage(nullptr, 32797);
    EXPECT_EQ(seen.text, ZoLoadString(32797));
    EXPECT_EQ(seen.buttons, ZoMsgButtons::Ok);
    ZoSetMessageAnswerer(before);
}

TEST(Modal, DoModalInitialisesOnceAndRunsThroughTheRunner)
{
    ZoModalRunner const before = ZoGetModalRunner();
    NameDialog dialog;
    dialog.EnsureInitialized();
    dialog.EnsureInitialized();
    EXPECT_EQ(dialog.initCount, 1);

    int calls = 0;
    ZoSetModalRunner([&](QDialog& d) {
        ++calls;
        EXPECT_EQ(&d, &dialog);
        return int(QDialog::Accepted);
    });
    EXPECT_EQ(dialog.DoModal(), QDialog::Accepted);
    EXPECT_EQ(dialog.DoModal(), QDialog::Accepted);
    EXPECT_EQ(dialog.initCount, 1) << "OnInitDialog runs once however often the dialog is run";
    EXPECT_EQ(calls, 2);

    NameDialog fresh;
    ZoSetModalRunner([&](QDialog&) {
        EXPECT_EQ(fresh.initCount, 1) << "initialised before it is run";
        return int(QDialog::Rejected);
    });
    EXPECT_EQ(fresh.DoModal(), QDialog::Rejected);
    ZoSetModalRunner(before);
}

TEST(Modal, ScriptPlaysDialogsInOrderAndRecordsThem)
{
    ScriptedAnswerer answers;
    ZoModalRunner const before = ZoGetModalRunner();
    int baseRuns = 0;
    ZoSetModalRunner([&](QDialog&) {
        ++baseRuns;
        return int(QDialog::Accepted);
    });
    {
        ModalScript modal;
        modal.Then(ModalScript::As<NameDialog>([](NameDialog& d) { return ModalScript::ClickOk(d); }))
            .Then(ModalScript::As<NameDialog>([](NameDialog& d) {
                d.m_edit->setText(QStringLiteral("Pump"));
                return ModalScript::ClickOk(d);
            }))
            .Then(ModalScript::Accept());

        NameDialog empty;
        EXPECT_EQ(empty.DoModal(), QDialog::Rejected) << "OK refused an empty name";
        EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32797}));
        NameDialog named;
        EXPECT_EQ(named.DoModal(), QDialog::Accepted);
        OtherDialog other;
        EXPECT_EQ(other.DoModal(), QDialog::Accepted);
        OtherDialog unscripted;
        EXPECT_EQ(unscripted.DoModal(), QDialog::Rejected) << "an empty script rejects";

        EXPECT_EQ(modal.Classes(), (QStringList{"NameDialog", "NameDialog", "OtherDialog", "OtherDialog"}));
        EXPECT_EQ(modal.Unused(), 0);
    }
    OtherDialog after;
    EXPECT_EQ(after.DoModal(), QDialog::Accepted);
    EXPECT_EQ(baseRuns, 1) << "the runner installed before the script is back";
    ZoSetModalRunner(before);
}

TEST(Modal, NestedDialogsTakeTheFollowingSteps)
{
    ModalScript modal;
    NameDialog inner;
    // The first dialog's step opens a second dialog, as a button of a real dialog would.
    modal.Then([&](QDialog& outer) {
             EXPECT_EQ(inner.DoModal(), QDialog::Accepted);
             outer.accept();
             return int(QDialog::Accepted);
         })
        .Then(ModalScript::Accept());
    OtherDialog outer;
    EXPECT_EQ(outer.DoModal(), QDialog::Accepted);
    EXPECT_EQ(modal.Classes(), (QStringList{"OtherDialog", "NameDialog"}));
}

#include "ZoSeamsTest.moc"
