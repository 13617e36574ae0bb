// What the daemon tells the service manager, and what it takes over from it. Without one, nothing.
//
// Thread safety: one thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_SYSTEMD_H
#define EVENTSYSTEM_APPS_EVENTD_SYSTEMD_H

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace EventApps::Systemd {

// Listening sockets that were opened before the program was started (LISTEN_FDS). Each is closed by
// whoever takes it. Throws Failure when they cannot be told.
std::vector<int> takeSockets();

// Whether it is told anything.
bool hasManager();

void tellReady(const std::string& status);
void tellReloading();
void tellStopping();

// How often the service manager wants to hear of the daemon; nothing when it does not.
std::optional<std::chrono::milliseconds> watchdogInterval();
void tellAlive();

}  // namespace EventApps::Systemd

#endif
