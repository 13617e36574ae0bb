// A host for tests: it stands in for the real one at link time, keeps its tables in memory, writes
// down every call that the library makes, and fails or throws where a test tells it to.
//
// Every call is one entry of a single list, in order. A log line is an entry too, with its level,
// code, format and text:
//
//   EXPECT_THAT(host().log(), ElementsAre(info(-1, "%s Adding new event. type:%d, dsid:%d",
//                                              "newEvent", 5, 0)));
//   EXPECT_THAT(host().databaseCalls(), ElementsAre("GetTable(events)", "readRecord(events, 5)"));
//
// The pure text functions (kvrstrcpy and its like) are not noted; no test depends on them.
//
// Thread safety: any thread may call the platform functions and the accessors at the same time.
// Set up, inject and reset while no other thread calls.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_FAKEHOST_H
#define EVENTSYSTEM_TESTS_SUPPORT_FAKEHOST_H

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/FakeTable.h"
#include "tests/support/LogLine.h"

namespace EventSystemTest {

// What a call belongs to; a fault can be limited to one kind.
enum class CallKind { kDatabase, kConfig, kText, kClock, kCluster, kLog, kTrace };

struct Call {
  CallKind kind = CallKind::kDatabase;
  std::string name;       // "readRecord"; for a log line "ErrorA", "WarningA", "InfoA", "__Trace"
  std::string arguments;  // "events, 5"
  LogLine line;           // of a log or trace call

  std::string text() const { return name + "(" + arguments + ")"; }
};

// How a call goes wrong.
enum class FaultMode {
  kFail,      // it returns what stands for failure; nothing happens where it has no such result
  kThrow,     // it throws std::runtime_error(what)
  kThrowOdd,  // it throws an int, which is no std::exception
  kThrowBadAlloc
};

struct Fault {
  FaultMode mode = FaultMode::kFail;
  std::string call{};          // name of the call; empty: any
  std::set<CallKind> kinds{};  // limits it to some kinds of calls; empty: any
  std::string arguments{};     // a part of the arguments; empty: any
  std::size_t nth = 1;         // which of the matching calls, from 1; 0: each of them
  int status = 13;             // result of a failing addRecord, updateRecord, cluster call, ...
  std::string what = "scripted failure";
};

// What the host's configuration files would say.
struct FakeConfiguration {
  std::string databaseDirectory = "/fake/config";
  std::string configFile = "/fake/host.ini";
  std::optional<std::string> auditDirectory = "/nonexistent/fake/audit";  // absent: no such entry
  std::optional<std::string> centralFile = "/fake/OrbCentral.ini";  // absent: cannot be located
  std::optional<int> ageLimit{};                                    // absent: no such entry
  std::optional<int> countLimit{};
  bool clusterMode = false;
  std::string clusterQueue = "queue";
  std::string clusterMember = "member";
};

class FakeHost {
 public:
  static FakeHost& instance();

  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  // Back to the start: the default configuration, the tables that the library uses (events,
  // eventproperties with its row "maxid", dsevents, dataselection; all but the second empty), no
  // calls noted, no faults, tracing off, clock 0, every data selection valid.
  void reset();

  // --- calls ---
  std::vector<Call> calls() const;
  std::vector<Call> calls(const std::function<bool(const Call&)>& wanted) const;
  void clearCalls();
  std::size_t countCalls() const;
  std::size_t countCalls(CallKind kind) const;
  std::size_t countCalls(const std::set<CallKind>& kinds) const;
  std::size_t countCalls(const std::string& name) const;

  // Error, warning and information lines in order; then debug lines alone, as texts; then both.
  std::vector<LogLine> log() const;
  std::vector<std::string> traces() const;
  std::vector<LogLine> logAndTraces() const;

  // Texts of calls that read or change tables: GetTable, CheckAddTable, readRecord, GetValStr,
  // addRecord, ListRecordsStart ... Instance, handle copies, getcolumn and the calls on columns
  // are left out.
  std::vector<std::string> databaseCalls() const;
  std::vector<std::string> clusterCalls() const;
  // The calls of these names, as texts.
  std::vector<std::string> callsNamed(const std::set<std::string>& names) const;

  // --- configuration ---
  void configure(const FakeConfiguration& configuration);
  FakeConfiguration configuration() const;
  void setTracing(bool on);
  // gethrtime() gives this; a second has 1000000000 units.
  void setClock(long now);
  void setDataSelectionValid(unsigned int dsid, bool valid);
  // Locks of the configuration mutex that have not been released.
  int heldConfigurationLocks() const;

  // --- tables ---
  // The table with that name; it must exist.
  FakeTable& table(const std::string& name);
  bool hasTable(const std::string& name) const;
  // The table is gone, and CheckAddTable() creates it again, empty.
  void dropTable(const std::string& name);
  // Handles (copies of a table object) that are alive now.
  int liveHandles() const;

  // --- cluster ---
  struct ClusterEvent {
    std::string member;
    std::string text;
  };
  // The queue of one dsid, by id.
  std::map<unsigned long, ClusterEvent> clusterQueue(unsigned int dsid) const;

  // --- faults ---
  void inject(const Fault& fault);
  void clearFaults();
  // How often a fault has taken effect since reset().
  std::size_t faultsFired() const;
  // Called at the start of every call that is noted, by the thread that makes it; while it runs the
  // host answers no other thread.
  void onCall(std::function<void(const Call&)> hook);

  // Whether the calling thread is in a platform function: what happens there is the host's doing.
  static bool isInside();

  // --- for the platform functions ---
  // Notes the call and throws when a fault says so. The status when it is to fail.
  std::optional<int> enter(Call call);
  class Internals;
  Internals& internals() { return *m_internals; }

 private:
  FakeHost();
  ~FakeHost();

  bool matches(const Fault& fault, const Call& call) const;

  struct Armed {
    Fault fault;
    std::size_t seen = 0;
  };

  std::vector<Call> m_calls;
  std::vector<Armed> m_faults;
  std::size_t m_fired = 0;
  std::function<void(const Call&)> m_hook;
  std::unique_ptr<Internals> m_internals;
};

// The same as FakeHost::instance().
FakeHost& host();

std::ostream& operator<<(std::ostream& out, const Call& call);

}  // namespace EventSystemTest

#endif
