#include "bench/systems/Statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace EventSystemBench {

double percentile(std::vector<double> values, double share) {
  const auto size = static_cast<double>(values.size());
  const auto rank = static_cast<std::ptrdiff_t>(std::max(std::ceil(size * share), 1.0)) - 1;
  std::nth_element(values.begin(), values.begin() + rank, values.end());
  return values[static_cast<std::size_t>(rank)];
}

}  // namespace EventSystemBench
