// Copies of the database: one made while a host writes, and one put in the database's place.
//
// Thread safety: any thread, also beside a running Host of the same process. All functions throw
// HostError, which names the file; nothing is then changed, unless said otherwise.

#ifndef EVENTSYSTEM_HOST_BACKUP_BACKUP_H
#define EVENTSYSTEM_HOST_BACKUP_BACKUP_H

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>

#include "EventSystem/Export.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// What a database file holds.
struct DatabaseContent {
  std::map<unsigned int, unsigned long> events;  // by dsid; 0, the global queue, is always there
  unsigned long highestId = 0;                   // ever handed out in the global queue
  std::uintmax_t bytes = 0;                      // of the file
};

// Pages done and in all.
using CopyProgress = std::function<void(std::size_t done, std::size_t total)>;

// Copies the database as it is at one moment to `file`, whether or not a process writes to it
// meanwhile. The copy is one file, checked and durable, for its owner only; `file` has all of it or
// is what it was. Refuses to replace a file unless `overwrite`.
EVENTSYSTEM_HOST_API DatabaseContent backUpDatabase(const HostConfiguration& configuration,
                                                    const std::filesystem::path& file,
                                                    bool overwrite,
                                                    const CopyProgress& progress = {});

struct Restored {
  DatabaseContent content;
  std::filesystem::path kept;         // the database that was replaced; empty when there was none
  unsigned long highestId = 0;        // that the restored file brought
  unsigned long highestIdBefore = 0;  // of the database that was replaced
};

// Puts a checked copy of `file` in the database's place and keeps the database beside it, as
// NAME.before-restore-TIME. With `keepIds` the highest ids handed out so far stay in force, so that
// none is given to another event; that needs a database that can be read. Throws DatabaseBusy while
// a process writes.
//
// A crash leaves the one or the other in place, or a database that no host opens because it has a
// second name, NAME.before-restore-TIME; docs/operations.md tells how that is undone.
EVENTSYSTEM_HOST_API Restored restoreDatabase(const HostConfiguration& configuration,
                                              const std::filesystem::path& file, bool keepIds,
                                              const CopyProgress& progress = {});

}  // namespace EventSystemHost

#endif
