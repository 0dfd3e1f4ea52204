#include "ProjectFolderGenerator.h"

#include "EventDocGenerator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>

using namespace zo::project;

namespace zo::bench {
namespace {

// Writes the pieces one after the other, so that no joined copy of a large text is made.
bool WriteFile(QString const& path, std::initializer_list<std::string const*> pieces)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    for (std::string const* piece : pieces) {
        qint64 const size = static_cast<qint64>(piece->size());
        if (file.write(piece->data(), size) != size)
            return false;
    }
    return file.flush();
}

} // namespace

GeneratedProjectFolder::GeneratedProjectFolder(int events)
    : m_events(events)
{
    docgen::EventDocShape shape;
    shape.events = events;
    bool written = m_dir.isValid();
    if (written) {
        std::string const text = docgen::MakeEventsDocumentXml(shape);
        written = WriteFile(FilePath(ProjectDoc::Events), {&text});
    }
    if (written) {
        std::string const text = docgen::MakeTimeTablesXml(shape);
        written = WriteFile(FilePath(ProjectDoc::TimeTables), {&text});
    }
    if (written) {
        std::string const open = "<deviceTree>";
        std::string const groups = docgen::MakeDeviceGroupsXml(shape);
        std::string const catalog = docgen::MakeDeviceCatalogXml(shape, kCatalogDevices);
        std::string const close = "</deviceTree>";
        written = WriteFile(FilePath(ProjectDoc::Devices), {&open, &groups, &catalog, &close});
    }
    // The screens the screen actions name, so that the project checks without errors.
    for (std::string const& screen : docgen::GeneratedScreenNames()) {
        std::string const text = "<?xml version=\"1.0\"?>\n<screen><name>" + screen + "</name></screen>\n";
        written = written && WriteFile(QDir(m_dir.path()).filePath(QString::fromStdString(screen + ".1.XSCN")), {&text});
    }
    if (!written) {
        std::fprintf(stderr, "cannot write the generated project of %d events in %s\n", events,
                     qPrintable(m_dir.path()));
        return;
    }
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::TimeTables, ProjectDoc::Devices})
        m_fileBytes += static_cast<double>(QFileInfo(FilePath(doc)).size());
    m_valid = true;
    // For profiling the programs on the same files: ZO_BENCH_KEEP_FOLDERS=1 keeps them.
    if (qEnvironmentVariableIsSet("ZO_BENCH_KEEP_FOLDERS")) {
        m_dir.setAutoRemove(false);
        std::fprintf(stderr, "kept the generated project of %d events in %s\n", events, qPrintable(m_dir.path()));
    }
}

QString GeneratedProjectFolder::FilePath(ProjectDoc doc) const
{
    return QDir(m_dir.path()).filePath(QString::fromWCharArray(FileName(doc)));
}

GeneratedProjectFolder const& SharedProjectFolder(int events)
{
    static std::map<int, std::unique_ptr<GeneratedProjectFolder>> folders;
    std::unique_ptr<GeneratedProjectFolder>& folder = folders[events];
    if (!folder)
        folder = std::make_unique<GeneratedProjectFolder>(events);
    if (!folder->IsValid())
        std::abort();
    return *folder;
}

} // namespace zo::bench
