// A day that was recorded once, and power losses at any of its moments.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_POWERTRIAL_H
#define EVENTSYSTEM_TESTS_POWER_POWERTRIAL_H

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "tests/power/DiskLog.h"
#include "tests/power/DiskModel.h"
#include "tests/power/Reboot.h"
#include "tests/power/Service.h"
#include "tests/power/Verdict.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

class PowerTrial {
 public:
  using Day = std::function<void(Service&, DiskLog&)>;

  // Records the day. `durability` is one of host.ini's.
  PowerTrial(std::string durability, const Day& day);

  // Its moments: after no entry of the log up to after all of them.
  std::size_t points() const { return m_log.size() + 1; }

  // Empty, or what is wrong after a power loss at `point`. Fast for points that grow.
  std::string lose(std::size_t point, std::uint64_t damage);

  // The same, and then once more while the server makes up for the first one: at a moment that
  // `secondDamage` decides, too.
  std::string loseTwice(std::size_t point, std::uint64_t damage, std::uint64_t secondDamage);

  const PowerFigures& figures() const { return m_figures; }

  // For tests of the tests: another disk, another promise.
  std::vector<DiskEntry>& log() { return m_log; }
  void setPromise(Promise promise) { m_promise = promise; }

 private:
  const Reboot& rebootOn(const DiskImage& image);
  DiskImage imageAt(std::size_t point, std::uint64_t damage);
  std::filesystem::path freshHome();

  const std::string m_durability;
  Promise m_promise;
  const TempDir m_root;
  const std::filesystem::path m_home;  // of the recorded day
  Ledger m_ledger;
  std::vector<DiskEntry> m_log;
  std::unique_ptr<DiskModel> m_model;
  std::size_t m_reached = 0;
  std::map<std::size_t, Reboot> m_known;  // by the image's hash
  PowerFigures m_figures;
};

}  // namespace EventSystemTest

#endif
