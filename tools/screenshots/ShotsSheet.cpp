// The import preview of Events > Import from Spreadsheet… on the demo project's sheet as a
// script edited it: a rename, a changed condition, a group to create, a new event
// (sheet-import.png).
#include "MainWindow.h"
#include "ProjectFolder.h"
#include "SheetImportDlg.h"
#include "ShotSupport.h"
#include "spreadsheet/EventsExport.h"

#include <QCheckBox>
#include <QTreeView>

namespace {

void Replace(std::string& sheet, std::string const& from, std::string const& to)
{
    std::size_t const at = sheet.find(from);
    if (at == std::string::npos)
        Fail("sheet scene: the demo's sheet has changed");
    else
        sheet.replace(at, from.size(), to);
}

void Run(MainWindow& window, QString const& projectCopy)
{
    ProjectFolder* project = window.Project();
    if (!project) {
        Fail("sheet scene: no project");
        return;
    }
    std::string sheet;
    ZoExportEvents(project->Events().Root(), project->TimeTables().Root(), sheet);
    Replace(sheet, ",Tank overflow,", ",Reservoir overflow,");
    Replace(sheet, "[PUMP1.FAULT] == 1,,", "[PUMP1.FAULT] == 1,[PUMP1.FAULT] == 0,");
    Replace(sheet, ",Reservoir | Pumps,", ",Reservoir | Pumps | Night shift,");
    sheet += ",Night check,Reservoir above 60 % at night,T,T,F,[PLC1.TANK_LEVEL] > 60,,10,0,Out of hours,Reservoir,"
             ",,,,F,F,F,\r\n";
    ZoImportTarget target;
    target.events = &project->Events();
    target.timeTables = &project->TimeTables();
    target.devices = &project->Devices();
    target.folder = projectCopy.toStdWString();
    SheetImportDlg dialog(&window, projectCopy + "/events.csv", std::move(sheet), target);
    dialog.EnsureInitialized();
    dialog.findChild<QCheckBox*>(QStringLiteral("createGroupsCheck"))->setChecked(true);
    dialog.resize(980, 420);
    Show(dialog);
    auto* list = dialog.findChild<QTreeView*>(QStringLiteral("previewList"));
    list->setCurrentIndex(list->model()->index(1, 0));
    Save(dialog, "sheet-import.png");
    dialog.reject();
}

bool const registered = RegisterShotScene({"sheet import", 1, Run});

} // namespace
