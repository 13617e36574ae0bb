// What the text of a record, of assignments and of a filter means, read byte by byte: the words of
// the host's contract, without the host's code.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_FUZZ_RECORDREFERENCE_H
#define EVENTSYSTEM_TESTS_FUZZ_RECORDREFERENCE_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace EventSystemTest {

struct ReferenceColumn {
  std::string name;
  int bits = 0;  // of a number; 0: a text
  bool mayBeMissing = false;
};
using ReferenceTable = std::vector<ReferenceColumn>;

// Values by column name, numbers in their shortest form. Nothing: the text is refused.
using ReferenceRow = std::map<std::string, std::string>;

std::optional<ReferenceRow> referenceRecord(const ReferenceTable& table, const std::string& text);
std::optional<ReferenceRow> referenceAssignments(const ReferenceTable& table,
                                                 const std::string& text);
std::optional<ReferenceRow> referenceFilter(const ReferenceTable& table, const std::string& text);

}  // namespace EventSystemTest

#endif
