#pragma once
#include "EventDocGenerator.h"
#include "config/XmlDocument.h"

#include <cstddef>
#include <memory>
#include <string>

// Documents shared by the benchmarks, generated once per size and kept for the whole run so
// that every benchmark measures the same text.
namespace zo::bench {

// The generator's settings for a document of `events` events.
docgen::EventDocShape SpecFor(int events);
// The XML text of an event configuration document of `events` events.
std::string const& EventsText(int events);
// The time-tables document (200 tables) that the generated events refer to.
XmlDocument const& TimeTables();

// A freshly parsed event configuration document, device groups element and the
// `events` element; aborts the run when generated text does not parse.
struct LoadedProject {
    XmlDocument eventsCfg;
    XmlDocument deviceGroups;
    XmlDocument::XmlNode* Events() { return eventsCfg.Root()->Child(L"events"); }
};
std::unique_ptr<LoadedProject> LoadProject(int events);

// Memory held by a loaded document, measured on the first load of the process (before any
// document was loaded and closed, since closed documents leave their blocks to the next).
struct LoadedMemory {
    double fileBytes = 0;
    double memoryUsed = 0;  // XmlDocument::MemoryUsed()
    double rssGrowth = 0;   // growth of the resident set while loading
};
// Measures it once for this size; later calls return the first measurement.
LoadedMemory const& MeasureFirstLoad(int events);

// Resident set size of this process, in bytes.
std::size_t ResidentBytes();
// Gives freed heap memory back to the system, so that a following RSS reading shows what
// is really held.
void TrimHeap();

} // namespace zo::bench
