// How much room the database takes, and how much there is.
//
// Thread safety: reads the file system; any thread that may wait for a disk.

#ifndef EVENTSYSTEM_APPS_EVENTD_METRICS_DISKFIGURES_H
#define EVENTSYSTEM_APPS_EVENTD_METRICS_DISKFIGURES_H

#include <cstdint>
#include <filesystem>

namespace EventApps {

// In bytes; 0 for what cannot be found out.
struct DiskFigures {
  std::uint64_t database = 0;
  std::uint64_t wal = 0;
  std::uint64_t free = 0;  // for others than root, in the file system of the database
};

DiskFigures diskFiguresOf(const std::filesystem::path& databaseFile);

}  // namespace EventApps

#endif
