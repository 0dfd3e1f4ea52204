// The project-wide changes as the user makes them through the host editor on a generated
// project: a rename of a PLC (the dialog, its preview, OK, the save of both files) and the
// import of an edited spreadsheet (the file chosen, the preview with the check of the
// imported events, Import, the save). Each iteration changes the project, the next one
// changes it back, so every iteration does the same work.
#include "JourneyChecks.h"
#include "JourneyScript.h"
#include "JourneySizes.h"
#include "JourneyWindow.h"
#include "ProjectFolder.h"
#include "ProjectFolderGenerator.h"
#include "RenameDlg.h"
#include "SheetImportDlg.h"
#include "StepTimer.h"
#include "platform/ui/ZoWaitDlg.h"
#include "spreadsheet/CsvReader.h"
#include "spreadsheet/CsvWriter.h"
#include "spreadsheet/EventsExport.h"

#include <QAbstractItemView>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>

#include <benchmark/benchmark.h>

#include <string>

using namespace zo::bench;

namespace {

// The rows of the sheet whose description an import changes: one in a hundred.
constexpr std::size_t kEditedRowStep = 100;

// Opens a window on the benchmark's project (outside the timing) and runs `session` with
// the iteration's number.
template <class Session>
void EachChange(benchmark::State& state, Session session)
{
    GeneratedProjectFolder const& folder = SharedProjectFolder(static_cast<int>(state.range(0)));
    JourneyScript script;
    JourneyWindow window;
    if (!window.Open(folder)) {
        state.SkipWithError("the host did not open the generated project");
        return;
    }
    StepTimer timer(state);
    int iteration = 0;
    for (auto _ : state) {
        timer.BeginIteration();
        session(script, window, timer, iteration++);
        timer.EndIteration();
        if (!WentAsScripted(state, script, timer))
            break;
    }
}

bool FileHolds(QString const& path, QByteArray const& text)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(text);
}

// Events > Rename…: PLC1 (every formula of one PLC in eight) renamed, the preview shown by
// the first OK, applied by the second, until OnRename has returned with both files saved.
void BM_JourneyRenameDevice(benchmark::State& state)
{
    std::size_t changes = 0;
    EachChange(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer, int iteration) {
        QString const from = iteration % 2 == 0 ? "PLC1" : "PLC1_RENAMED";
        QString const to = iteration % 2 == 0 ? "PLC1_RENAMED" : "PLC1";
        int result = QDialog::Rejected;
        script.ThenAs<RenameDlg>([&](RenameDlg& dialog) {
            dialog.findChild<QLineEdit*>("oldNameEdit")->setText(from);
            dialog.findChild<QLineEdit*>("newNameEdit")->setText(to);
            ClickButton(script, dialog, "okButton");
            changes = dialog.Plan().changes.size();
            if (changes == 0)
                script.Fail("the preview lists no change");
            result = ClickButton(script, dialog, "okButton");
            return result;
        });
        timer.Start();
        window.Window().OnRename();
        timer.Stop();
        if (result != QDialog::Accepted)
            script.Fail("the rename dialog did not end with OK");
        else if (window.Window().HasUnsavedChanges())
            script.Fail("the host did not save the renamed project");
    });
    GeneratedProjectFolder const& folder = SharedProjectFolder(static_cast<int>(state.range(0)));
    if (!state.error_occurred() && state.iterations() % 2 == 1
        && !FileHolds(folder.FilePath(zo::project::ProjectDoc::Devices), "<name>PLC1_RENAMED</name>"))
        state.SkipWithError("Devices.zocfg does not hold the new name");
    state.counters["changes"] = static_cast<double>(changes);
}

// Two versions of the project's sheet: every hundredth event's description with a mark of
// its own, so that importing one after the other always modifies those events.
void WriteEditedSheets(JourneyWindow& window, QString const& pathA, QString const& pathB)
{
    std::string sheet;
    ZoExportEvents(window.Window().Project()->Events().Root(), window.Window().Project()->TimeTables().Root(), sheet);
    ZoCsvTable table;
    if (!table.Read(sheet))
        return;
    for (auto const& [path, mark] : {std::pair{pathA, " (a)"}, std::pair{pathB, " (b)"}}) {
        std::string edited;
        ZoCsvWriter writer(edited);
        writer.Begin();
        for (std::size_t row = 0; row < table.RowCount(); ++row) {
            for (std::size_t cell = 0; cell < table.CellCount(row); ++cell) {
                bool const marked = row > 0 && row % kEditedRowStep == 0 && cell == 2;
                writer.Cell(marked ? std::string(table.Cell(row, cell)) + mark : std::string(table.Cell(row, cell)));
            }
            writer.EndRow();
        }
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(edited.data(), static_cast<qint64>(edited.size()));
    }
}

// Events > Import from Spreadsheet…: the edited sheet chosen, the preview planned and
// checked, Import, until OnImportSheet has returned with both files saved.
void BM_JourneyImportSheet(benchmark::State& state)
{
    QTemporaryDir sheets;
    QString const pathA = sheets.filePath("edited-a.csv");
    QString const pathB = sheets.filePath("edited-b.csv");
    int const events = static_cast<int>(state.range(0));
    EachChange(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer, int iteration) {
        if (iteration == 0)
            WriteEditedSheets(window, pathA, pathB);
        QString const path = iteration % 2 == 0 ? pathA : pathB;
        script.ThenAs<QFileDialog>([&](QFileDialog& dialog) {
            dialog.selectFile(path);
            static_cast<QDialog&>(dialog).accept();
            return int(QDialog::Accepted);
        });
        if (!window.Window().Project()->Users().Root())
            script.ThenAs<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); });
        int result = QDialog::Rejected;
        script.ThenAs<SheetImportDlg>([&](SheetImportDlg& dialog) {
            if (static_cast<int>(dialog.Plan().modified.size()) != events / static_cast<int>(kEditedRowStep))
                script.Fail("the preview does not modify every edited event");
            result = ClickButton(script, dialog, "okButton");
            return result;
        });
        timer.Start();
        window.Window().OnImportSheet();
        timer.Stop();
        if (result != QDialog::Accepted)
            script.Fail("the import preview did not end with Import");
        else if (window.Window().HasUnsavedChanges())
            script.Fail("the host did not save the imported events");
    });
}

} // namespace

ZO_JOURNEY_BENCHMARK(BM_JourneyRenameDevice);
ZO_JOURNEY_BENCHMARK(BM_JourneyImportSheet);
