#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EventSystem/platform/HostText.h"
#include "EventSystem/platform/OrbDB.h"
#include "tests/support/FakeHostInternals.h"

using namespace EventSystemTest;

namespace {

const int kGone = 5;     // the table was dropped under a handle
const int kNothing = 1;  // no such row, column or further row

std::optional<int> enterDatabase(const char* name, const std::string& arguments) {
  return host().enter({CallKind::kDatabase, name, arguments, {}});
}

bool inDefinitions(const char* iniPath) {
  return shown(iniPath) == state().configuration.databaseDirectory + "/orbdb.ini";
}

int copyText(const std::string& text, char* buffer, unsigned int size) {
  kvrstrcpy(buffer, text.c_str(), size);
  return 0;
}

long bigNumber(const std::string& text) {
  return static_cast<long>(std::strtoul(text.c_str(), nullptr, 10));
}

}  // namespace

namespace OrbDB {

struct CColumn::Impl {
  std::string name;
  FakeCell cell;
};

CColumn::CColumn(Impl* impl) : m_impl(impl) {}

CColumn::~CColumn() {
  delete m_impl;
}

const char* CColumn::name() const {
  const Guard guard;
  enterDatabase("CColumn::name", m_impl->name);
  return m_impl->name.c_str();
}

int CColumn::GetDataBigInt(long& value) const {
  const Guard guard;
  const std::optional<int> failure = enterDatabase("CColumn::GetDataBigInt", m_impl->name);
  if (failure || !m_impl->cell.readable) return failure.value_or(kNothing);
  value = bigNumber(m_impl->cell.text);
  return 0;
}

int CColumn::GetDataInt(int& value) const {
  const Guard guard;
  const std::optional<int> failure = enterDatabase("CColumn::GetDataInt", m_impl->name);
  if (failure || !m_impl->cell.readable) return failure.value_or(kNothing);
  value = static_cast<int>(bigNumber(m_impl->cell.text));
  return 0;
}

int CColumn::GetDataStr(char* buffer, unsigned int size) const {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("CColumn::GetDataStr", m_impl->name + ", " + std::to_string(size));
  if (failure || !m_impl->cell.readable) return failure.value_or(kNothing);
  return copyText(m_impl->cell.text, buffer, size);
}

struct CTable::Impl {
  explicit Impl(std::string tableName) : name(std::move(tableName)) {}

  FakeTable* table() const { return state().find(name); }
  const FakeCell* cell(const char* column) const;
  void makeCurrent(const FakeRow& row);
  int start(const char* filter);
  int next();
  int fill(std::vector<CColumn*>& list, int result) const;

  std::string name;
  bool counted = false;
  std::optional<FakeRow> current;
  std::vector<std::unique_ptr<CColumn> > columns;  // of the current row
  std::vector<std::string> columnNames;
  std::vector<FakeRow> walk;
  std::size_t position = 0;
};

const FakeCell* CTable::Impl::cell(const char* column) const {
  if (!current) return nullptr;
  const auto found = current->find(column);
  return found == current->end() || !found->second.readable ? nullptr : &found->second;
}

void CTable::Impl::makeCurrent(const FakeRow& row) {
  current = row;
  columns.clear();
  columnNames.clear();
  for (const FakeColumn& column : table()->columns()) {
    const auto found = row.find(column.name);
    if (found == row.end()) continue;
    columns.push_back(std::make_unique<CColumn>(new CColumn::Impl{column.name, found->second}));
    columnNames.push_back(column.name);
  }
}

int CTable::Impl::start(const char* filter) {
  if (table() == nullptr) return kGone;
  walk = table()->select(filter);
  position = 0;
  return next();
}

int CTable::Impl::next() {
  current.reset();
  if (table() == nullptr) return kGone;
  if (position >= walk.size()) return kNothing;
  makeCurrent(walk[position++]);
  return 0;
}

int CTable::Impl::fill(std::vector<CColumn*>& list, int result) const {
  list.clear();
  if (result != 0) return result;
  for (const std::unique_ptr<CColumn>& column : columns) list.push_back(column.get());
  return 0;
}

CTable::CTable(Impl* impl) : m_impl(impl) {}

CTable::CTable(const CTable& other) : m_impl(nullptr) {
  const Guard guard;
  enterDatabase("copy", other.m_impl->name);
  m_impl = new Impl(other.m_impl->name);
  m_impl->counted = true;
  ++state().liveHandles;
}

CTable::~CTable() {
  if (m_impl->counted) {
    const Guard guard;
    --state().liveHandles;
  }
  delete m_impl;
}

int CTable::readRecord(const char* key) {
  const Guard guard;
  const std::optional<int> failure = enterDatabase("readRecord", m_impl->name + ", " + shown(key));
  if (failure) return *failure;
  if (m_impl->table() == nullptr) return kGone;
  const FakeRow* row = m_impl->table()->find(key);
  if (row == nullptr) return kNothing;
  m_impl->makeCurrent(*row);
  return 0;
}

int CTable::GetValStr(const char* column, char* buffer, unsigned int size) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("GetValStr", m_impl->name + ", " + shown(column) + ", " + std::to_string(size));
  const FakeCell* cell = m_impl->cell(column);
  if (failure || cell == nullptr) {
    if (size != 0) buffer[0] = '\0';
    return failure.value_or(kNothing);
  }
  return copyText(cell->text, buffer, size);
}

int CTable::GetValBigInt(const char* column, long& value) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("GetValBigInt", m_impl->name + ", " + shown(column));
  const FakeCell* cell = m_impl->cell(column);
  if (failure || cell == nullptr) return failure.value_or(kNothing);
  value = bigNumber(cell->text);
  return 0;
}

int CTable::GetValInt(const char* column, int& value) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("GetValInt", m_impl->name + ", " + shown(column));
  const FakeCell* cell = m_impl->cell(column);
  if (failure || cell == nullptr) return failure.value_or(kNothing);
  value = static_cast<int>(bigNumber(cell->text));
  return 0;
}

int CTable::GetValBigInt(const char* key, const char* column, long& value) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("GetValBigInt", m_impl->name + ", " + shown(key) + ", " + shown(column));
  if (failure) return *failure;
  if (m_impl->table() == nullptr) return kGone;
  const FakeRow* row = m_impl->table()->find(key);
  if (row == nullptr) return kNothing;
  const auto cell = row->find(column);
  if (cell == row->end() || !cell->second.readable) return kNothing;
  value = bigNumber(cell->second.text);
  return 0;
}

int CTable::addRecord(const char* record, int* key, unsigned int flags) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("addRecord", m_impl->name + (key == nullptr ? ", no key, " : ", key, ") +
                                     std::to_string(flags) + ", " + shown(record));
  if (failure) return *failure;
  return m_impl->table() == nullptr ? kGone : m_impl->table()->add(record, key);
}

int CTable::updateRecord(const char* key, const char* assignments) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("updateRecord", m_impl->name + ", " + shown(key) + ", " + shown(assignments));
  if (failure) return *failure;
  return m_impl->table() == nullptr ? kGone : m_impl->table()->update(key, assignments);
}

int CTable::deleteRecord(const char* key) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("deleteRecord", m_impl->name + ", " + shown(key));
  if (failure) return *failure;
  return m_impl->table() == nullptr ? kGone : m_impl->table()->remove(key);
}

int CTable::ListRecordsStart(const char* filter) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("ListRecordsStart", m_impl->name + ", " + shown(filter));
  return failure ? *failure : m_impl->start(filter);
}

int CTable::ListRecordsNext(const char* filter) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("ListRecordsNext", m_impl->name + ", " + shown(filter));
  return failure ? *failure : m_impl->next();
}

int CTable::ListRecordsStart(std::vector<CColumn*>& columns, const char* filter) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("ListRecordsStart", m_impl->name + ", columns, " + shown(filter));
  return failure ? *failure : m_impl->fill(columns, m_impl->start(filter));
}

int CTable::ListRecordsNext(std::vector<CColumn*>& columns, const char* filter) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("ListRecordsNext", m_impl->name + ", columns, " + shown(filter));
  return failure ? *failure : m_impl->fill(columns, m_impl->next());
}

CColumn* CTable::getcolumn(const char* name) {
  const Guard guard;
  const std::optional<int> failure = enterDatabase("getcolumn", m_impl->name + ", " + shown(name));
  if (failure || !m_impl->current) return nullptr;
  for (std::size_t i = 0; i < m_impl->columnNames.size(); ++i) {
    if (m_impl->columnNames[i] == name) return m_impl->columns[i].get();
  }
  return nullptr;
}

COrbDatabase& COrbDatabase::Instance() {
  const Guard guard;
  static COrbDatabase database;
  enterDatabase("Instance", "");
  return database;
}

CTable* COrbDatabase::GetTable(const char* name) {
  const Guard guard;
  const std::optional<int> failure = enterDatabase("GetTable", shown(name));
  if (failure || state().find(name) == nullptr) return nullptr;
  std::unique_ptr<CTable>& handle = state().handles[name];
  if (!handle) handle = std::make_unique<CTable>(new CTable::Impl(name));
  return handle.get();
}

int COrbDatabase::CheckAddTable(const char* name, const char* iniPath) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("CheckAddTable", shown(name) + ", " + shown(iniPath));
  if (failure) return *failure;
  std::unique_ptr<FakeTable> table = FakeHost::Internals::define(name);
  if (!table || !inDefinitions(iniPath)) return kNothing;
  if (state().find(name) == nullptr) state().tables[name] = std::move(table);
  return 0;
}

int COrbDatabase::insertRecordsFromIni(const char* name, const char* iniPath) {
  const Guard guard;
  const std::optional<int> failure =
      enterDatabase("insertRecordsFromIni", shown(name) + ", " + shown(iniPath));
  if (failure) return *failure;
  FakeTable* table = state().find(name);
  if (table == nullptr || !inDefinitions(iniPath)) return kNothing;
  return shown(name) == "eventproperties" ? table->add("1,maxid,0", nullptr) : 0;
}

int COrbDatabase::open() {
  const Guard guard;
  return enterDatabase("open", "").value_or(0);
}

}  // namespace OrbDB
