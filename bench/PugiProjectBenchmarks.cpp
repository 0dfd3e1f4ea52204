// Floors for the journey: the XML library alone loading the generated project's files and
// saving its trees to disk the way the host saves (temporary files, synced, then renamed).
#include "ProjectFolderGenerator.h"
#include "JourneySizes.h"
#include "StepTimer.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <unistd.h>

using namespace zo::bench;
using zo::project::ProjectDoc;

namespace {

// The files the host opens, and those it writes after the events list ends with OK.
constexpr std::array<ProjectDoc, 3> kLoadedDocs{ProjectDoc::Events, ProjectDoc::TimeTables, ProjectDoc::Devices};
constexpr std::array<ProjectDoc, 2> kSavedDocs{ProjectDoc::Events, ProjectDoc::Devices};

using PugiDocs = std::array<std::unique_ptr<pugi::xml_document>, kLoadedDocs.size()>;

// load_file with the library's default flags (parse_default, encoding_auto).
bool LoadAll(GeneratedProjectFolder const& folder, PugiDocs& docs)
{
    for (std::size_t i = 0; i < kLoadedDocs.size(); ++i) {
        docs[i] = std::make_unique<pugi::xml_document>();
        if (!docs[i]->load_file(qPrintable(folder.FilePath(kLoadedDocs[i]))))
            return false;
    }
    return true;
}

pugi::xml_document const& Loaded(PugiDocs const& docs, ProjectDoc doc)
{
    for (std::size_t i = 0; i < kLoadedDocs.size(); ++i) {
        if (kLoadedDocs[i] == doc)
            return *docs[i];
    }
    return *docs[0];
}

// As the host's saver does: every file written to a temporary first, then each one synced
// to disk, closed and renamed over its target. Written in the library's default format
// (indented with tabs, with a declaration), as save_file writes it.
bool SaveAll(PugiDocs const& docs, QString const& outFolder)
{
    struct Pending {
        std::string target, temporary;
        std::FILE* file = nullptr;
    };
    std::array<Pending, kSavedDocs.size()> pending;
    bool ok = true;
    for (std::size_t i = 0; i < kSavedDocs.size() && ok; ++i) {
        Pending& out = pending[i];
        out.target = QDir(outFolder).filePath(QString::fromWCharArray(zo::project::FileName(kSavedDocs[i]))).toStdString();
        out.temporary = out.target + ".tmp";
        out.file = std::fopen(out.temporary.c_str(), "wb");
        ok = out.file != nullptr;
        if (ok) {
            pugi::xml_writer_file writer(out.file);
            Loaded(docs, kSavedDocs[i]).save(writer, PUGIXML_TEXT("\t"), pugi::format_default, pugi::encoding_auto);
            ok = std::fflush(out.file) == 0;
        }
    }
    for (Pending& out : pending) {
        if (!out.file)
            continue;
        ok = fsync(fileno(out.file)) == 0 && ok;
        ok = std::fclose(out.file) == 0 && ok;
        ok = ok && std::rename(out.temporary.c_str(), out.target.c_str()) == 0;
    }
    return ok;
}

void BM_PugiLoadProject(benchmark::State& state)
{
    GeneratedProjectFolder const& folder = SharedProjectFolder(static_cast<int>(state.range(0)));
    StepTimer timer(state);
    for (auto _ : state) {
        timer.BeginIteration();
        bool loaded = false;
        {
            PugiDocs docs;
            timer.Start();
            loaded = LoadAll(folder, docs);
            timer.Stop();
        }
        timer.EndIteration();
        if (!loaded) {
            state.SkipWithError("pugixml did not load the generated project");
            break;
        }
    }
    state.counters["file_MB"] = folder.FileBytes() / 1e6;
}

void BM_PugiSaveProject(benchmark::State& state)
{
    GeneratedProjectFolder const& folder = SharedProjectFolder(static_cast<int>(state.range(0)));
    PugiDocs docs;
    QTemporaryDir out;
    if (!LoadAll(folder, docs) || !out.isValid()) {
        state.SkipWithError("pugixml did not load the generated project");
        return;
    }
    StepTimer timer(state);
    for (auto _ : state) {
        timer.BeginIteration();
        timer.Start();
        bool const saved = SaveAll(docs, out.path());
        timer.Stop();
        timer.EndIteration();
        if (!saved) {
            state.SkipWithError("pugixml did not save the project");
            break;
        }
    }
}

} // namespace

ZO_JOURNEY_BENCHMARK(BM_PugiLoadProject);
ZO_JOURNEY_BENCHMARK(BM_PugiSaveProject);
