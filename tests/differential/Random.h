// Numbers that follow from a seed and the count of a case, whatever ran before it.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_TESTS_DIFFERENTIAL_RANDOM_H
#define EVENTSYSTEM_TESTS_DIFFERENTIAL_RANDOM_H

#include <cstdint>

namespace EventSystemTest {

// SplitMix64.
class Random {
 public:
  Random(std::uint64_t seed, std::uint64_t count) : m_state(seed) { m_state = next() + count; }

  std::uint64_t next() {
    std::uint64_t mixed = m_state += 0x9e3779b97f4a7c15u;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
    return mixed ^ (mixed >> 31);
  }

  // 0 to limit - 1; limit is not 0.
  unsigned int below(unsigned int limit) {
    return static_cast<unsigned int>(((next() >> 32) * limit) >> 32);
  }
  bool oneIn(unsigned int chances) { return below(chances) == 0; }

 private:
  std::uint64_t m_state;
};

}  // namespace EventSystemTest

#endif
