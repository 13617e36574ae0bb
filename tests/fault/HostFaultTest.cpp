// Every operation of the database stores and of the manager, with each of its host and SQLite
// calls failing or throwing in turn. Whatever fails: no exception leaves an operation, its result
// is a documented one, no handle stays behind, no event that was stored is lost, and the queue
// works afterwards.

#include <sqlite3.h>

#include <algorithm>
#include <functional>
#include <new>
#include <optional>
#include <set>

#include "EventSystem/EventManager.h"
#include "EventSystem/OrbDBDSEventStorage.h"
#include "EventSystem/OrbDBEventStorage.h"
#include "FailingNew.h"
#include "FailingSqlite.h"
#include "FaultTable.h"
#include "tests/support/AuditFile.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"
#include "tests/support/SqliteProbe.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;
using EventSystem::OrbDBDSEventStorage;
using EventSystem::OrbDBEventStorage;

// What an operation works on: whichever of the three a case builds.
struct Subject {
  std::unique_ptr<OrbDBEventStorage> global;
  std::unique_ptr<OrbDBDSEventStorage> selections;
  std::unique_ptr<EventManager> manager;
};

struct Operation {
  std::string name;
  std::function<void(Subject&)> build;  // without faults
  std::function<int(Subject&)> run;     // with one
  std::set<int> results;                // the documented ones; empty: any count of problems
  bool deletes = false;                 // event "kept" may be gone afterwards
};

void buildGlobal(Subject& subject) {
  subject.global = std::make_unique<OrbDBEventStorage>();
}
void buildSelections(Subject& subject) {
  subject.selections = std::make_unique<OrbDBDSEventStorage>();
}
void buildManager(Subject& subject) {
  subject.manager = std::make_unique<EventManager>();
}
void buildNothing(Subject&) {}

// Reads or walks with that function, and drops the event that comes of it.
template <typename Function>
int dropping(Function function) {
  Event* event = nullptr;
  const int result = function(&event);
  const std::unique_ptr<Event> owned(event);
  if (result != 0) {
    EXPECT_EQ(nullptr, event) << "an event came with result " << result;
  }
  return result;
}

int writeWith(const std::function<int(Event*)>& write) {
  const std::unique_ptr<Event> event = [] {
    const AllocationPause pause;
    return newCapacityEvent("written");
  }();
  return write(event.get());
}

std::vector<Operation> globalOperations() {
  return {
      {"OrbDBEventStorage()",
       buildNothing,
       [](Subject& s) {
         buildGlobal(s);
         return 0;
       },
       {0}},
      {"OrbDBEventStorage() without tables",
       [](Subject&) {
         host().dropTable("events");
         host().dropTable("eventproperties");
       },
       [](Subject& s) {
         buildGlobal(s);
         return 0;
       },
       {0},
       true},
      {"OrbDBEventStorage::writeEvent",
       buildGlobal,
       [](Subject& s) { return writeWith([&](Event* e) { return s.global->writeEvent(e); }); },
       {0, 4}},
      {"OrbDBEventStorage::readEvent",
       buildGlobal,
       [](Subject& s) { return dropping([&](Event** e) { return s.global->readEvent(1, e); }); },
       {0, 4, 67}},
      {"OrbDBEventStorage::readEvent of nonsense",
       buildGlobal,
       [](Subject& s) { return dropping([&](Event** e) { return s.global->readEvent(2, e); }); },
       {4, 9, 67}},
      {"OrbDBEventStorage::getNextEvent",
       buildGlobal,
       [](Subject& s) { return dropping([&](Event** e) { return s.global->getNextEvent(0, e); }); },
       {0}},
      {"OrbDBEventStorage::deleteEvent",
       buildGlobal,
       [](Subject& s) {
         s.global->deleteEvent(1);
         return 0;
       },
       {0},
       true},
      {"OrbDBEventStorage::checkConsistency(false)",
       buildGlobal,
       [](Subject& s) { return s.global->checkConsistency(false); },
       {}},
      {"OrbDBEventStorage::checkConsistency(true)",
       buildGlobal,
       [](Subject& s) { return s.global->checkConsistency(true); },
       {}},
      {"OrbDBEventStorage::populateIdCache",
       buildGlobal,
       [](Subject& s) { return s.global->populateIdCache(); },
       {0, 4}},
      {"OrbDBEventStorage::getNewID",
       buildGlobal,
       [](Subject& s) { return s.global->getNewID() == 0 ? 4 : 0; },
       {0, 4}},
      {"OrbDBEventStorage::PopuAuditEventDB",
       buildGlobal,
       [](Subject& s) { return static_cast<int>(s.global->PopuAuditEventDB(true)); },
       {0, 4, 9, 50}},
  };
}

std::vector<Operation> dataSelectionOperations() {
  return {
      {"OrbDBDSEventStorage()",
       buildNothing,
       [](Subject& s) {
         buildSelections(s);
         return 0;
       },
       {0}},
      {"OrbDBDSEventStorage() without its table",
       [](Subject&) { host().dropTable("dsevents"); },
       [](Subject& s) {
         buildSelections(s);
         return 0;
       },
       {0},
       true},
      {"OrbDBDSEventStorage::writeEvent",
       buildSelections,
       [](Subject& s) {
         return writeWith([&](Event* e) { return s.selections->writeEvent(e, 3); });
       },
       {0, 4}},
      {"OrbDBDSEventStorage::writeEvent, first of its dsid",
       buildSelections,
       [](Subject& s) {
         return writeWith([&](Event* e) { return s.selections->writeEvent(e, 8); });
       },
       {0, 4}},
      {"OrbDBDSEventStorage::readEvent",
       buildSelections,
       [](Subject& s) {
         return dropping([&](Event** e) { return s.selections->readEvent(1, e, 3); });
       },
       {0, 4, 67}},
      {"OrbDBDSEventStorage::readEvent of nonsense",
       buildSelections,
       [](Subject& s) {
         return dropping([&](Event** e) { return s.selections->readEvent(2, e, 3); });
       },
       {4, 9, 67}},
      {"OrbDBDSEventStorage::getNextEvent",
       buildSelections,
       [](Subject& s) {
         return dropping([&](Event** e) { return s.selections->getNextEvent(0, e, 3); });
       },
       {0}},
      {"OrbDBDSEventStorage::deleteEvent",
       buildSelections,
       [](Subject& s) {
         s.selections->deleteEvent(1, 3);
         return 0;
       },
       {0},
       true},
      {"OrbDBDSEventStorage::checkConsistency(false)",
       buildSelections,
       [](Subject& s) { return s.selections->checkConsistency(false); },
       {}},
      {"OrbDBDSEventStorage::checkConsistency(true)",
       buildSelections,
       [](Subject& s) { return s.selections->checkConsistency(true); },
       {}},
      {"OrbDBDSEventStorage::populateIdCache",
       buildSelections,
       [](Subject& s) { return s.selections->populateIdCache(); },
       {0, 4}},
      {"OrbDBDSEventStorage::getFirstDsid",
       buildSelections,
       [](Subject& s) {
         unsigned int dsid = 0;
         return s.selections->getFirstDsid(dsid);
       },
       {0, 67, 72}},
      {"OrbDBDSEventStorage::getNewID",
       buildSelections,
       [](Subject& s) { return s.selections->getNewID(3) == 0 ? 4 : 0; },
       {0}},
      {"OrbDBDSEventStorage::getMaxIdInDB",
       buildSelections,
       [](Subject& s) {
         const unsigned long id = s.selections->getMaxIdInDB(3);
         EXPECT_TRUE(id == 0 || id == 20) << id;
         return 0;
       },
       {0}},
      {"OrbDBDSEventStorage::setMaxIdInDB",
       buildSelections,
       [](Subject& s) { return static_cast<int>(s.selections->setMaxIdInDB(30, 3)); },
       {0, 4}},
  };
}

std::vector<Operation> managerOperations() {
  std::vector<Operation> operations = {
      {"EventManager()",
       buildNothing,
       [](Subject& s) {
         buildManager(s);
         return 0;
       },
       {0}},
      {"EventManager::checkConsistency(true)",
       buildManager,
       [](Subject& s) { return s.manager->checkConsistency(true); },
       {0}},
  };
  for (const unsigned int dsid : {0u, 3u}) {
    const std::string queue = dsid == 0 ? ", global" : ", data selection";
    operations.push_back({"EventManager::newEvent" + queue,
                          buildManager,
                          [dsid](Subject& s) {
                            return writeWith(
                                [&](Event* e) { return s.manager->newEvent(e, dsid); });
                          },
                          {0, 4}});
    operations.push_back({"EventManager::getNextEvent" + queue,
                          buildManager,
                          [dsid](Subject& s) {
                            return dropping(
                                [&](Event** e) { return s.manager->getNextEvent(0, e, dsid); });
                          },
                          {0}});
    operations.push_back({"EventManager::deleteEvent" + queue,
                          buildManager,
                          [dsid](Subject& s) {
                            s.manager->deleteEvent(1, dsid);
                            return 0;
                          },
                          {0},
                          true});
  }
  return operations;
}

std::vector<Operation> allOperations() {
  std::vector<Operation> all = globalOperations();
  for (const Operation& operation : dataSelectionOperations()) all.push_back(operation);
  for (const Operation& operation : managerOperations()) all.push_back(operation);
  return all;
}

std::string modeName(FaultMode mode) {
  switch (mode) {
    case FaultMode::kFail:
      return "fails";
    case FaultMode::kThrow:
      return "throws";
    case FaultMode::kThrowOdd:
      return "throws an int";
    case FaultMode::kThrowBadAlloc:
      return "throws bad_alloc";
  }
  return "?";
}

// Host calls whose failures the stores absorb. Log calls are not among them, nor are the readings
// of the limits, which the store bases make.
bool isAbsorbed(const Call& call) {
  return call.kind == CallKind::kDatabase || call.kind == CallKind::kText ||
         call.name == "QMDSIDValidate" || call.name == "InifileGetValueA";
}

class HostFault : public FakeHostTest, public ::testing::WithParamInterface<std::size_t> {
 protected:
  const Operation& operation() const {
    static const std::vector<Operation> all = allOperations();
    return all.at(GetParam());
  }

  // A host with damage of every kind in both tables, an age limit, and two audit rows.
  void prepare() {
    host().reset();
    FakeConfiguration configuration;
    configuration.ageLimit = 1;
    configuration.auditDirectory = directory.path().string();
    host().configure(configuration);
    fillTables();
    fillAuditFile();
    operation().build(subject);
    // Building imported and repaired; the damage is put back.
    if (subject.global || subject.selections || subject.manager) {
      fillTables();
      fillAuditFile();
    }
    host().clearCalls();
    SqliteProbe::instance().reset();
  }

  // Copied from one that is made once: this runs thousands of times.
  void fillAuditFile() {
    namespace fs = std::filesystem;
    const fs::path model = directory.path() / "model.db";
    if (!fs::exists(model)) {
      AuditFile file(model);
      file.add(1, "kept audit");
      file.add(2, "1700000000", "malformed");
    }
    fs::remove(directory.path() / "audit.db-journal");
    fs::copy_file(model, directory.path() / "audit.db", fs::copy_options::overwrite_existing);
  }

  static void fillTables() {
    for (const char* name : {"events", "dsevents"}) {
      const auto put = [name](unsigned long id, unsigned long eventId, const std::string& text) {
        host().table(name).put({std::to_string(id), std::to_string(eventId), "5", "1", text, "3"});
      };
      put(1, 1, capacityText(1, 1, "kept"));
      put(2, 2, "nonsense");
      put(3, 4, capacityText(4, 1, "keptmismatch"));
      put(5, 5, capacityText(5, now(), "kept"));
    }
    host().table("eventproperties").put({"1", "maxid", "20"});
    host().table("eventproperties").put({"2", "maxid_3", "20"});
    host().table("dataselection").put({"7", "9"});
  }

  // The result as text; "exception" when one came out.
  std::string runOnce() {
    try {
      const int result = operation().run(subject);
      const std::set<int>& allowed = operation().results;
      EXPECT_TRUE(allowed.empty() ? result >= 0 && result < 20 : allowed.count(result) != 0)
          << "result " << result;
      return allowed.empty() ? "a count" : std::to_string(result);
    } catch (const std::exception& exception) {
      ADD_FAILURE() << "an exception came out: " << exception.what();
    } catch (...) {
      ADD_FAILURE() << "an exception came out";
    }
    return "exception";
  }

  // The same while allocations fail. Only the manager keeps their failure from its caller.
  std::string runWith(const AllocationFaults& faults, std::size_t* allocations = nullptr) {
    const FailingNew failing(faults);
    std::string outcome = "bad_alloc";
    try {
      const int result = operation().run(subject);
      const AllocationPause pause;
      const std::set<int>& allowed = operation().results;
      EXPECT_TRUE(allowed.empty() || result == 4 || allowed.count(result) != 0) << result;
      outcome = allowed.empty() && result != 4 ? "a count" : std::to_string(result);
    } catch (const std::bad_alloc&) {
      const AllocationPause pause;
      EXPECT_FALSE(isCaughtByTheManager()) << "an exception came out";
    }
    if (allocations != nullptr) *allocations = failing.count();
    return outcome;
  }

  bool isCaughtByTheManager() const { return operation().name.rfind("EventManager::", 0) == 0; }

  // The audit record that parses is in its file or in the queue.
  void checkAuditRow() {
    const AuditFile file(directory.path() / "audit.db");
    const std::vector<int> left = file.ids();
    const bool isLeft = std::find(left.begin(), left.end(), 1) != left.end();
    EXPECT_TRUE(isLeft || holds("events", "AUditMSg:kept audit;")) << "an audit record is gone";
  }

  // What must be true whatever failed.
  void checkAfterwards(int refusals = 0) {
    EXPECT_EQ(0, host().liveHandles());
    EXPECT_EQ(0, host().heldConfigurationLocks());
    EXPECT_EQ(0, SqliteProbe::instance().openDatabases());
    EXPECT_EQ(0, SqliteProbe::instance().openStatements());
    if (subject.manager) {
      EXPECT_TRUE(isFree(*subject.manager));
    }
    host().clearFaults();
    if (!operation().deletes) {
      for (const char* name : {"events", "dsevents"}) {
        EXPECT_TRUE(holds(name, "server:kept;")) << "a sound event was lost from " << name;
        EXPECT_TRUE(holds(name, "server:keptmismatch;")) << "a misfiled event was lost";
      }
    }
    checkQueues(refusals);
  }

  static bool holds(const std::string& table, const std::string& part) {
    if (!host().hasTable(table)) return false;
    for (const std::string& key : host().table(table).keys()) {
      const std::string text = host().table(table).value(key, "eventstring");
      if (text.find(part) != std::string::npos) return true;
    }
    return false;
  }

  // The queues take, give and lose an event, through the objects that met the fault if they are
  // usable, and through new ones. The former may refuse some writes first.
  void checkQueues(int refusals) {
    if (subject.global && isUsable(*subject.global)) checkQueue(*subject.global);
    if (subject.selections && isUsable(*subject.selections)) {
      for (; refusals > 0; --refusals) {
        const int result =
            writeWith([this](Event* event) { return subject.selections->writeEvent(event, 3); });
        ASSERT_TRUE(result == 0 || result == 4) << result;
      }
      checkQueue(*subject.selections);
    }
    subject = Subject();
    buildGlobal(subject);
    buildSelections(subject);
    ASSERT_TRUE(isUsable(*subject.global));
    ASSERT_TRUE(isUsable(*subject.selections));
    checkQueue(*subject.global);
    checkQueue(*subject.selections);
    subject = Subject();
  }

  static bool isUsable(OrbDBEventStorage& store) { return store.writeEvent(nullptr) == 9; }
  static bool isUsable(OrbDBDSEventStorage& store) { return store.writeEvent(nullptr, 3) == 9; }

  static void checkQueue(OrbDBEventStorage& store) {
    const std::unique_ptr<Event> event = newCapacityEvent("after");
    ASSERT_EQ(0, store.writeEvent(event.get()));
    EXPECT_EQ(0, dropping([&](Event** e) {
                const int result = store.getNextEvent(event->getId() - 1, e);
                EXPECT_TRUE(*e != nullptr && textOf(**e) == textOf(*event));
                return result;
              }));
    store.deleteEvent(event->getId());
    EXPECT_FALSE(host().table("events").has(std::to_string(event->getId())));
  }

  static void checkQueue(OrbDBDSEventStorage& store) {
    const std::unique_ptr<Event> event = newCapacityEvent("after");
    ASSERT_EQ(0, store.writeEvent(event.get(), 3));
    EXPECT_EQ(0, dropping([&](Event** e) {
                const int result = store.getNextEvent(event->getId() - 1, e, 3);
                EXPECT_TRUE(*e != nullptr && textOf(**e) == textOf(*event));
                return result;
              }));
    store.deleteEvent(event->getId(), 3);
    EXPECT_FALSE(host().table("dsevents").has(std::to_string(event->getId())));
  }

  // One fault in the n-th call of the undisturbed run.
  void injectInto(const Call& call, std::size_t nthOfItsName, FaultMode mode) {
    SCOPED_TRACE(operation().name + ": " + call.text() + " " + modeName(mode));
    prepare();
    Fault fault;
    fault.mode = mode;
    fault.call = call.name;
    fault.nth = nthOfItsName;
    host().inject(fault);
    const std::string result = runOnce();
    EXPECT_EQ(1u, host().faultsFired());
    FaultTable::instance().note(operation().name, modeName(mode), result);
    checkAfterwards(hidesRows(call) ? kHighestRow : 0);
  }

  // A walk that fails looks like a table without rows, and numbering of the data selections starts
  // from the rows: the ids of rows that were not seen are refused before new ones are reached.
  bool hidesRows(const Call& call) const {
    static const std::set<std::string> calls = {"ListRecordsStart", "ListRecordsNext", "getcolumn",
                                                "CColumn::GetDataStr", "QMDSIDValidate"};
    return operation().name == "OrbDBDSEventStorage()" && calls.count(call.name) != 0;
  }
  static constexpr int kHighestRow = 5;

  TempDir directory{TempDir::inMemory()};
  Subject subject;
};

TEST_P(HostFault, EachHostCallMayFailOrThrow) {
  prepare();
  runOnce();
  const std::vector<Call> calls = host().calls(isAbsorbed);
  checkAfterwards();
  ASSERT_FALSE(calls.empty());
  for (const FaultMode mode : {FaultMode::kFail, FaultMode::kThrow, FaultMode::kThrowOdd}) {
    std::map<std::string, std::size_t> seen;
    for (const Call& call : calls) {
      injectInto(call, ++seen[call.name], mode);
    }
  }
}

TEST_P(HostFault, EachSqliteCallMayFail) {
  prepare();
  runOnce();
  const std::size_t calls = SqliteProbe::instance().totalCalls();
  checkAfterwards();
  for (std::size_t n = 1; n <= calls; ++n) {
    SCOPED_TRACE(operation().name + ": SQLite call " + std::to_string(n));
    prepare();
    SqliteProbe::instance().failNthOfAll(n);
    const std::string result = runOnce();
    FaultTable::instance().note(operation().name, "SQLite call fails", result);
    SqliteProbe::instance().reset();
    checkAfterwards();
  }
}

// Log calls are the exception to the stores' rule: there the manager's own catch is what holds. The
// readings of the limits during construction are made by the store bases and absorbed nowhere.
TEST_P(HostFault, ALogTraceOrConfigurationCallThatThrowsLeavesNothingBehind) {
  const std::set<CallKind> kinds = {CallKind::kLog, CallKind::kTrace, CallKind::kConfig};
  prepare();
  host().setTracing(true);
  runOnce();
  const std::size_t calls = host().countCalls(kinds);
  checkAfterwards();
  for (std::size_t n = 1; n <= calls; ++n) {
    SCOPED_TRACE(operation().name + ": log, trace or configuration call " + std::to_string(n));
    prepare();
    host().setTracing(true);
    Fault fault;
    fault.mode = FaultMode::kThrow;
    fault.kinds = kinds;
    fault.nth = n;
    host().inject(fault);
    std::string result = "exception";
    try {
      result = std::to_string(operation().run(subject));
      if (operation().results.empty()) result = "a count";
    } catch (const std::runtime_error&) {
    }
    FaultTable::instance().note(operation().name, "log/config throws", result);
    checkAfterwards();
  }
}

// The library's allocations and SQLite's; the host's own are its own affair. What the stores let
// through, the manager catches.
TEST_P(HostFault, EachAllocationMayFail) {
  includeSqlitesAllocations();
  FailingNew::exempt(FakeHost::isInside);
  prepare();
  std::size_t allocations = 0;
  runWith(AllocationFaults::none(), &allocations);
  checkAfterwards();
  for (std::size_t n = 1; n <= allocations; ++n) {
    SCOPED_TRACE(operation().name + ": allocation " + std::to_string(n));
    prepare();
    const std::string result = runWith(AllocationFaults::only(n));
    FaultTable::instance().note(operation().name, "allocation fails", result);
    checkAfterwards();
    checkAuditRow();
  }
}

std::string testName(const ::testing::TestParamInfo<std::size_t>& instance) {
  const std::string operation = allOperations().at(instance.param).name;
  std::string name;
  for (const char c : operation) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Operations, HostFault,
                         ::testing::Range(std::size_t{0}, allOperations().size()), testName);

}  // namespace
}  // namespace EventSystemTest
