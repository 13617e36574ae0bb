// The fixture of the database stores' tests: rows put into the fake host's tables, and the state
// of a store's caches.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_UNIT_BACKENDS_DATABASESTORETEST_H
#define EVENTSYSTEM_TESTS_UNIT_BACKENDS_DATABASESTORETEST_H

#include <memory>
#include <string>

#include "EventSystem/OrbDBDSEventStorage.h"
#include "EventSystem/OrbDBEventStorage.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/PrivateAccess.h"

namespace EventSystemTest {

using EventSystem::DSEventStorage;
using EventSystem::Event;
using EventSystem::EventStorage;
using EventSystem::OrbDBDSEventStorage;
using EventSystem::OrbDBEventStorage;

typedef std::map<unsigned int, unsigned long> Highest;
typedef std::map<unsigned int, std::set<unsigned long> > Caches;
typedef char AuditPath[4096];

EVENTSYSTEM_TEST_ACCESS(MaxId, unsigned long EventStorage::*, &EventStorage::m_maxId)
EVENTSYSTEM_TEST_ACCESS(IdCache, std::set<unsigned long> EventStorage::*, &EventStorage::m_idCache)
EVENTSYSTEM_TEST_ACCESS(CountLimit, int EventStorage::*, &EventStorage::m_countLimit)
EVENTSYSTEM_TEST_ACCESS(AgeLimit, int EventStorage::*, &EventStorage::m_ageLimit)
EVENTSYSTEM_TEST_ACCESS(MaxIds, Highest DSEventStorage::*, &DSEventStorage::m_maxIds)
EVENTSYSTEM_TEST_ACCESS(IdCaches, Caches DSEventStorage::*, &DSEventStorage::m_idCaches)
EVENTSYSTEM_TEST_ACCESS(Initialized, bool OrbDBEventStorage::*, &OrbDBEventStorage::m_initialized)
EVENTSYSTEM_TEST_ACCESS(AuditDbPath, AuditPath OrbDBEventStorage::*,
                        &OrbDBEventStorage::m_auditDbPath)
EVENTSYSTEM_TEST_ACCESS(DSInitialized, bool OrbDBDSEventStorage::*,
                        &OrbDBDSEventStorage::m_initialized)

constexpr const char* kIniPath = "/fake/config/orbdb.ini";

template <typename Store>
class DatabaseStoreTest : public FakeHostTest {
 protected:
  void TearDown() override {
    store.reset();
    FakeHostTest::TearDown();
  }

  // Builds the store over what the tables hold; the calls so far are forgotten.
  void build() {
    store = std::make_unique<Store>();
    host().clearCalls();
  }

  static void configureWithoutDirectory() {
    FakeConfiguration configuration;
    configuration.databaseDirectory.clear();
    host().configure(configuration);
  }

  // Lets the n-th call of that name fail with a status.
  static void fail(const std::string& call, const std::string& arguments = "", int status = 13) {
    Fault fault;
    fault.call = call;
    fault.arguments = arguments;
    fault.status = status;
    host().inject(fault);
  }

  static FakeTable& events() { return host().table("events"); }
  static FakeTable& dsevents() { return host().table("dsevents"); }
  static FakeTable& properties() { return host().table("eventproperties"); }

  static void putRow(unsigned long id, unsigned long eventId, const std::string& text) {
    events().put({std::to_string(id), std::to_string(eventId), "5", "1700000000", text});
  }
  static void putRow(unsigned long id) { putRow(id, id, capacityText(id, 1700000000)); }

  static void putDSRow(unsigned long id, unsigned long eventId, const std::string& text,
                       const std::string& dsid) {
    dsevents().put({std::to_string(id), std::to_string(eventId), "5", "1700000000", text, dsid});
  }
  static void putDSRow(unsigned long id, unsigned int dsid) {
    putDSRow(id, id, capacityText(id, 1700000000), std::to_string(dsid));
  }

  static void putMaxId(unsigned long id) { properties().put({"1", "maxid", std::to_string(id)}); }
  static void putMaxId(unsigned long rowId, unsigned int dsid, unsigned long id) {
    properties().put({std::to_string(rowId), "maxid_" + std::to_string(dsid), std::to_string(id)});
  }
  static std::string maxId() { return properties().value("1", "propvalue"); }

  static LogLine noEventsTable(const char* function) {
    return error(4, "%s Failed to get the events table in OrbDB", function);
  }
  static LogLine noPropertiesTable(const char* function) {
    return error(4, "%s Failed to get the eventproperties table in OrbDB", function);
  }
  static LogLine readFailed(unsigned long id) {
    return error(4, "%s: read event %lu failed.", "readEvent", id);
  }
  static LogLine notInitialized(const char* function) {
    return trace("%s Event storage wasn't initialized properly.  Returning.", function);
  }

  std::unique_ptr<Store> store;
};

}  // namespace EventSystemTest

#endif
