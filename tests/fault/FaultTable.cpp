#include "FaultTable.h"

#include <cstdio>

namespace EventSystemTest {

FaultTable& FaultTable::instance() {
  static FaultTable table;
  return table;
}

void FaultTable::note(const std::string& operation, const std::string& kind,
                      const std::string& result) {
  ++m_rows[{operation, kind}][result];
}

FaultTable::~FaultTable() {
  std::printf("\n%-52s %-18s %8s  %s\n", "operation", "fault", "injected", "results");
  std::size_t total = 0;
  for (const auto& [row, results] : m_rows) {
    std::size_t injected = 0;
    std::string seen;
    for (const auto& [result, count] : results) {
      injected += count;
      seen += " " + result + " x" + std::to_string(count);
    }
    total += injected;
    std::printf("%-52s %-18s %8zu %s\n", row.first.c_str(), row.second.c_str(), injected,
                seen.c_str());
  }
  std::printf("%zu faults injected\n", total);
}

}  // namespace EventSystemTest
