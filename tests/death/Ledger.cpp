#include "tests/death/Ledger.h"

#include <algorithm>

#include "tests/death/Worker.h"

namespace EventSystemTest {
namespace {

using Kind = Message::Kind;

std::string at(std::uint32_t queue, std::uint64_t id) {
  return " (queue " + std::to_string(queue) + ", id " + std::to_string(id) + ")";
}

// The part of an audit record's event string that does not depend on when it was imported.
std::string sectionOf(const std::string& text) {
  const std::size_t begin = text.find(";AUDITEVENT{");
  return begin == std::string::npos ? "" : text.substr(begin);
}

std::string nameOf(const EventNumber& event) {
  return (event.ofAudit ? "audit record " : "event ") + std::to_string(event.number);
}

}  // namespace

bool Ledger::fail(const std::string& what) {
  constexpr std::size_t kEnough = 5;
  if (m_failures.size() < kEnough) m_failures.push_back(what);
  return false;
}

void Ledger::addAuditRow(std::uint64_t number) {
  m_auditRows[number] = {};
  ++m_tally.auditRows;
}

void Ledger::take(const Message& message) {
  switch (message.kind) {
    case Kind::kStage:
      break;
    case Kind::kContents:
      m_contents[message.queue].emplace_back(message.id, message.text);
      break;
    case Kind::kContentsEnd:
      takeContents(message);
      break;
    case Kind::kProblems:
      if (message.number != 0) {
        fail("a check after the start counts " + std::to_string(message.number) + " problems");
      }
      break;
    case Kind::kWillAdd:
      willAdd(message);
      break;
    case Kind::kAdded:
      added(message);
      break;
    case Kind::kWillDelete:
      willDelete(message);
      break;
    case Kind::kDeleted:
      m_queues[message.queue][message.id].deletion = Deletion::kDone;
      ++m_tally.acknowledgedDeletions;
      break;
    case Kind::kRefused:
      fail(message.text + " gave " + std::to_string(message.result));
      break;
  }
}

void Ledger::takeContents(const Message&) {
  for (const unsigned int dsid : kDsids) {
    if (queueOf(dsid) == dsid) compare(dsid, m_contents[dsid]);
  }
  m_contents.clear();
}

void Ledger::willAdd(const Message& message) {
  m_asked[message.number] = {.queue = message.queue, .text = message.text};
}

void Ledger::added(const Message& message) {
  Asked& asked = m_asked[message.number];
  asked.answered = true;
  if (message.result != 0) {
    asked.absent = true;
    fail("newEvent gave " + std::to_string(message.result));
    return;
  }
  ++m_tally.acknowledgedEvents;
  if (asked.id == 0) {
    enter({message.number, false}, message.queue, message.id);
  } else if (asked.id != message.id) {
    fail("newEvent told another id than the event has" + at(message.queue, message.id));
  }
}

void Ledger::willDelete(const Message& message) {
  if (!meet(message.queue, message.id, message.text)) return;
  m_queues[message.queue][message.id].deletion = Deletion::kAsked;
}

bool Ledger::meet(std::uint32_t queue, std::uint64_t id, const std::string& text) {
  const std::optional<EventNumber> event = numberOf(text);
  if (!event || (event->ofAudit ? m_auditRows.count(event->number) == 0
                                : m_asked.count(event->number) == 0)) {
    return fail("an event that nobody has added: " + text + at(queue, id));
  }
  if (!isWhatWasAsked(*event, queue, id, text)) {
    return fail(nameOf(*event) + " has changed: " + text + at(queue, id));
  }
  const auto known = m_queues[queue].find(id);
  if (known == m_queues[queue].end()) return enter(*event, queue, id);
  if (known->second.event != *event) {
    return fail("an id was given twice, now to " + nameOf(*event) + at(queue, id));
  }
  if (known->second.deletion == Deletion::kDone) {
    return fail("a deleted event is back: " + nameOf(*event) + at(queue, id));
  }
  return true;
}

bool Ledger::isWhatWasAsked(const EventNumber& event, std::uint32_t queue, std::uint64_t id,
                            const std::string& text) {
  if (event.ofAudit) {
    const std::string expected = ";AUDITEVENT{" + auditContentOf(event.number) + ";}}";
    return queue == 0 && sectionOf(text) == expected;
  }
  const Asked& asked = m_asked[event.number];
  return asked.queue == queue && withId(asked.text, id) == text;
}

bool Ledger::enter(const EventNumber& event, std::uint32_t queue, std::uint64_t id) {
  Sequence& sequence = sequenceOf(queue);
  if (id <= sequence.floor || !sequence.given.insert(id).second) {
    return fail("an id was given twice, now to " + nameOf(event) + at(queue, id));
  }
  m_queues[queue][id] = {event, Deletion::kNone};
  return event.ofAudit ? enterAuditCopy(event.number) : enterEvent(event.number, id);
}

bool Ledger::enterEvent(std::uint64_t number, std::uint64_t id) {
  Asked& asked = m_asked[number];
  if (asked.id != 0) return fail("an event is there twice: " + std::to_string(number));
  if (asked.absent) return fail("an event came late: " + std::to_string(number));
  asked.id = id;
  std::uint64_t& last = m_lastIdOfLife[asked.queue];
  last = std::max(last, id);
  return true;
}

bool Ledger::enterAuditCopy(std::uint64_t number) {
  AuditRow& row = m_auditRows[number];
  if (!row.inFile || row.copiedInLife) {
    return fail("an audit record was queued again, without cause: " + std::to_string(number));
  }
  row.copiedInLife = true;
  if (row.copies++ > 0) ++m_tally.auditCopies;
  return true;
}

void Ledger::compare(std::uint32_t queue, const StoredEvents& found) {
  std::set<std::uint64_t> there;
  for (const auto& [id, text] : found) {
    if (!there.empty() && id <= *there.rbegin()) fail("a queue is out of order" + at(queue, id));
    there.insert(id);
    meet(queue, id, text);
  }
  for (auto& [id, stored] : m_queues[queue]) {
    const bool isThere = there.count(id) != 0;
    if (stored.deletion == Deletion::kAsked) {
      stored.deletion = isThere ? Deletion::kNone : Deletion::kDone;
      ++m_tally.unknownDeletions;
    } else if (stored.deletion == Deletion::kNone && !isThere) {
      fail("gone: " + nameOf(stored.event) + at(queue, id));
      stored.deletion = Deletion::kDone;
    }
  }
}

void Ledger::endLife(const StoredFiles& files, bool closed) {
  for (const std::string& what : files.damage) fail("the files: " + what);
  m_contents.clear();
  for (const auto& [queue, events] : files.queues) compare(queue, events);
  for (const auto& [queue, events] : m_queues) {
    if (files.queues.count(queue) == 0) compare(queue, {});
  }
  settle();
  checkSequence(m_global, "the global queue");
  checkSequence(m_selections, "the data selections");
  checkMaxIds(files);
  checkAuditRows(files, closed);
  takeUpSequences();
}

// What had not been answered is known now.
void Ledger::settle() {
  for (auto& [number, asked] : m_asked) {
    if (asked.answered) continue;
    asked.answered = true;
    ++m_tally.unknownEvents;
    asked.absent = asked.id == 0;
    if (!asked.absent) ++m_tally.unknownStored;
  }
}

// A gap is an event that had been there, and is gone with those before and behind it kept.
void Ledger::checkSequence(Sequence& sequence, const char* name) {
  std::uint64_t expected = sequence.floor;
  for (const std::uint64_t id : sequence.given) {
    if (id != ++expected) {
      fail("id " + std::to_string(expected) + " of " + name + " is missing");
      expected = id;
    }
  }
}

void Ledger::checkMaxIds(const StoredFiles& files) {
  for (const auto& [queue, last] : m_lastIdOfLife) m_lastId[queue] = last;
  m_lastIdOfLife.clear();
  m_lastId.erase(0);  // audit records take ids of the global queue too
  const auto check = [&](const std::string& name, std::uint64_t expected) {
    const auto found = files.maxIds.find(name);
    const std::uint64_t stored = found == files.maxIds.end() ? 0 : found->second;
    if (stored != expected) {
      fail(name + " is " + std::to_string(stored) + ", not " + std::to_string(expected));
    }
  };
  check("maxid", m_global.last());
  for (const auto& [queue, last] : m_lastId) check("maxid_" + std::to_string(queue), last);
}

void Ledger::checkAuditRows(const StoredFiles& files, bool closed) {
  for (auto& [number, row] : m_auditRows) {
    row.inFile = files.auditContents.count(auditContentOf(number)) != 0;
    if (row.copies == 0 && !row.inFile) fail("gone: audit record " + std::to_string(number));
    if (row.copiedInLife && row.inFile && closed) {
      fail("an import ended without its deletion: audit record " + std::to_string(number));
    }
    row.copiedInLife = false;
  }
}

// Where the next start takes the sequences up.
void Ledger::takeUpSequences() {
  m_global = {m_global.last(), {}};
  m_selections = {m_selections.last(), {}};
}

}  // namespace EventSystemTest
