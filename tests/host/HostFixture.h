// A Host in a directory of its own, and the calls that tests make most.
//
// Thread safety: as Host and OrbDB.

#ifndef EVENTSYSTEM_TESTS_HOST_HOSTFIXTURE_H
#define EVENTSYSTEM_TESTS_HOST_HOSTFIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "host/Host.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

// A handle to a table that must exist.
OrbDB::CTable open(const char* table);

// `id,id,5,1700000000,"text"`.
std::string eventRecord(long id, const std::string& text = "EVENT{}");

// The keys of all rows, or of those that match, by a walk.
std::vector<long> keysOf(const char* table, const char* filter = nullptr);

std::string textOf(const char* table, const char* key, const char* column);

std::string contentOf(const std::filesystem::path& file);

// One value, read by SQLite itself, as another program would.
std::string sqlite(const std::filesystem::path& file, const std::string& sql);

class HostTest : public ::testing::Test {
 protected:
  HostTest();

  std::filesystem::path home() const { return m_directory.path(); }
  std::filesystem::path database() const { return home() / "events.db"; }
  std::string definitions() const { return (home() / "orbdb.ini").string(); }

  void writeFile(const char* name, const std::string& content) const;
  void useDurability(const char* durability) const;

  EventSystemHost::Host& start(
      EventSystemHost::Access access = EventSystemHost::Access::kReadWrite);
  void stop() { m_host.reset(); }
  EventSystemHost::Host& host() { return *m_host; }

  // Creates events, eventproperties and dsevents, as the library does.
  void createTables(const std::filesystem::path& definitionsIn) const;
  void startWithTables() { startWithTablesIn(home()); }
  void startWithTablesIn(const std::filesystem::path& definitionsIn);

  // What the Host has logged.
  std::string log() const { return contentOf(home() / "log" / "eventsystem.log"); }

 private:
  TempDir m_directory;
  std::unique_ptr<EventSystemHost::Host> m_host;
};

}  // namespace EventSystemTest

#endif
