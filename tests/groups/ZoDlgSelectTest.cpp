#include "groups/ZoDlgSelect.h"
#include "platform/tools/ZoTexts.h"
#include <QAbstractItemModelTester>
#include <gtest/gtest.h>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace {

struct SelectRun {
    SelectRun(std::vector<std::wstring> choices, int mode)
        : names(std::move(choices))
        , dialog(nullptr, names, mode)
    {
        dialog.EnsureInitialized();
        dialog.show();
        list = dialog.findChild<QTreeView*>("selectList");
        tester = std::make_unique<QAbstractItemModelTester>(list->model(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    void Select(std::initializer_list<int> rows)
    {
        for (int row : rows)
            list->selectionModel()->select(list->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    int Ok()
    {
        dialog.setResult(-1);
        dialog.findChild<QPushButton*>("okButton")->click();
        return dialog.result();
    }

    std::vector<std::wstring> names;
    ZoDlgSelect dialog;
    QTreeView* list = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

} // namespace

TEST(SelectionDialog, ShowsTheChoicesInTheirOrderWithTheModesTexts)
{
    SelectRun events({L"b", L"A", L"c"}, 0);
    EXPECT_EQ(events.dialog.windowTitle(), ZoText(32784));
    EXPECT_EQ(events.dialog.findChild<QLabel*>("selectPrompt")->text().remove(u'&'), ZoText(32782));
    EXPECT_EQ(events.list->model()->rowCount(), 3);
    EXPECT_EQ(events.list->model()->index(1, 0).data().toString(), QStringLiteral("A"));
    EXPECT_EQ(events.list->model()->headerData(0, Qt::Horizontal).toString(), ZoText(355));

    SelectRun groups({L"x"}, ZoDlgSelect::kGroupsMode);
    EXPECT_EQ(groups.dialog.windowTitle(), ZoText(32785));
    EXPECT_EQ(groups.dialog.findChild<QLabel*>("selectPrompt")->text().remove(u'&'), ZoText(382));
}

TEST(SelectionDialog, OkHandsBackTheChosenRowsInRowOrder)
{
    SelectRun select({L"one", L"two", L"three"}, 0);
    select.Select({2, 0});
    EXPECT_EQ(select.Ok(), int(QDialog::Accepted));
    EXPECT_EQ(select.names, (std::vector<std::wstring>{L"one", L"three"}));
}

TEST(SelectionDialog, OkWithNothingChosenIsCancel)
{
    SelectRun select({L"one", L"two"}, 0);
    EXPECT_EQ(select.Ok(), int(QDialog::Rejected));
    EXPECT_TRUE(select.names.empty());
}

TEST(SelectionDialog, DoubleClickChoosesTheRow)
{
    SelectRun select({L"one", L"two"}, 1);
    select.Select({0});
    QRect const cell = select.list->visualRect(select.list->model()->index(1, 0));
    select.dialog.setResult(-1);
    // As the window system sends it: a click, then the double click on the same row.
    QTest::mouseClick(select.list->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(select.list->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(select.dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(select.names, std::vector<std::wstring>{L"two"});
}
