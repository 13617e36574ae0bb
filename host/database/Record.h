// Reads the text of records and filters. Fields follow RFC 4180: separated by commas, and in
// double quotes, inner quotes doubled, where they hold a comma or a quote.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_HOST_DATABASE_RECORD_H
#define EVENTSYSTEM_HOST_DATABASE_RECORD_H

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "host/database/TableDefinition.h"
#include "host/database/Value.h"

namespace EventSystemHost {

// Why a record, an assignment or a filter is refused, for the log; `status` is for the caller.
class RefusedRecord : public std::runtime_error {
 public:
  RefusedRecord(int status, const std::string& reason)
      : std::runtime_error(reason), m_status(status) {}
  int status() const { return m_status; }

 private:
  int m_status;
};

// The new value of one column.
struct Assignment {
  std::size_t column;
  Value value;
};

// All throw RefusedRecord.

// A new row: `1,7,"text"`, one field for each column in order, or `name=text,id=1`, where an
// automatic key and optional columns may be missing. It is the second form when it begins with a
// name and an equals sign.
std::vector<Assignment> parseRecord(const TableDefinition& table, std::string_view text);

// `name=text,count=7`: at least one column, none twice.
std::vector<Assignment> parseAssignments(const TableDefinition& table, std::string_view text);

// `name=text`: the rest of the text, or one quoted field, is the value.
Assignment parseFilter(const TableDefinition& table, std::string_view text);

// The decimal text of a key.
std::int64_t parseKey(const TableDefinition& table, const char* text);

}  // namespace EventSystemHost

#endif
