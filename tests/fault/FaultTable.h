// The summary of injected faults, printed when the program ends: for each operation and kind of
// fault, how many were injected and which results came of them.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_FAULT_FAULTTABLE_H
#define EVENTSYSTEM_TESTS_FAULT_FAULTTABLE_H

#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace EventSystemTest {

class FaultTable {
 public:
  static FaultTable& instance();

  void note(const std::string& operation, const std::string& kind, const std::string& result);

 private:
  FaultTable() = default;
  ~FaultTable();

  typedef std::map<std::string, std::size_t> Results;  // how often each was seen
  std::map<std::pair<std::string, std::string>, Results> m_rows;
};

}  // namespace EventSystemTest

#endif
