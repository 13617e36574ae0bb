#include "DatabaseTable.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <limits>
#include <mutex>
#include <sstream>

#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostText.h"
#include "PlatformGuard.h"

namespace EventSystem {
namespace {

constexpr int kThrew = 1;  // non-zero and positive: a failure to every caller

// The decimal text that a row is addressed by.
struct Key {
  explicit Key(unsigned long id) { snprintf(text, sizeof text, "%lu", id); }
  char text[128];
};

// Reads a number as a stream does, blanks, signs and overflow included. Digits alone, and so few
// that they cannot overflow, are what a database gives, a million times at a start.
template <class Unsigned>
void readDecimal(const char* text, Unsigned& value) {
  const char* const end = text + strlen(text);
  const bool plain = end != text && end - text <= std::numeric_limits<Unsigned>::digits10 &&
                     std::all_of(text, end, [](char c) { return c >= '0' && c <= '9'; });
  if (plain) {
    std::from_chars(text, end, value);
  } else {
    std::istringstream(text) >> value;
  }
}

OrbDB::CTable* findTable(const char* name, const char* operation) {
  return guarded<OrbDB::CTable*>(operation, "GetTable", nullptr,
                                 [&] { return OrbDB::COrbDatabase::Instance().GetTable(name); });
}

}  // namespace

DatabaseTable::DatabaseTable(const char* name, const char* operation) : m_operation(operation) {
  const OrbDB::CTable* const table = findTable(name, operation);
  if (table == nullptr) return;
  guarded(operation, "CTable", false, [&] { return m_table.emplace(*table), true; });
}

int DatabaseTable::readRecord(unsigned long id) {
  return guarded(m_operation, "readRecord", kThrew,
                 [&] { return m_table->readRecord(Key(id).text); });
}

int DatabaseTable::deleteRecord(unsigned long id) {
  return guarded(m_operation, "deleteRecord", kThrew,
                 [&] { return m_table->deleteRecord(Key(id).text); });
}

int DatabaseTable::addRecord(const char* record, int* key) {
  return guarded(m_operation, "addRecord", kThrew,
                 [&] { return m_table->addRecord(record, key, 0); });
}

int DatabaseTable::updateRecord(const char* key, const char* assignments) {
  return guarded(m_operation, "updateRecord", kThrew,
                 [&] { return m_table->updateRecord(key, assignments); });
}

int DatabaseTable::getText(const char* column, char* buffer, unsigned int size) {
  return guarded(m_operation, "GetValStr", kThrew,
                 [&] { return m_table->GetValStr(column, buffer, size); });
}

int DatabaseTable::getNumber(const char* column, long& value) {
  return guarded(m_operation, "GetValBigInt", kThrew,
                 [&] { return m_table->GetValBigInt(column, value); });
}

int DatabaseTable::getNumber(const char* column, int& value) {
  return guarded(m_operation, "GetValInt", kThrew,
                 [&] { return m_table->GetValInt(column, value); });
}

int DatabaseTable::getNumber(const char* key, const char* column, long& value) {
  return guarded(m_operation, "GetValBigInt", kNoAnswer,
                 [&] { return m_table->GetValBigInt(key, column, value); });
}

template <class Unsigned>
bool DatabaseTable::getDecimal(const char* column, Unsigned& value) {
  const OrbDB::CColumn* const current = guarded<OrbDB::CColumn*>(
      m_operation, "getcolumn", nullptr, [&] { return m_table->getcolumn(column); });
  if (current == nullptr) return true;
  char text[64];
  if (!EventSystem::getText(*current, text, sizeof text, m_operation)) {
    ErrorA(kStoreFailure, "%s Column %s of a row cannot be read; the row is passed over",
           m_operation, column);
    return false;
  }
  readDecimal(text, value);
  return true;
}

template bool DatabaseTable::getDecimal(const char*, unsigned int&);
template bool DatabaseTable::getDecimal(const char*, unsigned long&);

bool DatabaseTable::firstRow(const char* filter) {
  return guarded(m_operation, "ListRecordsStart", kThrew,
                 [&] { return m_table->ListRecordsStart(filter); }) == 0;
}

bool DatabaseTable::nextRow(const char* filter) {
  return guarded(m_operation, "ListRecordsNext", kThrew,
                 [&] { return m_table->ListRecordsNext(filter); }) == 0;
}

bool DatabaseTable::firstRow(Columns& columns) {
  return guarded(m_operation, "ListRecordsStart", kThrew,
                 [&] { return m_table->ListRecordsStart(columns, nullptr); }) == 0;
}

bool DatabaseTable::nextRow(Columns& columns) {
  return guarded(m_operation, "ListRecordsNext", kThrew,
                 [&] { return m_table->ListRecordsNext(columns, nullptr); }) == 0;
}

bool getNumber(const OrbDB::CColumn& column, long& value, const char* operation) {
  return guarded(operation, "GetDataBigInt", kThrew, [&] { return column.GetDataBigInt(value); }) ==
         0;
}

bool getNumber(const OrbDB::CColumn& column, int& value, const char* operation) {
  return guarded(operation, "GetDataInt", kThrew, [&] { return column.GetDataInt(value); }) == 0;
}

bool getText(const OrbDB::CColumn& column, char* buffer, unsigned int size, const char* operation) {
  return guarded(operation, "GetDataStr", kThrew,
                 [&] { return column.GetDataStr(buffer, size); }) == 0;
}

bool databaseHasTable(const char* name, const char* operation) {
  return findTable(name, operation) != nullptr;
}

bool createTable(const char* name, const char* iniPath, const char* operation) {
  return guarded(operation, "CheckAddTable", kThrew,
                 [&] { return OrbDB::COrbDatabase::Instance().CheckAddTable(name, iniPath); }) == 0;
}

bool insertInitialRows(const char* name, const char* iniPath, const char* operation) {
  return guarded(operation, "insertRecordsFromIni", kThrew, [&] {
           return OrbDB::COrbDatabase::Instance().insertRecordsFromIni(name, iniPath);
         }) == 0;
}

bool openDatabase(const char* operation) {
  return guarded(operation, "open", kThrew,
                 [&] { return OrbDB::COrbDatabase::Instance().open(); }) == 0;
}

bool locateDatabaseIni(char (&path)[4096]) {
  { const std::lock_guard<ConfigManager> settled(configManager); }
  char directory[4096];
  kvrstrcpy(directory, configManager.databaseConfigDirectory, sizeof directory);
  if (kvrstrlen(directory, sizeof directory) == 0) return false;
  joinPath(path, directory, "orbdb.ini");
  return true;
}

void joinPath(char (&path)[4096], const char* directory, const char* file) {
  const int length = snprintf(path, sizeof path, "%s%s%s", directory, "/", file);
  if (static_cast<unsigned long>(length) >= sizeof path) {
    WarningA(kStoreFailure, "%s The path is longer than %d bytes and was cut: %s", __func__,
             static_cast<int>(sizeof path - 1), path);
  }
}

}  // namespace EventSystem
