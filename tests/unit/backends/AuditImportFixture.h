// The fixture of the audit import's tests: a store over the fake host, and an audit database in a
// directory of its own.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_UNIT_BACKENDS_AUDITIMPORTFIXTURE_H
#define EVENTSYSTEM_TESTS_UNIT_BACKENDS_AUDITIMPORTFIXTURE_H

#include <string>
#include <vector>

#include "DatabaseStoreTest.h"
#include "tests/support/AuditFile.h"
#include "tests/support/SqliteProbe.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

// Its virtual writeEvent() notes events, and fails or throws where the test says so.
class ImportingStore : public OrbDBEventStorage {
 public:
  int writeEvent(Event* event) override {
    ++writes;
    if (onWrite) {
      const int result = onWrite(event);
      if (result != 0) return result;
    }
    return OrbDBEventStorage::writeEvent(event);
  }
  int writes = 0;
  std::function<int(Event*)> onWrite;
};

class AuditImportFixture : public DatabaseStoreTest<ImportingStore> {
 protected:
  void SetUp() override {
    DatabaseStoreTest::SetUp();
    FakeConfiguration configuration;
    configuration.auditDirectory = directory.path().string();
    host().configure(configuration);
    build();
    host().setTracing(true);
    sqlite().reset();
  }
  void TearDown() override {
    EXPECT_EQ(0, sqlite().openDatabases()) << "a database handle was not closed";
    EXPECT_EQ(0, sqlite().openStatements()) << "a statement was not finalised";
    DatabaseStoreTest::TearDown();
  }

  static SqliteProbe& sqlite() { return SqliteProbe::instance(); }

  AuditFile& file() {
    if (!m_file) m_file.emplace(path());
    return *m_file;
  }
  std::string path() const { return (directory.path() / "audit.db").string(); }

  unsigned int run(bool force = false) {
    host().clearCalls();
    return store->PopuAuditEventDB(force);
  }

  // The messages of the queued events, in id order.
  static std::vector<std::string> queued() {
    std::vector<std::string> messages;
    for (const std::string& key : events().keys()) {
      const std::string text = events().value(key, "eventstring");
      const std::size_t start = text.find("AUditMSg:") + 9;
      messages.push_back(text.substr(start, text.size() - start - 3));
    }
    return messages;
  }

  static LogLine summary(int largestRow, int lastEvent) {
    return info(0, "%s audit events found till Number: %d,MaxNewEventid: %d.", "PopuAuditEventDB",
                largestRow, lastEvent);
  }
  static LogLine exitLine() { return trace("%s exit.", "PopuAuditEventDB"); }
  static LogLine rowLine(int id, const char* date, const char* content, int type) {
    return trace("%s:id:%d,date_created:%s,content:%s,etype:%d", "PopuAuditEventDB", id, date,
                 content, type);
  }
  static LogLine writeFailed(int code, int row, int result) {
    return error(code, "%s:eventid %d failed writeEvent: %d.", "PopuAuditEventDB", row, result);
  }
  static LogLine keptInLog(int code, int row, const char* date, const std::string& content) {
    return error(code, "%s:eventid %d is not queued, date_created:%s,content:%s",
                 "PopuAuditEventDB", row, date, content.c_str());
  }
  // A failed step; `message` is what SQLite says.
  static LogLine stepFailed(int row, int step, const char* message, int retry) {
    return error(4,
                 "%s:pop sqlite to orbdb ,eventid %d failed: %d:%s(0 means read from sqlite "
                 "failed),retrySelect:%d",
                 "PopuAuditEventDB", row, step, message, retry);
  }
  static LogLine deleteFailed(const char* message, int retry) {
    return error(4, "%s:SQL error deleteing:  %s .retryDelete:%d", "PopuAuditEventDB", message,
                 retry);
  }

  TempDir directory;

 private:
  std::optional<AuditFile> m_file;
};

}  // namespace EventSystemTest

#endif
