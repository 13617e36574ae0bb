// An audit record whose text SQLite has no memory to convert is not an empty one: it is kept.

#include <sqlite3.h>

#include "EventSystem/OrbDBEventStorage.h"
#include "FailingNew.h"
#include "FailingSqlite.h"
#include "tests/support/AuditFile.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/SqliteProbe.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

class AuditMemory : public FakeHostTest {
 protected:
  AuditMemory() {
    includeSqlitesAllocations();
    FailingNew::exempt(FakeHost::isInside);
  }

  // A host with an audit database of two records, in an encoding that is not the one that texts are
  // asked for in, and with one date that is a number.
  void prepare() {
    host().reset();
    FakeConfiguration configuration;
    configuration.auditDirectory = directory.path().string();
    host().configure(configuration);
    std::filesystem::remove(file());
    makeTable();
    const AuditFile audit(file());
    audit.run("insert into event values (1,'1','" + auditContent("first") + "',8)");
    audit.run("insert into event values (2,2,'" + auditContent("second") + "',8)");
  }

  void makeTable() const {
    const SqliteProbe::Pause pause;
    sqlite3* opened = nullptr;
    sqlite3_open(file().c_str(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(opened,
                                      "pragma encoding='UTF-16';"
                                      "create table event (_id integer primary key, date_created, "
                                      "content text, etype integer)",
                                      nullptr, nullptr, nullptr));
  }

  std::filesystem::path file() const { return directory.path() / "audit.db"; }

  static bool isQueued(const std::string& message) {
    for (const std::string& key : host().table("events").keys()) {
      const std::string text = host().table("events").value(key, "eventstring");
      if (text.find("AUditMSg:" + message + ";") != std::string::npos) return true;
    }
    return false;
  }

  // What was not imported is still in its file.
  void checkRecords() const {
    const std::vector<int> left = AuditFile(file()).ids();
    EXPECT_TRUE(isQueued("first") || (!left.empty() && left.front() == 1));
    EXPECT_TRUE(isQueued("second") || (!left.empty() && left.back() == 2));
  }

  static std::size_t import(const AllocationFaults& faults) {
    const FailingNew failing(faults);
    try {
      EventSystem::OrbDBEventStorage();
    } catch (const std::bad_alloc&) {
    }
    return failing.count();
  }

  TempDir directory{TempDir::inMemory()};
};

TEST_F(AuditMemory, IsWantedInVainForATextAndTheRecordStays) {
  prepare();
  const std::size_t allocations = import(AllocationFaults::none());
  ASSERT_TRUE(isQueued("first") && isQueued("second"));
  for (std::size_t n = 1; n <= allocations; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    prepare();
    import(AllocationFaults::only(n));
    checkRecords();
  }
}

TEST_F(AuditMemory, IsWantedInVainFromSomeTimeOnAndTheRecordsStay) {
  prepare();
  const std::size_t allocations = import(AllocationFaults::none());
  for (std::size_t n = 1; n <= allocations; ++n) {
    SCOPED_TRACE("from allocation " + std::to_string(n));
    prepare();
    import(AllocationFaults::from(n));
    checkRecords();
  }
}

}  // namespace
}  // namespace EventSystemTest
