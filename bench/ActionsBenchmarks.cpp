// The action pane on a moment with many actions: filling (and sorting) its list, measured
// against a floor taken in the same run: the XML library alone walking the same moment and
// reading what each row shows.
#include "actions/ZoActionsListModel.h"
#include "actions/ZoEDlgEventActionsCfg.h"
#include "BenchFloor.h"
#include "config/XmlDocument.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstring>
#include <memory>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;

// A moment of `count` actions of every kind in turn, with varied texts.
std::string MomentXml(int count)
{
    std::string xml = "<activate>";
    for (int i = 0; i < count; ++i) {
        std::string const n = std::to_string((i * 7919) % 100003);
        std::string const id = "<id>{A" + std::to_string(i) + "-0000-4000-8000-000000000000}</id>";
        switch (i % 9) {
        case 0: xml += "<force>" + id + "<variable>[PLC" + n + ".SETPOINT]</variable><value>" + n + " * 2</value></force>"; break;
        case 1: xml += "<shellExecute>" + id + "<command>cmd" + n + ".exe</command><parameter>-v</parameter></shellExecute>"; break;
        case 2: xml += "<screen>" + id + "<name>Screen " + n + "</name></screen>"; break;
        case 3: xml += "<report>" + id + "<name>report " + n + "</name></report>"; break;
        case 4: xml += "<device>" + id + "<name>DEV" + n + "</name></device>"; break;
        case 5: xml += "<beep>" + id + "</beep>"; break;
        case 6: xml += "<mail>" + id + "<message>Alarm " + n + " raised</message><users/></mail>"; break;
        case 7: xml += "<sms>" + id + "<message>alarm " + n + "</message></sms>"; break;
        default: xml += "<launchWeb>" + id + "<url>http://plant/" + n + "</url><window>TAB</window></launchWeb>"; break;
        }
    }
    return xml + "</activate>";
}

// The floor: pugixml walks the moment and builds the same summaries from its own tree.
std::size_t PugiWalk(pugi::xml_node moment)
{
    std::size_t bytes = 0;
    std::string summary;
    for (pugi::xml_node action : moment.children()) {
        summary.clear();
        for (pugi::xml_node key : action.children())
            if (std::strcmp(key.name(), "id") != 0) {
                summary += key.child_value();
                summary += ' ';
            }
        bytes += summary.size();
    }
    return bytes;
}

void BM_ActionsPaneFill(benchmark::State& state)
{
    std::string const text = MomentXml(static_cast<int>(state.range(0)));
    XmlDocument doc;
    pugi::xml_document pugiDoc;
    if (!doc.Parse(text.c_str()) || !pugiDoc.load_string(text.c_str())) {
        state.SkipWithError("the moment does not parse");
        return;
    }
    XmlDocument users;
    auto pane = std::make_unique<ZoEDlgEventActionsCfg>();
    pane->resize(640, 300);
    double ours = 0;
    std::int64_t rounds = 0;
    for (auto _ : state) {
        ours += zo::bench::MillisecondsOf([&] { pane->Initialize(0, doc.Root(), &users, false); });
        ++rounds;
    }
    std::size_t bytes = 0;
    double const floor =
        zo::bench::MillisecondsOfRounds(rounds, [&] { bytes += PugiWalk(pugiDoc.document_element()); });
    benchmark::DoNotOptimize(bytes);
    state.counters["rows"] = pane->Model() ? static_cast<double>(pane->Model()->rowCount()) : 0;
    zo::bench::ReportAgainstFloor(state, rounds, "pane_ms", ours, "pugi_walk_ms", floor, "x_pugi_walk");
}

} // namespace

BENCHMARK(BM_ActionsPaneFill)->Arg(10000)->Unit(benchmark::kMillisecond);
