#include "platform/reports/CDlgSearchReplace.h"
#include "platform/tools/ZoTexts.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The dialog shown offscreen, with every notification it sends written down as
// "wParam:command:find>replace" plus "/case" when match case is on.
struct SearchDialog {
    SearchDialog()
    {
        QObject::connect(&dialog, &CDlgSearchReplace::SearchReplaceNotify, [this](int wParam, ZoSearchReplaceRequest const& r) {
            sent << QString("%1:%2:%3>%4%5")
                        .arg(wParam)
                        .arg(QString::fromStdWString(r.command), QString::fromStdWString(r.find),
                             QString::fromStdWString(r.replace), r.matchCase ? "/case" : "");
        });
        dialog.show();
        QApplication::setActiveWindow(&dialog);
    }
    template <class W>
    W* Get(char const* name) const { return dialog.findChild<W*>(name); }
    // Which controls are visible, e.g. "find replace Replace ReplaceAll".
    QString Shown() const
    {
        QStringList shown;
        for (char const* name : {"findEdit", "replaceEdit", "findNextButton", "replaceButton", "replaceAllButton",
                                 "replaceModeButton", "closeButton"})
            if (dialog.findChild<QWidget*>(name)->isVisible())
                shown << name;
        return shown.join(' ');
    }

    CDlgSearchReplace dialog{nullptr};
    QStringList sent;
};

} // namespace

TEST(SearchReplaceDialog, FindModeShowsTheFindControlsAloneAndReplaceModeAddsTheReplaceRow)
{
    SearchDialog s;
    EXPECT_FALSE(s.dialog.isModal());
    EXPECT_EQ(s.Shown(), "findEdit findNextButton replaceModeButton closeButton");
    EXPECT_EQ(s.dialog.windowTitle(), ZoText(63400));
    s.dialog.SetReplace(true);
    EXPECT_EQ(s.Shown(), "findEdit replaceEdit findNextButton replaceButton replaceAllButton closeButton");
    EXPECT_EQ(s.dialog.windowTitle(), ZoText(63401));
    EXPECT_EQ(s.Get<QPushButton>("replaceButton")->text().remove('&'), ZoText(34893));
    s.dialog.SetReplace(false);
    EXPECT_FALSE(s.Get<QLineEdit>("replaceEdit")->isVisible());
}

TEST(SearchReplaceDialog, ButtonsSendTheirCommandWithTheTextsAndMatchCase)
{
    SearchDialog s;
    s.Get<QLineEdit>("findEdit")->setText("Pump");
    s.Get<QLineEdit>("replaceEdit")->setText("Fan");
    s.Get<QPushButton>("findNextButton")->click();
    s.dialog.SetReplace(true);
    s.Get<QCheckBox>("matchCaseCheck")->setChecked(true);
    s.Get<QPushButton>("findNextButton")->click();
    s.Get<QPushButton>("replaceButton")->click();
    s.Get<QPushButton>("replaceAllButton")->click();
    // Find Next only finds: it never carries the replacement (nor does anything while the
    // replacement is hidden), so the editor it opens shows OK, not Replace.
    EXPECT_EQ(s.sent, (QStringList{"0:Search:Pump>", "0:Search:Pump>/case", "0:Replace:Pump>Fan/case",
                                   "0:ReplaceAll:Pump>Fan/case"}));
}

TEST(SearchReplaceDialog, EnterIsFindNextAndEscapeClosesWithTheClosingNotification)
{
    SearchDialog s;
    QLineEdit* find = s.Get<QLineEdit>("findEdit");
    EXPECT_TRUE(find->hasFocus());
    QTest::keyClicks(find, "abc");
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(s.sent, (QStringList{"0:Search:abc>"}));
    QTest::keyClick(find, Qt::Key_Escape);
    EXPECT_FALSE(s.dialog.isVisible());
    EXPECT_EQ(s.sent.last(), "1::>");
    // Hiding it from outside is no closing.
    s.sent.clear();
    s.dialog.show();
    s.dialog.hide();
    EXPECT_TRUE(s.sent.isEmpty());
}

TEST(SearchReplaceDialog, CloseButtonAndCtrlHFromTheKeyboard)
{
    SearchDialog s;
    QTest::keyClick(s.Get<QLineEdit>("findEdit"), Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(s.dialog.IsReplace());
    EXPECT_TRUE(s.Get<QLineEdit>("replaceEdit")->hasFocus());
    s.Get<QPushButton>("closeButton")->click();
    EXPECT_FALSE(s.dialog.isVisible());
    EXPECT_EQ(s.sent, (QStringList{"1::>"}));
}

TEST(SearchReplaceDialog, TextsStayAcrossShowsAndEachShowSelectsTheFindText)
{
    SearchDialog s;
    s.dialog.SetReplace(true);
    s.Get<QLineEdit>("findEdit")->setText("Pump");
    s.Get<QLineEdit>("replaceEdit")->setText("Fan");
    s.Get<QPushButton>("closeButton")->click();
    s.dialog.SetReplace(false);
    s.dialog.show();
    QApplication::setActiveWindow(&s.dialog);
    QLineEdit* find = s.Get<QLineEdit>("findEdit");
    EXPECT_EQ(find->text(), "Pump");
    EXPECT_EQ(find->selectedText(), "Pump");
    EXPECT_TRUE(find->hasFocus());
    s.Get<QPushButton>("replaceModeButton")->click();
    EXPECT_EQ(s.Get<QLineEdit>("replaceEdit")->text(), "Fan");
}

TEST(SearchReplaceDialog, EveryLabelAndButtonHasAMnemonicAndTheFieldsExplainThemselves)
{
    SearchDialog s;
    s.dialog.SetReplace(true);
    QStringList texts;
    for (QLabel* label : s.dialog.findChildren<QLabel*>()) {
        texts << label->text();
        EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
    }
    for (char const* name : {"matchCaseCheck", "findNextButton", "replaceButton", "replaceAllButton",
                             "replaceModeButton", "closeButton"})
        texts << s.Get<QAbstractButton>(name)->text();
    EXPECT_EQ(texts.size(), 8);
    for (QString const& text : texts)
        EXPECT_TRUE(text.contains('&')) << text.toStdString();
    EXPECT_FALSE(s.Get<QLineEdit>("findEdit")->toolTip().isEmpty());
    EXPECT_FALSE(s.Get<QLineEdit>("replaceEdit")->toolTip().isEmpty());
}
