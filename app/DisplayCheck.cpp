#include "DisplayCheck.h"

#include <QList>
#include <QtGlobal>

bool HostHasDisplay(ZoEnvReader const& getenv)
{
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    Q_UNUSED(getenv);
    return true;
#else
    bool const x11 = !getenv("DISPLAY").isEmpty();
    bool const wayland = !getenv("WAYLAND_DISPLAY").isEmpty();
    QByteArray const platforms = getenv("QT_QPA_PLATFORM").trimmed();
    if (platforms.isEmpty())
        return x11 || wayland;
    // A list of fallbacks ("wayland;xcb") is tried in turn; each entry may carry options
    // after a colon ("xcb:dpi=96").
    for (QByteArray const& entry : platforms.split(';')) {
        QByteArray const platform = entry.split(':').first().trimmed();
        if (platform == "xcb") {
            if (x11)
                return true;
        } else if (platform.startsWith("wayland")) {
            if (wayland)
                return true;
        } else if (!platform.isEmpty()) {
            return true; // offscreen, minimal, vnc, eglfs, linuxfb...: no display server needed
        }
    }
    return false;
#endif
}

bool HostHasDisplay()
{
    return HostHasDisplay([](char const* name) { return qgetenv(name); });
}
