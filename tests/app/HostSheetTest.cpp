// Events > Export to Spreadsheet… and Import from Spreadsheet…: the file dialogs, the
// preview dialog as the user sees it and works it from the keyboard, and what is saved.
#include "HostTestSupport.h"
#include "SheetImportDlg.h"
#include "platform/ui/ZoWaitDlg.h"
#include "spreadsheet/EventsExport.h"
#include "support/ScriptedAnswerer.h"

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
    EXPECT_TRUE(demo.window.statusBar()->currentMessage().startsWith("24 events exported to "));
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
        EXPECT_EQ(Text(dialog, "countsLabel"), "1 added, 1 modified, 22 unchanged.");
        EXPECT_TRUE(Text(dialog, "statusLabel").startsWith("The import is refused"));
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        EXPECT_EQ(Rows(dialog).value(0), "5 | Refused |  | Column 12 (groups): No event group is named \"Spare\".");
        auto* create = dialog.findChild<QCheckBox*>("createGroupsCheck");
        EXPECT_EQ(create->shortcut(), QKeySequence(Qt::ALT | Qt::Key_C));
        for (int tab = 0; tab < 2; ++tab)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), create);
        QTest::keyClick(create, Qt::Key_Space);
        EXPECT_TRUE(create->isChecked());
        EXPECT_EQ(Rows(dialog).join("\n").toStdString(),
                  (QStringList{" | New group | Spare | ",
                               "3 | Modified | Reservoir overflow | name: \"Tank overflow\" → \"Reservoir overflow\"",
                               "5 | Modified | Tank dry-run risk | groups: \"Reservoir | Pumps\" → \"Reservoir | Spare\"",
                               "26 | New | Night check | ",
                               "26 | Warning | Night check | stop condition: No deadband: a threshold comparison of "
                               "[PLC1.TANK_LEVEL] without a stop condition."}).join("\n").toStdString());
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
    EXPECT_EQ(demo.window.statusBar()->currentMessage().toStdString(), "Import applied: 1 added, 2 modified, 22 unchanged.");
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
                      "Column 1: The text is not UTF-8. Save the sheet as CSV in UTF-8.");
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
        EXPECT_EQ(Text(dialog, "statusLabel"), "The sheet changes nothing.");
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        return ModalScript::ClickOk(dialog);
    }));
    demo.window.findChild<QAction*>("importSheetAction")->trigger();
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), events);
    EXPECT_TRUE(answers.Ids().empty());
}

} // namespace
