#pragma once
#include <QByteArray>

#include <functional>

// Whether the program can open a window, decided from the environment before the
// application object is created (Qt aborts with an obscure message when it finds no
// display). getenv returns the value of an environment variable, empty when unset.
// True when QT_QPA_PLATFORM names a platform that needs no display server (offscreen,
// minimal, vnc...), or when the display server that the platform needs is named by
// DISPLAY (X11) or WAYLAND_DISPLAY (Wayland).
using ZoEnvReader = std::function<QByteArray(char const* name)>;
bool HostHasDisplay(ZoEnvReader const& getenv);
bool HostHasDisplay();
