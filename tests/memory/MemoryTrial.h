// The reference host and the library on one home, with memory that fails while one operation runs,
// and what must be true when memory is back: what was acknowledged is there once, what was refused
// at most once, ids go on, a check finds nothing, and everything works.
//
// Thread safety: none; one at a time, as a process has one Host.

#ifndef EVENTSYSTEM_TESTS_MEMORY_MEMORYTRIAL_H
#define EVENTSYSTEM_TESTS_MEMORY_MEMORYTRIAL_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "EventSystem/EventManager.h"
#include "host/Host.h"
#include "tests/death/AuditFeed.h"
#include "tests/fault/FailingNew.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

class MemoryTrial {
 public:
  // What is open before an operation.
  enum class Start { kNothing, kHome, kHost, kQueue, kFreshQueue };

  // What is done while memory fails.
  struct Operation {
    std::string name;
    Start start;
    std::function<std::string(MemoryTrial&)> run;  // gives its result
    std::set<std::string> results;                 // the allowed ones
    unsigned int queue = 0;                        // where it adds or deletes an event
    bool adds = false;                             // the event that is ready
    bool deletes = false;                          // the first event
    unsigned int auditRows = 0;                    // so many are there
    bool misfiled = false;                         // a row is there that a repair files anew
  };
  static const std::vector<Operation>& operations();

  explicit MemoryTrial(std::string durability);
  ~MemoryTrial();

  MemoryTrial(const MemoryTrial&) = delete;
  MemoryTrial& operator=(const MemoryTrial&) = delete;

  struct Outcome {
    std::string result;
    std::size_t allocations = 0;  // asked for
    std::size_t failed = 0;
    std::vector<std::string> failures{};  // what must not be
  };
  Outcome run(const Operation& operation, const AllocationFaults& faults);

  // Audit records that the queue did not take in, and whose text the log holds.
  std::uint64_t auditRecordsInTheLogOnly() const { return m_auditRecordsInTheLogOnly; }

 private:
  friend struct MemoryOperations;

  using Events = std::map<unsigned long, std::string>;

  void openHost();
  void openQueue();
  void close();
  void makeHome();
  void prepare(const Operation& operation);
  void putMisfiledRow();
  void clear();
  unsigned long add(unsigned int dsid);
  Events contents(unsigned int dsid);
  int problems();
  std::string logText() const;

  void check(const Operation& operation, Outcome& outcome);
  void checkWork(const Operation& operation, Outcome& outcome);
  void checkQueue(const Operation& operation, unsigned int dsid, Outcome& outcome);
  void checkAuditRows(Events& found, Outcome& outcome);

  const TempDir m_directory;
  std::filesystem::path m_home;
  unsigned int m_homes = 0;
  const std::string m_durability;
  std::unique_ptr<AuditFeed> m_audit;
  std::unique_ptr<EventSystemHost::Host> m_host;
  std::unique_ptr<EventSystem::EventManager> m_manager;

  std::uint64_t m_nextNumber = 0;
  std::map<unsigned int, Events> m_kept;  // what each queue must hold
  // Ever given, in the global queue and in the data selections: now and when memory began to fail.
  struct HighestIds {
    unsigned long& of(unsigned int dsid) { return dsid == 0 ? global : selections; }
    unsigned long global = 0;
    unsigned long selections = 0;
  };
  HighestIds m_highest;
  HighestIds m_highestBefore;
  std::unique_ptr<EventSystem::Event> m_event;
  std::string m_eventText;     // as it is before it has an id
  std::string m_misfiledText;  // the same
  std::set<std::uint64_t> m_auditRows;
  std::uint64_t m_auditRecordsInTheLogOnly = 0;
};

}  // namespace EventSystemTest

#endif
