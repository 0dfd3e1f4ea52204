// Events > Export to Spreadsheet… and Import from Spreadsheet…: the file dialogs, the
// preview dialog as the user sees it and works it from the keyboard, and what is saved.
#include "HostTestSupport.h"
#include "SheetImportDlg.h"
#include "platform/ui/ZoWaitDlg.h"
#include "spreadsheet/EventsExport.h"
#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QFileDialog>
#include <QStatusBar>
#include <QTest>

using namespace host_test;

namespace {

ModalScript::Step ChooseFile(QString const& path)
{
    return ModalScript::As<QFileDialog>([path](QFileDialog& dialog) {
        dialog.selectFile(path);
        static_cast<QDialog&>(dialog).accept();
        return int(QDialog::Accepted);
    });
}

ModalScript::Step RunWaitBox()
{
    return ModalScript::As<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); });
}

// The preview's rows as "line | kind | event | details".
QStringList Rows(SheetImportDlg const& dialog)
{
    QStringList rows;
    SheetImportModel const& model = dialog.Model();
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < SheetImportModel::ColumnCount; ++column)
            cells << model.index(row, column).data().toString();
        rows << cells.join(" | ");
    }
    return rows;
}

QString Text(QDialog const& dialog, char const* label)
{
    return dialog.findChild<QLabel*>(label)->text();
}

std::string DemoSheet(DemoWindow& demo)
{
    std::string sheet;
    ZoExportEvents(demo.window.Project()->Events().Root(), demo.window.Project()->TimeTables().Root(), sheet);
    return sheet;
}

class HostSheet : public HostTest {};

TEST_F(HostSheet, ExportWritesTheSheetOfTheProjectToTheChosenFile)
{
    DemoWindow demo;
    QString const path = demo.dir.filePath("out.csv");
    {
        ModalScript modal(ChooseFile(path));
        demo.window.findChild<QAction*>("exportSheetAction")->trigger();
        EXPECT_EQ(modal.Classes(), QStringList{"QFileDialog"});
    }
    QByteArray const written = ReadBytes(path);
    EXPECT_EQ(written.toStdString(), DemoSheet(demo));
    EXPECT_EQ(demo.window.statusBar()->currentMessage(), Said(64685, 24, path.toStdWString().c_str()));
}

TEST_F(HostSheet, ThePreviewShowsEveryChangeAndItsOkAppliesAndSavesThemAsOne)
{
    DemoWindow demo;
    std::string sheet = DemoSheet(demo);
    sheet.replace(sheet.find(",Tank overflow,"), 15, ",Reservoir overflow,");
    sheet.replace(sheet.find(",Reservoir | Pumps,"), 19, ",Reservoir | Spare,");
    sheet += ",Night check,,T,F,F,[PLC1.TANK_LEVEL] > 60,,10,0,,,,,,,F,F,F,\r\n";
    QString const path = demo.dir.filePath("edited.csv");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(sheet.data(), static_cast<qint64>(sheet.size()));
    }
    QByteArray const eventsBefore = ReadBytes(demo.File(ProjectDoc::Events));
    QByteArray const devicesBefore = ReadBytes(demo.File(ProjectDoc::Devices));

    // Refused at first (an unknown group); the keyboard reaches the list, the options and
    // Cancel, and Escape leaves the project as it was.
    auto const preview = [&](std::function<int(SheetImportDlg&)> step) {
        ModalScript modal(ChooseFile(path));
        if (!demo.window.Project()->Users().Root())
            modal.Then(RunWaitBox());
        modal.Then(ModalScript::As<SheetImportDlg>(std::move(step)));
        demo.window.findChild<QAction*>("importSheetAction")->trigger();
    };
    preview([&](SheetImportDlg& dialog) {
        QAbstractItemModelTester tester(const_cast<SheetImportModel*>(&dialog.Model()));
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        EXPECT_EQ(QApplication::focusWidget(), dialog.findChild<QTreeView*>("previewList"));
        EXPECT_EQ(Text(dialog, "countsLabel"), Said(64624, 1, 1, 22));
        EXPECT_EQ(Text(dialog, "statusLabel"), ZoText(64674));
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        EXPECT_EQ(Rows(dialog).value(0),
                  "5 | " + ZoText(64650) + " |  | " + Said(64664, 12) + " (groups): " + Said(64619, L"Spare"));
        auto* create = dialog.findChild<QCheckBox*>("createGroupsCheck");
        EXPECT_EQ(create->shortcut(), QKeySequence::mnemonic(ZoText(64672)));
        EXPECT_FALSE(create->shortcut().isEmpty());
        for (int tab = 0; tab < 2; ++tab)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), create);
        QTest::keyClick(create, Qt::Key_Space);
        EXPECT_TRUE(create->isChecked());
        QString const modified = ZoText(64652);
        EXPECT_EQ(Rows(dialog).join("\n").toStdString(),
                  (QStringList{" | " + ZoText(64655) + " | Spare | ",
                               "3 | " + modified + " | Reservoir overflow | " +
                                   Said(64629, L"name", L"Tank overflow", L"Reservoir overflow"),
                               "5 | " + modified + " | Tank dry-run risk | " +
                                   Said(64629, L"groups", L"Reservoir | Pumps", L"Reservoir | Spare"),
                               "26 | " + ZoText(64653) + " | Night check | ",
                               "26 | " + ZoText(64657) + " | Night check | " + ZoText(64512) + ": " +
                                   Said(64548, L"[PLC1.TANK_LEVEL]")})
                      .join("\n")
                      .toStdString());
        EXPECT_TRUE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        QTest::keyClick(dialog.findChild<QTreeView*>("previewList"), Qt::Key_Escape);
        return dialog.result();
    });
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), eventsBefore);
    EXPECT_EQ(demo.window.Project()->Events().Root()->Node(L"eventsGroups/eventsGroup?name=Spare?"), nullptr);

    preview([&](SheetImportDlg& dialog) {
        dialog.findChild<QCheckBox*>("createGroupsCheck")->setChecked(true);
        return ModalScript::ClickOk(dialog);
    });
    QByteArray const events = ReadBytes(demo.File(ProjectDoc::Events));
    EXPECT_TRUE(events.contains("<name>Reservoir overflow</name>"));
    EXPECT_TRUE(events.contains("<name>Night check</name>"));
    EXPECT_TRUE(events.contains("<name>Spare</name>"));
    EXPECT_NE(ReadBytes(demo.File(ProjectDoc::Devices)), devicesBefore); // the new event is registered
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    EXPECT_EQ(demo.window.statusBar()->currentMessage(), Said(64688, Said(64624, 1, 2, 22).toStdWString().c_str()));
}

TEST_F(HostSheet, AnUnreadableSheetIsToldAndAnUnchangedOneChangesNothing)
{
    DemoWindow demo;
    ScriptedAnswerer answers;
    {
        QFile file(demo.dir.filePath("bad.csv"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("\xFF\xFEi\0d\0", 6);
    }
    {
        ModalScript modal(ChooseFile(demo.dir.filePath("bad.csv")));
        modal.Then(RunWaitBox()).Then(ModalScript::As<SheetImportDlg>([](SheetImportDlg& dialog) {
            EXPECT_EQ(dialog.Model().index(0, SheetImportModel::DetailsColumn).data().toString(),
                      Said(64664, 1) + ": " + ZoText(64601));
            return ModalScript::ClickOk(dialog);
        }));
        demo.window.findChild<QAction*>("importSheetAction")->trigger();
    }
    QString const path = demo.dir.filePath("same.csv");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        std::string const sheet = DemoSheet(demo);
        file.write(sheet.data(), static_cast<qint64>(sheet.size()));
    }
    QByteArray const events = ReadBytes(demo.File(ProjectDoc::Events));
    ModalScript modal(ChooseFile(path));
    modal.Then(ModalScript::As<SheetImportDlg>([](SheetImportDlg& dialog) {
        EXPECT_EQ(Text(dialog, "statusLabel"), ZoText(64675));
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        return ModalScript::ClickOk(dialog);
    }));
    demo.window.findChild<QAction*>("importSheetAction")->trigger();
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), events);
    EXPECT_TRUE(answers.Ids().empty());
}

} // namespace
