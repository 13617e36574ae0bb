// Whether what a server finds after a power loss is what it was promised.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_VERDICT_H
#define EVENTSYSTEM_TESTS_POWER_VERDICT_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/power/Ledger.h"
#include "tests/power/Reboot.h"

namespace EventSystemTest {

struct PowerFigures {
  std::uint64_t points = 0;      // moments at which the power was cut
  std::uint64_t losses = 0;      // power losses: points times damages
  std::uint64_t images = 0;      // of them, disks that differed: as many restarts
  std::uint64_t promised = 0;    // changes that were to be found, over all losses
  std::uint64_t newer = 0;       // changes that were found though nobody was promised them
  std::uint64_t auditTwice = 0;  // audit rows that come a second time
  std::uint64_t auditGone = 0;   // that were lost, where that is not promised otherwise
};

// What is promised about the day after.
enum class Promise {
  kEachCall,  // strict: what has returned is there
  kUntilMark  // group and relaxed: what a returned waitDurable() or a stop has covered
};

// Empty, or what is wrong: the power was cut at `position`, and this was found.
std::string judge(const Ledger& ledger, Promise promise, std::size_t position, const Reboot& found,
                  PowerFigures& figures);

}  // namespace EventSystemTest

#endif
