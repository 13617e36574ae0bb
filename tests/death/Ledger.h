// The driver's books: what the workers of one home were asked to do and what they acknowledged,
// and whether what the queues and the files hold agrees with it.
//
// What must hold of a process that dies by SIGKILL, in every durability:
//   - An acknowledged event is in its queue once, with its text, until it is deleted. A call that
//     had not returned has been done or has not; later it changes no more.
//   - A deletion that had returned stays.
//   - Ids grow without gaps and none is given twice, also not after a deletion: in the global
//   queue,
//     and in the one sequence that all data selections share.
//   - An audit record is in the audit database until it is in the queue. A run of the import puts
//   it
//     there once; when that run did not come to its end the record is left in the audit database,
//     and the next run queues it again.
//   - A consistency check finds nothing; the stored maxima are the last ids given.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_DEATH_LEDGER_H
#define EVENTSYSTEM_TESTS_DEATH_LEDGER_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/death/EventMaker.h"
#include "tests/death/Message.h"
#include "tests/death/StoredFiles.h"

namespace EventSystemTest {

class Ledger {
 public:
  // A row is in the audit database.
  void addAuditRow(std::uint64_t number);

  void take(const Message& message);

  // A worker has ended, and this is what it has left. `closed`: it had closed the queue.
  void endLife(const StoredFiles& files, bool closed);

  // What does not agree, the first few.
  const std::vector<std::string>& failures() const { return m_failures; }

  struct Tally {
    std::uint64_t acknowledgedEvents = 0;
    std::uint64_t acknowledgedDeletions = 0;
    std::uint64_t unknownEvents = 0;     // the process died before newEvent returned
    std::uint64_t unknownStored = 0;     // of these
    std::uint64_t unknownDeletions = 0;  // the same for deleteEvent
    std::uint64_t auditRows = 0;
    std::uint64_t auditCopies = 0;  // queued again after an interrupted import
  };
  const Tally& tally() const { return m_tally; }

 private:
  enum class Deletion { kNone, kAsked, kDone };

  struct Asked {
    std::uint32_t queue = 0;
    std::string text{};    // with id 0
    std::uint64_t id = 0;  // once it is known to be stored
    bool answered = false;
    bool absent = false;  // it is known not to be stored
  };

  struct Stored {
    EventNumber event{};
    Deletion deletion = Deletion::kNone;
  };

  struct AuditRow {
    std::uint64_t copies = 0;
    bool inFile = true;         // as far as is known
    bool copiedInLife = false;  // since the last worker was started
  };

  // The global queue and all data selections together have one sequence of ids each.
  struct Sequence {
    std::uint64_t floor = 0;          // ids of this life are above it
    std::set<std::uint64_t> given{};  // in this life
    std::uint64_t last() const { return given.empty() ? floor : *given.rbegin(); }
  };

  void takeContents(const Message& message);
  void willAdd(const Message& message);
  void added(const Message& message);
  void willDelete(const Message& message);

  // An event was met in a queue. False when it should not be there.
  bool meet(std::uint32_t queue, std::uint64_t id, const std::string& text);
  bool isWhatWasAsked(const EventNumber& event, std::uint32_t queue, std::uint64_t id,
                      const std::string& text);
  bool enter(const EventNumber& event, std::uint32_t queue, std::uint64_t id);
  bool enterEvent(std::uint64_t number, std::uint64_t id);
  bool enterAuditCopy(std::uint64_t number);

  void compare(std::uint32_t queue, const StoredEvents& found);
  void settle();
  void checkSequence(Sequence& sequence, const char* name);
  void checkMaxIds(const StoredFiles& files);
  void checkAuditRows(const StoredFiles& files, bool closed);
  void takeUpSequences();

  Sequence& sequenceOf(std::uint32_t queue) { return queue == 0 ? m_global : m_selections; }
  bool fail(const std::string& what);

  std::map<std::uint64_t, Asked> m_asked;  // by the event's number
  std::map<std::uint32_t, std::map<std::uint64_t, Stored>> m_queues;
  std::map<std::uint64_t, AuditRow> m_auditRows;
  std::map<std::uint32_t, std::uint64_t> m_lastId;  // of each data selection, when a life ended
  std::map<std::uint32_t, std::uint64_t> m_lastIdOfLife;
  std::map<std::uint32_t, StoredEvents> m_contents;  // told so far
  Sequence m_global;
  Sequence m_selections;
  Tally m_tally;
  std::vector<std::string> m_failures;
};

}  // namespace EventSystemTest

#endif
