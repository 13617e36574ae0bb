// A disk that fails: one call of one kind, the n-th, and then none or all that follow. Waiting
// for a lock takes no time on it.
//
// Thread safety: any thread; arm() and lift() while nothing is open.

#ifndef EVENTSYSTEM_TESTS_POWER_FAULTDISK_H
#define EVENTSYSTEM_TESTS_POWER_FAULTDISK_H

#include <cstddef>
#include <map>
#include <mutex>
#include <span>
#include <string>

#include "tests/support/UnflushedWrites.h"
#include "tests/support/WatchedDisk.h"

namespace EventSystemTest {

enum class FaultEffect {
  kNothing,      // the call is not made
  kHalf,         // a write has written its first half
  kZeros,        // a read has read nothing, and filled its buffer with zeros
  kLosesWrites,  // what was written since the file's last flush is taken back
  kFullDisk      // only writes that make the file longer fail
};

struct Fault {
  const char* name;
  DiskCall call;
  int status;
  FaultEffect effect;
};

// Every kind of fault there is. Flushes of directories are a kind of their own; see below.
std::span<const Fault> allFaults();

// Of allFaults(), or NULL.
const Fault* faultCalled(const std::string& name);

enum class Lasting { kOnce, kForEver };

class FaultDisk : public DiskWatcher {
 public:
  // Watches until it ends; one at a time.
  FaultDisk();
  ~FaultDisk() override;
  FaultDisk(const FaultDisk&) = delete;
  FaultDisk& operator=(const FaultDisk&) = delete;

  // The n-th call of the fault's kind from now on fails, 1 being the next.
  void arm(const Fault& fault, std::size_t n, Lasting lasting);
  void lift();

  // How many calls have failed since arm().
  std::size_t failed() const;

  // How many calls of the armed kind there were since.
  std::size_t counted() const;

  int before(const DiskRequest& request) override;
  void after(const DiskRequest& request) override;

 private:
  static bool directoryFlushFails();
  bool strikes(const DiskRequest& request);
  int answer(const DiskRequest& request);

  mutable std::mutex m_mutex;
  const Fault* m_fault = nullptr;
  std::size_t m_n = 0;
  Lasting m_lasting = Lasting::kOnce;
  std::size_t m_counted = 0;
  std::size_t m_failed = 0;
  std::map<sqlite3_file*, UnflushedWrites> m_unflushed;
};

}  // namespace EventSystemTest

#endif
