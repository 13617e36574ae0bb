#include "tests/support/FakeTable.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>

namespace EventSystemTest {

namespace {

const int kBadRecord = 22;
const int kDuplicateKey = 17;
const int kNoSuchRow = 2;

// The field that starts at `position`, which moves behind its comma or to the end.
std::optional<std::string> takeField(const std::string& record, std::size_t& position) {
  std::string field;
  if (position < record.size() && record[position] == '"') {
    for (++position;; ++position) {
      if (position >= record.size()) return std::nullopt;
      if (record[position] == '"') {
        ++position;
        if (position >= record.size() || record[position] != '"') break;
      }
      field += record[position];
    }
    if (position < record.size() && record[position] != ',') return std::nullopt;
    return field;
  }
  while (position < record.size() && record[position] != ',') field += record[position++];
  return field;
}

unsigned long number(const std::string& text) {
  return std::strtoul(text.c_str(), nullptr, 10);
}

}  // namespace

std::optional<std::vector<std::string> > splitRecord(const std::string& record) {
  std::vector<std::string> fields;
  for (std::size_t position = 0;; ++position) {
    const std::optional<std::string> field = takeField(record, position);
    if (!field) return std::nullopt;
    fields.push_back(*field);
    if (position >= record.size()) return fields;
  }
}

bool endsInsideQuotes(const std::string& record) {
  bool inside = false;
  for (const char c : record) inside = inside != (c == '"');
  return inside;
}

FakeTable::FakeTable(std::string name, std::vector<FakeColumn> columns, bool numbersItsRows)
    : m_name(std::move(name)), m_columns(std::move(columns)), m_numbersItsRows(numbersItsRows) {}

void FakeTable::put(const std::vector<std::string>& values) {
  FakeRow row;
  for (std::size_t i = 0; i < m_columns.size(); ++i) row[m_columns[i].name].text = values.at(i);
  const unsigned long key = number(values.at(0));
  if (key > m_lastNumber) m_lastNumber = key;
  m_rows[key] = row;
}

bool FakeTable::has(const std::string& key) const {
  return find(key) != nullptr;
}

std::string FakeTable::value(const std::string& key, const std::string& column) const {
  return m_rows.at(number(key)).at(column).text;
}

void FakeTable::removeColumn(const std::string& key, const std::string& column) {
  m_rows.at(number(key)).erase(column);
}

void FakeTable::makeUnreadable(const std::string& key, const std::string& column) {
  m_rows.at(number(key)).at(column).readable = false;
}

void FakeTable::makeReadable(const std::string& key, const std::string& column) {
  m_rows.at(number(key)).at(column).readable = true;
}

std::vector<std::string> FakeTable::keys() const {
  std::vector<std::string> all;
  for (const Rows::value_type& row : m_rows) all.push_back(std::to_string(row.first));
  return all;
}

int FakeTable::add(const std::string& record, int* key) {
  const std::optional<std::vector<std::string> > fields = splitRecord(record);
  if (!fields) return kBadRecord;
  const bool named = fields->front().find('=') != std::string::npos;
  std::optional<FakeRow> row = named ? assignments(*fields) : rowOf(*fields);
  if (!row) return kBadRecord;
  if (row->count(m_columns[0].name) == 0) {
    if (!m_numbersItsRows) return kBadRecord;
    row->emplace(m_columns[0].name, FakeCell{std::to_string(m_lastNumber + 1)});
    if (key != nullptr) *key = static_cast<int>(m_lastNumber + 1);
  }
  const unsigned long id = number((*row)[m_columns[0].name].text);
  if (!m_rows.emplace(id, *row).second) return kDuplicateKey;
  if (id > m_lastNumber) m_lastNumber = id;
  return 0;
}

int FakeTable::update(const std::string& key, const std::string& text) {
  const auto found = m_rows.find(number(key));
  if (found == m_rows.end()) return kNoSuchRow;
  const std::optional<std::vector<std::string> > fields = splitRecord(text);
  const std::optional<FakeRow> changes = fields ? assignments(*fields) : std::nullopt;
  if (!changes) return kBadRecord;
  for (const FakeRow::value_type& change : *changes) found->second[change.first] = change.second;
  return 0;
}

int FakeTable::remove(const std::string& key) {
  return m_rows.erase(number(key)) == 1 ? 0 : kNoSuchRow;
}

const FakeRow* FakeTable::find(const std::string& key) const {
  const auto found = m_rows.find(number(key));
  return found == m_rows.end() ? nullptr : &found->second;
}

std::vector<FakeRow> FakeTable::select(const char* filter) const {
  const std::string wanted = filter == nullptr ? "" : filter;
  const std::size_t equals = wanted.find('=');
  const std::string columnName = wanted.substr(0, equals);
  std::vector<FakeRow> found;
  for (const Rows::value_type& row : m_rows) {
    const auto cell = row.second.find(columnName);
    if (filter == nullptr ||
        (cell != row.second.end() && cell->second.text == wanted.substr(equals + 1))) {
      found.push_back(row.second);
    }
  }
  return found;
}

const FakeColumn* FakeTable::column(const std::string& name) const {
  for (const FakeColumn& candidate : m_columns) {
    if (candidate.name == name) return &candidate;
  }
  return nullptr;
}

std::optional<FakeRow> FakeTable::rowOf(const std::vector<std::string>& fields) const {
  if (fields.size() != m_columns.size()) return std::nullopt;
  FakeRow row;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!fits(m_columns[i], fields[i])) return std::nullopt;
    row[m_columns[i].name].text = fields[i];
  }
  return row;
}

std::optional<FakeRow> FakeTable::assignments(const std::vector<std::string>& fields) const {
  FakeRow row;
  for (const std::string& field : fields) {
    const std::size_t equals = field.find('=');
    if (equals == std::string::npos) return std::nullopt;
    const FakeColumn* target = column(field.substr(0, equals));
    const std::string text = field.substr(equals + 1);
    if (target == nullptr || !fits(*target, text)) return std::nullopt;
    row[target->name].text = text;
  }
  return row;
}

bool FakeTable::fits(const FakeColumn& column, const std::string& text) const {
  if (column.type == ColumnType::kText) return true;
  const std::size_t start = !text.empty() && text[0] == '-' ? 1 : 0;
  if (start == text.size()) return false;
  for (std::size_t i = start; i < text.size(); ++i) {
    if (std::isdigit(static_cast<unsigned char>(text[i])) == 0) return false;
  }
  return true;
}

}  // namespace EventSystemTest
