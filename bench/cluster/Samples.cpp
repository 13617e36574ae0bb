#include "bench/cluster/Samples.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace Bench {

void Samples::append(const Samples& others) {
  m_microseconds.insert(m_microseconds.end(), others.m_microseconds.begin(),
                        others.m_microseconds.end());
}

double Samples::quantile(double fraction) const {
  if (m_microseconds.empty()) throw std::logic_error("nothing was measured");
  std::vector<double> sorted = m_microseconds;
  std::sort(sorted.begin(), sorted.end());
  return sorted[static_cast<std::size_t>(fraction * static_cast<double>(sorted.size() - 1))];
}

void Samples::save(const std::filesystem::path& file) const {
  std::ofstream stream(file);
  for (const double each : m_microseconds) stream << each << '\n';
}

Samples Samples::load(const std::filesystem::path& file) {
  std::ifstream stream(file);
  Samples loaded;
  for (double each = 0; stream >> each;) loaded.m_microseconds.push_back(each);
  return loaded;
}

}  // namespace Bench
