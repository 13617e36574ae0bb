// What the tour needs and no command does: an audit database as another service leaves it, and
// damage in the database file.
//
// Thread safety: used by the main thread, while no other process has the files open.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMODAMAGE_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMODAMAGE_H

#include <filesystem>
#include <string>
#include <vector>

namespace EventApps {

// Makes the file with one row for each message. Throws Failure.
void writeAuditDatabase(const std::filesystem::path& file,
                        const std::vector<std::string>& messages);

// Files the row of an event under another event id, behind the host's back.
void misfileEvent(const std::filesystem::path& database, unsigned long id, unsigned long eventId);

// Cuts the event string of a row short.
void breakEventString(const std::filesystem::path& database, unsigned long id);

}  // namespace EventApps

#endif
