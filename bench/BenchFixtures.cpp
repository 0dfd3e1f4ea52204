#include "BenchFixtures.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <malloc.h>
#include <unistd.h>

namespace zo::bench {

docgen::EventDocShape SpecFor(int events)
{
    docgen::EventDocShape shape;
    shape.events = events;
    return shape;
}

std::string const& EventsText(int events)
{
    static std::map<int, std::string> texts;
    auto found = texts.find(events);
    if (found == texts.end())
        found = texts.emplace(events, docgen::MakeEventsDocumentXml(SpecFor(events))).first;
    return found->second;
}

namespace {

void Load(XmlDocument& doc, std::string const& text, char const* what)
{
    if (!docgen::LoadGenerated(doc, text)) {
        std::fprintf(stderr, "generated %s does not parse: %s at %zu\n", what, doc.ErrorText().c_str(),
                     doc.ErrorOffset());
        std::abort();
    }
}

} // namespace

XmlDocument const& TimeTables()
{
    static XmlDocument doc;
    if (!doc.Root())
        Load(doc, docgen::MakeTimeTablesXml(SpecFor(0)), "time tables");
    return doc;
}

std::unique_ptr<LoadedProject> LoadProject(int events)
{
    auto project = std::make_unique<LoadedProject>();
    Load(project->eventsCfg, EventsText(events), "events document");
    Load(project->deviceGroups, docgen::MakeDeviceGroupsXml(SpecFor(events)), "device groups");
    return project;
}

LoadedMemory const& MeasureFirstLoad(int events)
{
    static std::map<int, LoadedMemory> measured;
    auto found = measured.find(events);
    if (found != measured.end())
        return found->second;
    std::string const& text = EventsText(events);
    TrimHeap();
    std::size_t const before = ResidentBytes();
    auto doc = std::make_unique<XmlDocument>();
    Load(*doc, text, "events document");
    TrimHeap(); // what the parser freed again is not held by the document
    std::size_t const after = ResidentBytes();
    LoadedMemory memory;
    memory.fileBytes = static_cast<double>(text.size());
    memory.memoryUsed = static_cast<double>(doc->MemoryUsed());
    memory.rssGrowth = after > before ? static_cast<double>(after - before) : 0.0;
    return measured.emplace(events, memory).first->second;
}

std::size_t ResidentBytes()
{
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    if (!file)
        return 0;
    unsigned long size = 0, resident = 0;
    int const read = std::fscanf(file, "%lu %lu", &size, &resident);
    std::fclose(file);
    return read == 2 ? resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) : 0;
}

void TrimHeap()
{
    malloc_trim(0);
}

} // namespace zo::bench
