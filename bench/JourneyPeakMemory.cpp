// The peak resident memory of one whole journey on a project of 100,000 events: open the
// folder, open the events list, modify an event's description in the editor, OK in the
// list, which saves. It must run before anything else of the process loads a document:
// closed documents keep their large blocks in a process-wide pool, which a later journey
// would reuse instead of growing.
#include "EventsListControls.h"
#include "JourneyChecks.h"
#include "JourneyScript.h"
#include "JourneyWindow.h"
#include "ProjectFolderGenerator.h"
#include "ResidentMemory.h"
#include "StepTimer.h"
#include "events/ZoEDlgEventsCfg.h"

#include <benchmark/benchmark.h>

#include <memory>

using namespace zo::bench;

namespace {

constexpr double kMB = 1e6; // megabytes of 10^6 bytes, as in the other figures

void BM_JourneyPeakMemory(benchmark::State& state)
{
    StepTimer timer(state);
    for (auto _ : state) {
        timer.BeginIteration();
        JourneyScript script;
        bool opened = false;
        int listResult = QDialog::Rejected;
        double fileBytes = 0, baseline = 0, peak = 0;
        {
            // A folder of its own (the shared ones are for the timed steps), removed after.
            GeneratedProjectFolder folder(static_cast<int>(state.range(0)));
            fileBytes = folder.FileBytes();
            JourneyWindow window;
            TrimHeap(); // the generator's texts are freed: give their memory back
            if (!ResetPeakResident())
                script.Fail("cannot reset the peak resident set (/proc/self/clear_refs)");
            baseline = static_cast<double>(ResidentBytes());
            timer.Start();
            opened = window.Open(folder);
            script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
                ModifyMiddleDescription(script, list, NextDescription());
                listResult = ClickButton(script, list, "okButton");
                return listResult;
            });
            if (opened)
                window.Window().OnEventsList();
            timer.Stop();
            peak = static_cast<double>(PeakResidentBytes());
            if (!opened)
                script.Fail("the host did not open the generated project");
            else if (listResult != QDialog::Accepted || window.Window().HasUnsavedChanges())
                script.Fail("the journey did not end with the changes saved");
        }
        timer.EndIteration();
        state.counters["file_MB"] = fileBytes / kMB;
        state.counters["baseline_RSS_MB"] = baseline / kMB;
        state.counters["peak_RSS_MB"] = peak / kMB;
        state.counters["peak_RSS_x_file"] = fileBytes > 0 ? peak / fileBytes : 0;
        if (!WentAsScripted(state, script, timer))
            break;
    }
}

} // namespace

BENCHMARK(BM_JourneyPeakMemory)->Arg(100000)->Arg(1000000)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
