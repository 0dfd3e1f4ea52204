// Loading, writing and closing a large event configuration document, each beside the
// XML library alone on the same text, so that the overhead of our tree is a ratio taken
// in one run.
#include "BenchFixtures.h"
#include "config/XmlScanner.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <chrono>
#include <cstdio>
#include <memory>

namespace {

using namespace zo::bench;

// The parse flags of XmlDocument::Parse (src/config/XmlDocument.cpp), so that both
// benchmarks ask the library for the same work.
constexpr unsigned kModuleParseFlags =
    pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata_single;

class StringWriter : public pugi::xml_writer {
public:
    explicit StringWriter(std::string& out) : m_out(out) {}
    void write(void const* data, std::size_t size) override { m_out.append(static_cast<char const*>(data), size); }

private:
    std::string& m_out;
};

int Events(benchmark::State const& state) { return static_cast<int>(state.range(0)); }

void BM_PugiParseOnly(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    for (auto _ : state) {
        auto doc = std::make_unique<pugi::xml_document>();
        pugi::xml_parse_result const result = doc->load_buffer(text.data(), text.size(), kModuleParseFlags, pugi::encoding_utf8);
        benchmark::DoNotOptimize(result.status);
        state.PauseTiming();
        doc.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

// Our scanner alone on the same text, with a handler that does nothing: the floor under a
// parse that builds our tree straight from it.
class NullHandler final : public zo::xml::ScanHandler {
public:
    void StartElement(std::string_view) override {}
    void Attribute(std::string_view, std::string_view) override {}
    void Text(std::string_view) override {}
    void EndElement() override {}
};

void BM_ScanOnly(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    NullHandler handler;
    bool ok = true;
    for (auto _ : state) {
        zo::xml::ScanResult const result = zo::xml::ScanXml(text.data(), text.size(), handler);
        benchmark::DoNotOptimize(result.ok);
        ok = result.ok && ok;
    }
    if (!ok)
        state.SkipWithError("the generated document does not scan");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void BM_PugiWriteOnly(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    pugi::xml_document doc;
    doc.load_buffer(text.data(), text.size(), kModuleParseFlags, pugi::encoding_utf8);
    std::string out;
    for (auto _ : state) {
        out.clear();
        StringWriter writer(out);
        doc.document_element().print(writer, "", pugi::format_raw, pugi::encoding_utf8);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * out.size()));
}

// Memory held by a loaded document: the document's own count and the growth of the
// process's resident set, each also as a multiple of the file size.
void ReportLoadedMemory(benchmark::State& state, int events)
{
    LoadedMemory const& memory = MeasureFirstLoad(events);
    state.counters["file_MB"] = memory.fileBytes / 1e6;
    state.counters["MemoryUsed_MB"] = memory.memoryUsed / 1e6;
    state.counters["MemoryUsed_x_file"] = memory.memoryUsed / memory.fileBytes;
    state.counters["RSS_growth_MB"] = memory.rssGrowth / 1e6;
    state.counters["RSS_growth_x_file"] = memory.rssGrowth / memory.fileBytes;
}

void BM_ParseEvents(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    ReportLoadedMemory(state, Events(state));
    bool ok = true;
    for (auto _ : state) {
        auto doc = std::make_unique<XmlDocument>();
        ok = doc->Parse(text.data(), text.size()) && ok;
        state.PauseTiming();
        doc.reset();
        state.ResumeTiming();
    }
    if (!ok)
        state.SkipWithError("the generated document does not parse");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void BM_WriteEvents(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    XmlDocument doc;
    doc.Parse(text.data(), text.size());
    std::string out;
    for (auto _ : state) {
        doc.Root()->CreateXmlCode(out);
        benchmark::DoNotOptimize(out.data());
    }
    // The generated text is written the way the module writes, so a faithful round trip
    // gives it back byte for byte.
    state.counters["same_as_input"] = out == text ? 1 : 0;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * out.size()));
}

void BM_CloseEvents(benchmark::State& state)
{
    std::string const& text = EventsText(Events(state));
    for (auto _ : state) {
        auto doc = std::make_unique<XmlDocument>();
        doc->Parse(text.data(), text.size());
        auto const start = std::chrono::steady_clock::now();
        doc.reset();
        auto const end = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
}

} // namespace

BENCHMARK(BM_PugiParseOnly)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScanOnly)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseEvents)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PugiWriteOnly)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteEvents)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CloseEvents)->Arg(100000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
