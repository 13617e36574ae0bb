// The memory of a test program: operator new and strdup, and SQLite's own allocator where a test
// asks for it, count what is asked of them and fail where a test says so.
//
// What a host that is part of the test allocates inside its own functions can be left out: that
// would be the host's failure.
//
// Thread safety: arms and counts for the calling thread only; the static functions while there is
// one thread.

#ifndef EVENTSYSTEM_TESTS_FAULT_FAILINGNEW_H
#define EVENTSYSTEM_TESTS_FAULT_FAILINGNEW_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace EventSystemTest {

// Which allocations fail.
struct AllocationFaults {
  enum class Kind { kNone, kNth, kFromNth, kByChance };

  Kind kind = Kind::kNone;
  std::size_t nth = 0;       // from 1
  unsigned int chances = 0;  // one in so many
  std::uint64_t seed = 0;

  static AllocationFaults none() { return {}; }
  static AllocationFaults only(std::size_t nth) { return {Kind::kNth, nth, 0, 0}; }
  static AllocationFaults from(std::size_t nth) { return {Kind::kFromNth, nth, 0, 0}; }
  static AllocationFaults oneIn(unsigned int chances, std::uint64_t seed) {
    return {Kind::kByChance, 0, chances, seed};
  }

  std::string text() const;
};

// While one lives, allocations of this thread are counted, and fail as told.
class FailingNew {
 public:
  explicit FailingNew(const AllocationFaults& faults);
  // The n-th fails; 0: none.
  explicit FailingNew(std::size_t nth) : FailingNew(AllocationFaults::only(nth)) {}
  ~FailingNew();

  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  std::size_t count() const;
  std::size_t failed() const;

  // Nothing is counted and nothing fails where `inside` says so.
  static void exempt(bool (*inside)());
};

// While one lives, this thread's allocations are neither counted nor failed.
class AllocationPause {
 public:
  AllocationPause();
  ~AllocationPause();
  AllocationPause(const AllocationPause&) = delete;
  AllocationPause& operator=(const AllocationPause&) = delete;

 private:
  const bool m_armed;
};

// Whether the allocation that is asked for now is to fail; counts it.
bool allocationFails();

}  // namespace EventSystemTest

#endif
