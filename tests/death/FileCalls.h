// Lets this process die, by SIGKILL, in the n-th call by which SQLite changes a file: before it,
// in the middle of it (a write that a signal ends stops between two pages), or after it.
//
// Thread safety: dieInFileCall() while one thread runs; the calls may then come from any.

#ifndef EVENTSYSTEM_TESTS_DEATH_FILECALLS_H
#define EVENTSYSTEM_TESTS_DEATH_FILECALLS_H

#include <cstdint>

namespace EventSystemTest {

enum class Moment : unsigned char { kBefore, kWithin, kAfter };

void dieInFileCall(std::uint64_t nth, Moment moment);

}  // namespace EventSystemTest

#endif
