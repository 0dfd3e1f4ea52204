#pragma once
#include "MainWindow.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

// The host editor's window for a journey, with its recent-folders list in a file of its own
// (the user's settings are never touched). It is never shown: dialogs reach the modal runner.
namespace zo::bench {

class GeneratedProjectFolder;

class JourneyWindow {
public:
    JourneyWindow();
    ~JourneyWindow();
    JourneyWindow(JourneyWindow const&) = delete;
    JourneyWindow& operator=(JourneyWindow const&) = delete;

    MainWindow& Window() { return *m_window; }
    bool Open(GeneratedProjectFolder const& folder);
    // Number of `event` elements of the open project's events document (0 when none is open).
    int EventCount() const;

private:
    QTemporaryDir m_settings;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace zo::bench
