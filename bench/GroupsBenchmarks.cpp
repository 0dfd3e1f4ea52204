// The event groups dialog on a large project: opening it (every group's members collected
// from the events) and adding thousands of events to a group through the selection dialog.
// Each is measured beside the XML library alone walking the same events and reading their
// group ids, in the same run.
#include "BenchFixtures.h"

#include "groups/ZoDlgSelect.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "platform/ui/ZoModal.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QPushButton>
#include <QTreeView>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;

constexpr int kEvents = 100000;
constexpr int kGroups = 1000;
constexpr int kAdded = 10000;

// The generated project with its groups replaced by `groups` groups, and every event a
// member of exactly two of them (event i of groups i and i * 7 + 3, modulo the count).
std::unique_ptr<LoadedProject> LoadTwoGroupsPerEvent(int events, int groups)
{
    auto project = LoadProject(events);
    std::vector<std::wstring> ids;
    XmlNode* container = project->eventsCfg.Root()->Child(L"eventsGroups");
    container->Reset();
    for (int g = 0; g < groups; ++g) {
        ids.push_back(L"{00000000-0000-4000-8000-" + std::to_wstring(100000000000 + g) + L"}");
        XmlNode* group = container->NewChild(L"eventsGroup");
        group->SetValue(L"id", ids.back());
        group->SetValue(L"name", L"Group " + std::to_wstring(g + 1));
    }
    int i = 0;
    for (XmlNode* event = project->Events()->FirstChild(); event; event = event->NextSibling(), ++i) {
        XmlNode* memberships = event->Child(L"eventsGroups");
        if (!memberships)
            memberships = event->NewChild(L"eventsGroups");
        memberships->Reset();
        int const first = i % groups;
        int second = (i * 7 + 3) % groups;
        if (second == first)
            second = (second + 1) % groups;
        memberships->NewChild(L"eventsGroup")->SetValue(ids[std::size_t(first)]);
        memberships->NewChild(L"eventsGroup")->SetValue(ids[std::size_t(second)]);
    }
    return project;
}

LoadedProject& TwoGroupsProject()
{
    static std::unique_ptr<LoadedProject> project = LoadTwoGroupsPerEvent(kEvents, kGroups);
    return *project;
}

// The same document loaded by the XML library, for the floors.
pugi::xml_document const& PugiDocument(XmlDocument const& doc)
{
    static std::unordered_map<XmlDocument const*, std::unique_ptr<pugi::xml_document>> loaded;
    auto& slot = loaded[&doc];
    if (!slot) {
        std::string text;
        doc.Root()->CreateXmlCode(text);
        slot = std::make_unique<pugi::xml_document>();
        slot->load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    }
    return *slot;
}

// Floor: the library walks the events and reads each one's name and group ids, collecting
// per group id how many members it has (what the dialog's fill reads, without the names).
long PugiWalkMemberships(pugi::xml_document const& doc, std::unordered_map<std::string_view, int>& members)
{
    long read = 0;
    pugi::xml_node const root = doc.document_element();
    for (pugi::xml_node event = root.child("events").child("event"); event; event = event.next_sibling("event")) {
        benchmark::DoNotOptimize(event.child("name").text().get());
        for (pugi::xml_node membership : event.child("eventsGroups").children()) {
            ++members[membership.text().get()];
            ++read;
        }
    }
    return read;
}

void BM_GroupsDialogFill(benchmark::State& state)
{
    LoadedProject& project = TwoGroupsProject();
    int rows = 0;
    for (auto _ : state) {
        auto dialog = std::make_unique<ZoEDlgEventGroupsCfg>(nullptr, &project.eventsCfg);
        dialog->EnsureInitialized();
        rows = dialog->findChild<QTreeView*>("groupsList")->model()->rowCount();
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
    state.counters["groups"] = rows;
}

void BM_PugiGroupMemberships(benchmark::State& state)
{
    pugi::xml_document const& doc = PugiDocument(TwoGroupsProject().eventsCfg);
    long read = 0;
    for (auto _ : state) {
        std::unordered_map<std::string_view, int> members;
        read = PugiWalkMemberships(doc, members);
        benchmark::DoNotOptimize(members.size());
    }
    state.counters["memberships"] = static_cast<double>(read);
}

// Adds `kAdded` events (a block of rows chosen in the selection dialog) to the first group
// of the generated 100,000-event project: the candidates collected, the selection dialog
// filled and closed with OK, the memberships written and the member list refilled. Each
// round is undone afterwards (outside the timing) through the document's journal.
void BM_GroupAddMembers(benchmark::State& state)
{
    int const added = static_cast<int>(state.range(0));
    auto project = LoadProject(kEvents);
    ZoEDlgEventGroupsCfg dialog(nullptr, &project->eventsCfg);
    dialog.EnsureInitialized();
    auto* groups = dialog.findChild<QTreeView*>("groupsList");
    auto* members = dialog.findChild<QTreeView*>("membersList");
    groups->selectionModel()->select(groups->model()->index(0, 0),
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    auto* addMember = dialog.findChild<QPushButton*>("addMemberButton");
    int const before = members->model()->rowCount();

    ZoModalRunner const previous = ZoGetModalRunner();
    int offered = 0;
    ZoSetModalRunner([&](QDialog& shown) {
        auto* list = shown.findChild<QTreeView*>("selectList");
        offered = list->model()->rowCount();
        QItemSelection block(list->model()->index(0, 0), list->model()->index(added - 1, 0));
        list->selectionModel()->select(block, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        shown.setResult(QDialog::Rejected);
        shown.findChild<QPushButton*>("okButton")->click();
        return shown.result();
    });
    int after = 0;
    for (auto _ : state) {
        state.PauseTiming();
        project->eventsCfg.BeginJournal();
        state.ResumeTiming();
        addMember->click();
        state.PauseTiming();
        after = members->model()->rowCount();
        // The dialog's record of the group is put back by refilling it after the undo.
        project->eventsCfg.UndoJournal();
        groups->selectionModel()->clearSelection();
        emit groups->header()->sectionClicked(0);
        emit groups->header()->sectionClicked(0);
        groups->selectionModel()->select(groups->model()->index(0, 0),
                                         QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        state.ResumeTiming();
    }
    ZoSetModalRunner(previous);
    if (after - before != added)
        state.SkipWithError("the members were not added");
    state.counters["offered"] = offered;
    state.counters["added"] = after - before;
}

// Floor: the library walks the same events, reading each one's name and group ids to tell
// whether it belongs to the first group (what collecting the candidates reads).
void BM_PugiGroupCandidates(benchmark::State& state)
{
    auto project = LoadProject(kEvents);
    pugi::xml_document const& doc = PugiDocument(project->eventsCfg);
    std::string const id = doc.document_element().child("eventsGroups").child("eventsGroup").child_value("id");
    long candidates = 0;
    for (auto _ : state) {
        candidates = 0;
        pugi::xml_node const events = doc.document_element().child("events");
        for (pugi::xml_node event = events.first_child(); event; event = event.next_sibling()) {
            bool member = false;
            for (pugi::xml_node membership : event.child("eventsGroups").children())
                member = member || id == membership.text().get();
            if (!member) {
                benchmark::DoNotOptimize(event.child("name").text().get());
                ++candidates;
            }
        }
    }
    state.counters["candidates"] = static_cast<double>(candidates);
}

} // namespace

BENCHMARK(BM_GroupsDialogFill)->Name("BM_GroupsDialogFill/1000x100000")->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PugiGroupMemberships)->Name("BM_PugiGroupMemberships/1000x100000")->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GroupAddMembers)->Arg(kAdded)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PugiGroupCandidates)->Arg(kEvents)->Iterations(5)->Unit(benchmark::kMillisecond);
