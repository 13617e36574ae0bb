#include "FailingSqlite.h"

#include <sqlite3.h>

#include <stdexcept>

#include "FailingNew.h"

namespace EventSystemTest {
namespace {

sqlite3_mem_methods real;

void* allocate(int size) {
  return allocationFails() ? nullptr : real.xMalloc(size);
}

void* reallocate(void* memory, int size) {
  return allocationFails() ? nullptr : real.xRealloc(memory, size);
}

}  // namespace

void includeSqlitesAllocations() {
  if (real.xMalloc != nullptr) return;
  sqlite3_shutdown();
  sqlite3_mem_methods failing;
  int result = sqlite3_config(SQLITE_CONFIG_GETMALLOC, &real);
  failing = real;
  failing.xMalloc = allocate;
  failing.xRealloc = reallocate;
  if (result == SQLITE_OK) result = sqlite3_config(SQLITE_CONFIG_MALLOC, &failing);
  if (result == SQLITE_OK) result = sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);
  if (result != SQLITE_OK) throw std::runtime_error("SQLite keeps its allocator");
}

}  // namespace EventSystemTest
