// operator new of the test program: counts what the library allocates and fails where a test says
// so. What the fake host allocates inside its own functions is never failed: that would be the
// host's failure.
//
// Thread safety: arms and counts for the calling thread only.

#ifndef EVENTSYSTEM_TESTS_FAULT_FAILINGNEW_H
#define EVENTSYSTEM_TESTS_FAULT_FAILINGNEW_H

#include <cstddef>

namespace EventSystemTest {

// While one lives, allocations of this thread are counted, and the n-th (from 1) fails; 0: none.
class FailingNew {
 public:
  explicit FailingNew(std::size_t nth);
  ~FailingNew();

  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  std::size_t count() const;
};

}  // namespace EventSystemTest

#endif
