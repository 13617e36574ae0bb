// A complete host in one file: the queue in memory, constant limits, the log on standard error.
// libEventSystem.so finds what EventSystem/platform/ declares in the program that loads it; all of
// it must be there. What this program has no use for, the database and the cluster, refuses.
//
//   c++ minimal_host.cpp -lEventSystem -o minimal_host

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/HashEventStorage.h"
#include "EventSystem/platform/ClusterAPI.h"
#include "EventSystem/platform/HostClock.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "EventSystem/platform/OrbDB.h"

// clang-format off

// The log. Nothing calls __Trace() while TraceOn() says no.
static int say(const char* level, int code, const char* format, va_list values)
    __attribute__((format(printf, 3, 0)));
static int say(const char* level, int code, const char* format, va_list values) {
  std::fprintf(stderr, "%s %d: ", level, code);
  std::vfprintf(stderr, format, values);
  std::fputc('\n', stderr);
  return code;
}
#define SAY(level)             \
  va_list v;                   \
  va_start(v, format);         \
  say(level, code, format, v); \
  va_end(v);                   \
  return code
int ErrorA(int code, const char* format, ...) { SAY("error"); }
int WarningA(int code, const char* format, ...) { SAY("warning"); }
int InfoA(int code, const char* format, ...) { SAY("info"); }
int TraceOn() { return 0; }
void __Trace(const char*, ...) {}

// Texts and clock.
char* kvrstrncpy(char* to, const char* from, unsigned long count, unsigned long bound) {
  std::snprintf(to, bound, "%.*s", static_cast<int>(count), from == nullptr ? "" : from);
  return to;
}
char* kvrstrcpy(char* to, const char* from, unsigned long bound) {
  return kvrstrncpy(to, from, bound, bound);
}
unsigned long kvrstrlen(const char* text, unsigned long bound) { return strnlen(text, bound); }
int QMStringEscapeA(const char*, char*, unsigned long) { return 1; }
long gethrtime() { return std::chrono::steady_clock::now().time_since_epoch().count(); }
double hrtime2seconds(long nanoseconds) { return static_cast<double>(nanoseconds) / 1e9; }

// The configuration: no files, and at most 1000 events of any age.
static std::mutex configMutex;
void ConfigManager::lock() { configMutex.lock(); }
void ConfigManager::unlock() { configMutex.unlock(); }
ConfigManager configManager = {};
const char* const _kvr_config_section_string_table_[] = {"limits", "audit"};
const char* const _kvr_config_entry_string_table_[] = {"age", "count", "directory"};
int QMConfigLocate(const char*, char* path, unsigned int size) {
  kvrstrcpy(path, "none", size);
  return 1;
}
int InifileLoadA(const char*) { return 0; }
int InifileReleaseA(const char*) { return 0; }
int InifileGetIntegerA(const char*, const char* entry, int* value, int, const char*) {
  *value = std::strcmp(entry, "count") == 0 ? 1000 : 0;
  return 0;
}
int InifileGetValueA(const char*, const char*, char* value, unsigned int size,
                     const char* otherwise, const char*) {
  kvrstrcpy(value, otherwise, size);
  return 0;
}
int QMDSIDValidate(unsigned int) { return 0; }

// The database. It has no tables, so a table handle or a column is never made.
namespace OrbDB {
COrbDatabase& COrbDatabase::Instance() {
  static COrbDatabase database;
  return database;
}
CTable* COrbDatabase::GetTable(const char*) { return nullptr; }
int COrbDatabase::CheckAddTable(const char*, const char*) { return 1; }
int COrbDatabase::insertRecordsFromIni(const char*, const char*) { return 1; }
int COrbDatabase::open() { return 1; }
CTable::CTable(const CTable&) : m_impl(nullptr) {}
CTable::~CTable() {}
int CTable::readRecord(const char*) { return 1; }
int CTable::GetValStr(const char*, char*, unsigned int) { return 1; }
int CTable::GetValBigInt(const char*, long&) { return 1; }
int CTable::GetValInt(const char*, int&) { return 1; }
int CTable::GetValBigInt(const char*, const char*, long&) { return 1; }
int CTable::addRecord(const char*, int*, unsigned int) { return 1; }
int CTable::updateRecord(const char*, const char*) { return 1; }
int CTable::deleteRecord(const char*) { return 1; }
int CTable::ListRecordsStart(const char*) { return 1; }
int CTable::ListRecordsNext(const char*) { return 1; }
int CTable::ListRecordsStart(std::vector<CColumn*>&, const char*) { return 1; }
int CTable::ListRecordsNext(std::vector<CColumn*>&, const char*) { return 1; }
CColumn* CTable::getcolumn(const char*) { return nullptr; }
const char* CColumn::name() const { return ""; }
int CColumn::GetDataBigInt(long&) const { return 1; }
int CColumn::GetDataInt(int&) const { return 1; }
int CColumn::GetDataStr(char*, unsigned int) const { return 1; }
}  // namespace OrbDB

// The cluster.
using Text = std::string;
using Id = unsigned long;
using Number = unsigned int;
ClusterAPI& ClusterAPI::instance() {
  static ClusterAPI service;
  return service;
}
Number ClusterAPI::newEvent(const Text&, const Text&, const Text&, Id, Id&, Number) { return 1; }
Number ClusterAPI::getNextEvent(const Text&, Id, Id&, Text&, Text&, Number) { return 1; }
Number ClusterAPI::deleteEventById(const Text&, Id, Number) { return 1; }

// clang-format on

int main() {
  using namespace EventSystem;
  char server[] = "node1";
  CapacityEvent capacity(server, 1000, 800, 500, 400, 0);
  AbilitiesEvent abilities(0x1F, server, 0);
  ActivityEvent activity(3, 1700000000, 2, "disk full", 0);

  HashEventStorage queue;
  for (Event* const event : std::initializer_list<Event*>{&capacity, &abilities, &activity}) {
    if (queue.writeEvent(event) != 0) return 1;
    std::printf("queued as %lu\n", event->getId());
  }
  for (unsigned long last = 0;;) {
    Event* next = nullptr;
    if (queue.getNextEvent(last, &next) != 0) return 1;
    const std::unique_ptr<Event> event(next);
    if (event == nullptr) return 0;  // the end of the queue
    char line[2048];
    event->toString(line, sizeof line);
    std::printf("%s\n", line);
    last = event->getId();
    queue.deleteEvent(last);
  }
}
