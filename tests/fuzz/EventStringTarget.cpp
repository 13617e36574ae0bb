// Event strings: read and written by the library and by the plain formulation, and compared.

#include "tests/differential/Differential.h"
#include "tests/fuzz/Target.h"

namespace EventSystemTest {

// A first byte of 1 to 9 names the class whose parser is called; all else is an event string.
void runTarget(std::string_view input) {
  static Differential differential(0);
  int type = 0;
  if (!input.empty() && input[0] >= 1 && input[0] <= 9) {
    type = input[0];
    input.remove_prefix(1);
  }
  const std::string text = takeText(input).substr(0, CaseMaker::kLongest);
  require(differential.comesBack(type, text), "library and plain formulation differ",
          differential.difference());
}

}  // namespace EventSystemTest
