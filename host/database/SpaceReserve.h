// Space that is kept back on the database's disk, in a file beside it, FILE.reserve, so that rows
// can be deleted when the disk is full: a deletion, too, is written to the log before anything gets
// smaller. While the space is given up nothing is added, until it can be taken again: else new rows
// would use it up.
//
// Thread safety: none; the database's mutex guards it.

#ifndef EVENTSYSTEM_HOST_DATABASE_SPACERESERVE_H
#define EVENTSYSTEM_HOST_DATABASE_SPACERESERVE_H

#include <cstdint>
#include <filesystem>
#include <string>

namespace EventSystemHost {

class SpaceReserve {
 public:
  // Of `bytes`; 0: none is taken, though what is there from before can be given up.
  SpaceReserve(const std::filesystem::path& databaseFile, std::uintmax_t bytes);

  bool isHeld() const { return m_held; }

  // Takes the space unless it is held. False when the disk does not have it.
  bool hold();

  // Gives it up; false when it was not held.
  bool release();

  // Whether it is held and the disk has next to nothing else left.
  bool isNeeded() const;

 private:
  std::uintmax_t available() const;
  int allocate() const;

  const std::filesystem::path m_file;
  std::uintmax_t m_bytes;  // 0 also where the file system keeps nothing back
  bool m_held = false;
};

// "DIRECTORY: the disk is full: 4096 bytes are free".
std::string describeFullDisk(const std::filesystem::path& directory);

}  // namespace EventSystemHost

#endif
