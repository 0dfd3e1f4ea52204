#pragma once
#include "project/ProjectFiles.h"

#include <QString>
#include <QTemporaryDir>

// A project folder on disk with generated documents, as the host editor opens it:
// Events.zocfg, TimeTables.zocfg and Devices.zocfg (device groups where each event is
// registered, and the catalog of kCatalogDevices devices that the generated formulas name,
// so that every generated event is valid). The files hold the generator's compact XML.
// The folder is removed when the object is destroyed.
namespace zo::bench {

inline constexpr int kCatalogDevices = 5000;

class GeneratedProjectFolder {
public:
    // Generates and writes the folder; the generated texts are freed before it returns.
    explicit GeneratedProjectFolder(int events);
    GeneratedProjectFolder(GeneratedProjectFolder const&) = delete;
    GeneratedProjectFolder& operator=(GeneratedProjectFolder const&) = delete;

    bool IsValid() const { return m_valid; }
    QString Path() const { return m_dir.path(); }
    QString FilePath(zo::project::ProjectDoc doc) const;
    int Events() const { return m_events; }
    // Total size of the three files as generated, in bytes.
    double FileBytes() const { return m_fileBytes; }

private:
    QTemporaryDir m_dir;
    int m_events = 0;
    double m_fileBytes = 0;
    bool m_valid = false;
};

// One folder per size, generated on first use and kept for the whole run, so that every
// benchmark of a size reads the same files.
GeneratedProjectFolder const& SharedProjectFolder(int events);

} // namespace zo::bench
