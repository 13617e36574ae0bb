#include "host/database/Record.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <string>

namespace EventSystemHost {

namespace {

// Takes one field after the other off a record's text.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : m_rest(text) {}

  bool more() const { return m_more; }

  std::string next() {
    std::string field = m_rest.starts_with('"') ? quotedField() : plainField();
    m_more = !m_rest.empty();  // then a comma, and a field after it
    if (m_more) m_rest.remove_prefix(1);
    return field;
  }

  // The name before the next equals sign.
  std::string_view nextName() {
    const std::size_t end = m_rest.find_first_of("=,\"");
    if (end == std::string_view::npos || m_rest[end] != '=') {
      throw RefusedRecord(SQLITE_ERROR, "column=value is expected at " + quotedForLog(m_rest));
    }
    const std::string_view name = m_rest.substr(0, end);
    m_rest.remove_prefix(end + 1);
    return name;
  }

 private:
  std::string plainField() {
    const std::size_t end = std::min(m_rest.find(','), m_rest.size());
    const std::string_view field = m_rest.substr(0, end);
    if (field.find('"') != std::string_view::npos) {
      throw RefusedRecord(SQLITE_ERROR,
                          "a quote inside a field without quotes, " + quotedForLog(field));
    }
    m_rest.remove_prefix(end);
    return std::string(field);
  }

  std::string quotedField() {
    std::string field;
    std::string_view left = m_rest.substr(1);
    while (true) {
      const std::size_t quote = left.find('"');
      if (quote == std::string_view::npos) {
        throw RefusedRecord(SQLITE_ERROR, "no closing quote after " + quotedForLog(m_rest));
      }
      field += left.substr(0, quote);
      left.remove_prefix(quote + 1);
      if (!left.starts_with('"')) break;
      field += '"';
      left.remove_prefix(1);
    }
    if (!left.empty() && left[0] != ',') {
      throw RefusedRecord(SQLITE_ERROR, "text after a closing quote, " + quotedForLog(left));
    }
    m_rest = left;
    return field;
  }

  std::string_view m_rest;
  bool m_more = true;
};

Value toValue(const ColumnDefinition& column, std::string text) {
  if (column.type == ColumnType::kText) return text;
  const std::optional<std::int64_t> number = parseNumber(text);
  const bool fits = number && (column.type == ColumnType::kBigInt ||
                               (*number >= std::numeric_limits<std::int32_t>::min() &&
                                *number <= std::numeric_limits<std::int32_t>::max()));
  if (!fits) {
    throw RefusedRecord(SQLITE_MISMATCH, "column " + column.name + " takes a number of " +
                                             (column.type == ColumnType::kInt ? "32" : "64") +
                                             " bits, not " + quotedForLog(text));
  }
  return *number;
}

std::size_t columnNamed(const TableDefinition& table, std::string_view name) {
  const std::optional<std::size_t> column = table.find(name);
  if (!column) throw RefusedRecord(SQLITE_ERROR, "no column is named " + quotedForLog(name));
  return *column;
}

bool isNamed(std::string_view text) {
  const std::size_t end = text.find_first_of("=,\"");
  return end != std::string_view::npos && end > 0 && text[end] == '=';
}

std::vector<Assignment> parsePositional(const TableDefinition& table, std::string_view text) {
  std::vector<Assignment> values;
  values.reserve(table.columns.size());
  FieldReader fields(text);
  while (fields.more()) {
    std::string field = fields.next();
    if (values.size() == table.columns.size()) {
      throw RefusedRecord(SQLITE_ERROR,
                          "too many fields, the first of them " + quotedForLog(field));
    }
    values.push_back({values.size(), toValue(table.columns[values.size()], std::move(field))});
  }
  if (values.size() < table.columns.size()) {
    throw RefusedRecord(
        SQLITE_ERROR, "too few fields, column " + table.columns[values.size()].name + " has none");
  }
  return values;
}

void requireComplete(const TableDefinition& table, const std::vector<Assignment>& values) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const ColumnDefinition& column = table.columns[i];
    const bool given = std::any_of(values.begin(), values.end(),
                                   [i](const Assignment& value) { return value.column == i; });
    if (given || column.automatic || column.optional) continue;
    throw RefusedRecord(SQLITE_ERROR, "too few fields, column " + column.name + " has none");
  }
}

}  // namespace

std::vector<Assignment> parseRecord(const TableDefinition& table, std::string_view text) {
  if (!isNamed(text)) return parsePositional(table, text);
  std::vector<Assignment> values = parseAssignments(table, text);
  requireComplete(table, values);
  return values;
}

std::vector<Assignment> parseAssignments(const TableDefinition& table, std::string_view text) {
  std::vector<Assignment> values;
  FieldReader fields(text);
  while (fields.more()) {
    const std::size_t column = columnNamed(table, fields.nextName());
    for (const Assignment& other : values) {
      if (other.column != column) continue;
      throw RefusedRecord(SQLITE_ERROR, "column " + table.columns[column].name + " is named twice");
    }
    values.push_back({column, toValue(table.columns[column], fields.next())});
  }
  return values;
}

Assignment parseFilter(const TableDefinition& table, std::string_view text) {
  FieldReader fields(text);
  const std::string_view name = fields.nextName();
  const std::size_t column = columnNamed(table, name);
  const std::string_view rest = text.substr(name.size() + 1);
  if (!rest.starts_with('"')) return {column, toValue(table.columns[column], std::string(rest))};
  std::string value = fields.next();
  if (fields.more()) throw RefusedRecord(SQLITE_ERROR, "a filter names one column");
  return {column, toValue(table.columns[column], std::move(value))};
}

std::int64_t parseKey(const TableDefinition& table, const char* text) {
  if (text == nullptr) throw RefusedRecord(SQLITE_MISUSE, "no key");
  return std::get<std::int64_t>(toValue(table.keyColumn(), text));
}

}  // namespace EventSystemHost
