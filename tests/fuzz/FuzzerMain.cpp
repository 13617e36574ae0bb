// What libFuzzer calls.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "tests/fuzz/Target.h"

extern "C" __attribute__((visibility("default"))) int LLVMFuzzerTestOneInput(
    const std::uint8_t* data, std::size_t size) {
  try {
    EventSystemTest::runTarget({reinterpret_cast<const char*>(data), size});
  } catch (const std::exception& finding) {
    std::fprintf(stderr, "FINDING: %s\n", finding.what());
    std::abort();
  }
  return 0;
}
