// The server after the power is back: started on what the disk holds, looked at, and put to work
// for another day.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_REBOOT_H
#define EVENTSYSTEM_TESTS_POWER_REBOOT_H

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/power/DiskModel.h"
#include "tests/power/Ledger.h"
#include "tests/power/RawDatabase.h"

namespace EventSystemTest {

struct Reboot {
  Stored stored;                       // before the server has taken in audit rows
  std::vector<std::string> auditRows;  // that were left for it
  unsigned long newId = 0;             // that an event of the global queue is given
  std::string problem;                 // what is wrong in itself, whatever was there before
  Ledger ledger;                       // of the day after
};

// Makes the files of an image of what was in `from`, in `to`.
void materialise(const DiskImage& image, const std::filesystem::path& from,
                 const std::filesystem::path& to);

Reboot reboot(const std::filesystem::path& home, const std::function<std::size_t()>& now);

}  // namespace EventSystemTest

#endif
