// A target of hostile input: one function that takes any bytes, and says so when the product does
// with them what it must not do. The same function runs under libFuzzer and in the replay tests.
//
// Thread safety: one thread calls.

#ifndef EVENTSYSTEM_TESTS_FUZZ_TARGET_H
#define EVENTSYSTEM_TESTS_FUZZ_TARGET_H

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

namespace EventSystemTest {

// What a target found, in words.
class Finding : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline void require(bool holds, const char* what) {
  if (!holds) throw Finding(what);
}

inline void require(bool holds, const char* what, const std::string& detail) {
  if (!holds) throw Finding(std::string(what) + ": " + detail);
}

// Each program has one. Throws Finding; whatever else it throws is a finding, too.
void runTarget(std::string_view input);

// Takes the text up to the next NUL off the input, or all that is left.
inline std::string takeText(std::string_view& input) {
  const std::size_t end = std::min(input.find('\0'), input.size());
  std::string text(input.substr(0, end));
  input.remove_prefix(std::min(end + 1, input.size()));
  return text;
}

}  // namespace EventSystemTest

#endif
