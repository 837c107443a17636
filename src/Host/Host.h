#pragma once

#include "Host/HostPaths.h"

namespace ludarium {

class AppLogger;
class Clock;
class Dialogs;
class HttpClient;
class NotificationCenter;
class ProcessRunner;
class SettingsStore;
class Terminal;
class Workspace;

/// The machine as services see it. The composition root owns the parts; whoever holds a `Host&` is outlived by them.
struct Host {
    const HostPaths &paths;
    SettingsStore &settings;
    ProcessRunner &processes;
    HttpClient &http;
    Workspace &workspace;
    Dialogs &dialogs;
    Terminal &terminal;
    Clock &clock;
    NotificationCenter &notifications;
};

} // namespace ludarium
