#pragma once
#include <QString>

#include <functional>

class QDialog;
class ZoEDlgEventsCfg;

// What a journey does in the events list and the event editor, through their widgets'
// object names only (eventsList, modifyButton, descriptionEdit, okButton...).
namespace zo::bench {

class JourneyScript;

// Number of rows of the list's view.
int ListRowCount(ZoEDlgEventsCfg& list);
// Number of rows selected in the list's view.
int SelectedRowCount(ZoEDlgEventsCfg& list);
// Selects the row in the middle of the list, as a click on it does.
void SelectMiddleRow(JourneyScript& script, ZoEDlgEventsCfg& list);
// Sets the editor's description field.
void SetDescription(JourneyScript& script, QDialog& editor, QString const& text);

// Selects the middle row and modifies its event's description through the event editor:
// clicks modifyButton, and in the editor sets the description, runs beforeOk (if any) and
// clicks okButton. Records a failure when the list was not changed.
void ModifyMiddleDescription(JourneyScript& script, ZoEDlgEventsCfg& list, QString const& description,
                             std::function<void()> const& beforeOk = {});

// A description that no event has had yet in this run.
QString NextDescription();

} // namespace zo::bench
