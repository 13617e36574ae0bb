// A server's day on a disk that fails, and whether the queue is whole when the disk is well again.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_FAULTTRIAL_H
#define EVENTSYSTEM_TESTS_POWER_FAULTTRIAL_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "tests/power/FaultDisk.h"
#include "tests/power/Reboot.h"
#include "tests/power/Service.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

struct FaultFigures {
  std::uint64_t days = 0;           // as many as there were faults
  std::uint64_t faults = 0;         // calls of the disk that failed
  std::uint64_t acknowledged = 0;   // events that were to be found
  std::uint64_t refusedCalls = 0;   // calls of the library that reported a failure
  std::uint64_t refusedStarts = 0;  // hosts that did not start
  std::uint64_t lateEvents = 0;     // refused though the passing fault was over
  std::uint64_t storedAnyway = 0;   // events that were refused and are there
  std::uint64_t lostWithFlush = 0;  // acknowledged, lost with a flush that was reported
  std::uint64_t auditTwice = 0;     // audit rows that were taken in more than once
  std::uint64_t auditLogged = 0;    // that are in the log only
};

class FaultTrial {
 public:
  using Day = std::function<void(Service&)>;

  FaultTrial(std::string durability, Day day);

  // How many calls the n of run() can be, for this kind of fault.
  std::size_t calls(const Fault& fault);

  // Empty, or what is wrong.
  std::string run(const Fault& fault, std::size_t n, Lasting lasting);

  // Of all runs, and by the fault's name.
  const std::map<std::string, FaultFigures>& figures() const { return m_figures; }

 private:
  std::filesystem::path freshHome() const;

  const std::string m_durability;
  const Day m_day;
  const TempDir m_root;
  std::map<std::string, FaultFigures> m_figures;
};

}  // namespace EventSystemTest

#endif
