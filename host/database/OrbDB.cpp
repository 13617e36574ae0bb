#include "EventSystem/platform/OrbDB.h"

#include <limits>

#include "host/database/Database.h"
#include "host/database/TableHandle.h"

namespace OrbDB {

namespace {

using EventSystemHost::currentDatabase;
using EventSystemHost::Value;

constexpr int kFailed = 1;

int toBigInt(const Value* value, long& number) {
  const auto parsed = value == nullptr ? std::nullopt : EventSystemHost::asNumber(*value);
  if (!parsed) return kFailed;
  number = *parsed;
  return 0;
}

int toInt(const Value* value, int& number) {
  long wide = 0;
  if (toBigInt(value, wide) != 0 || wide < std::numeric_limits<int>::min() ||
      wide > std::numeric_limits<int>::max()) {
    return kFailed;
  }
  number = static_cast<int>(wide);
  return 0;
}

int toText(const Value* value, char* buffer, unsigned int size) {
  if (value != nullptr) return EventSystemHost::copyText(*value, buffer, size) ? 0 : kFailed;
  if (buffer != nullptr && size > 0) buffer[0] = '\0';
  return kFailed;
}

}  // namespace

CColumn::CColumn(Impl* impl) : m_impl(impl) {}
CColumn::~CColumn() {
  delete m_impl;
}

const char* CColumn::name() const {
  return m_impl->definition->name.c_str();
}
int CColumn::GetDataBigInt(long& value) const {
  return toBigInt(m_impl->value, value);
}
int CColumn::GetDataInt(int& value) const {
  return toInt(m_impl->value, value);
}
int CColumn::GetDataStr(char* buffer, unsigned int size) const {
  return toText(m_impl->value, buffer, size);
}

CTable::CTable(Impl* impl) : m_impl(impl) {}
CTable::CTable(const CTable& other) : m_impl(new Impl(*other.m_impl)) {}
CTable::~CTable() {
  delete m_impl;
}

int CTable::readRecord(const char* key) {
  return m_impl->read(key);
}

int CTable::GetValStr(const char* column, char* buffer, unsigned int size) {
  return toText(m_impl->value(column), buffer, size);
}
int CTable::GetValBigInt(const char* column, long& value) {
  return toBigInt(m_impl->value(column), value);
}
int CTable::GetValInt(const char* column, int& value) {
  return toInt(m_impl->value(column), value);
}

int CTable::GetValBigInt(const char* key, const char* column, long& value) {
  Impl other(*m_impl);
  const int status = other.read(key);
  return status != 0 ? status : toBigInt(other.value(column), value);
}

int CTable::addRecord(const char* record, int* key, unsigned int /*flags*/) {
  const auto database = m_impl->database.lock();
  return database ? database->add(*m_impl->table, record, key) : kFailed;
}

int CTable::updateRecord(const char* key, const char* assignments) {
  const auto database = m_impl->database.lock();
  return database ? database->update(*m_impl->table, key, assignments) : kFailed;
}

int CTable::deleteRecord(const char* key) {
  const auto database = m_impl->database.lock();
  return database ? database->remove(*m_impl->table, key) : kFailed;
}

int CTable::ListRecordsStart(const char* filter) {
  return m_impl->startCounting(filter);
}
int CTable::ListRecordsNext(const char* filter) {
  return m_impl->nextCounting(filter);
}

int CTable::ListRecordsStart(std::vector<CColumn*>& columns, const char* filter) {
  const int status = m_impl->start(filter);
  m_impl->columns(columns);
  return status;
}

int CTable::ListRecordsNext(std::vector<CColumn*>& columns, const char* filter) {
  const int status = m_impl->next(filter);
  m_impl->columns(columns);
  return status;
}

CColumn* CTable::getcolumn(const char* name) {
  return m_impl->column(name);
}

COrbDatabase& COrbDatabase::Instance() {
  static COrbDatabase instance;
  return instance;
}

CTable* COrbDatabase::GetTable(const char* name) {
  const auto database = currentDatabase();
  return database ? database->table(name) : nullptr;
}

int COrbDatabase::CheckAddTable(const char* name, const char* iniPath) {
  const auto database = currentDatabase();
  return database ? database->addTable(name, iniPath) : kFailed;
}

int COrbDatabase::insertRecordsFromIni(const char* name, const char* iniPath) {
  const auto database = currentDatabase();
  return database ? database->insertInitialRows(name, iniPath) : kFailed;
}

int COrbDatabase::open() {
  return currentDatabase() ? 0 : kFailed;
}

}  // namespace OrbDB
