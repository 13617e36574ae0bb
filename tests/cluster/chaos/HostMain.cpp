// One host of the cluster as a process of its own: the library with the manager and its stores, and
// traffic until it is told to end or is killed. What it does and is told is in its journal.
//
// chaos_host HOME JOURNAL LABEL work SEED   writes, reads and consumes until SIGTERM
// chaos_host HOME JOURNAL LABEL rows COUNT  adds rows to the database (cluster mode off)
// chaos_host HOME JOURNAL LABEL start 0     starts, which copies the database, and ends

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <thread>

#include "EventSystem/EventManager.h"
#include "EventSystem/LegacyEvent.h"
#include "host/Host.h"
#include "tests/cluster/chaos/Journal.h"
#include "tests/cluster/chaos/Queues.h"
#include "tests/differential/Random.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::LegacyEvent;
using Time = JournalEntry::Time;

constexpr std::chrono::milliseconds kPause{2};  // after each step

volatile std::sig_atomic_t g_stopping = 0;

void stop(int) {
  g_stopping = 1;
}

Time now() {
  return std::chrono::steady_clock::now();
}

EventSystemHost::HostOptions optionsFor(const std::string& home) {
  EventSystemHost::HostOptions options;
  options.home = home;
  return options;
}

class Traffic {
 public:
  Traffic(const std::string& home, JournalWriter& journal, std::string label, Random random)
      : m_journal(journal),
        m_label(std::move(label)),
        m_random(random),
        m_host(optionsFor(home)),
        m_passed{} {
    note(JournalEntry::kStarted);
  }

  void work() {
    constexpr unsigned int kWrites = 45;
    constexpr unsigned int kConsumes = 40;
    while (g_stopping == 0) {
      const unsigned int drawn = m_random.below(100);
      const unsigned int queue = m_random.below(kChaosQueues.size());
      if (drawn < kWrites) {
        write(kChaosQueues[queue]);
      } else if (drawn < kWrites + kConsumes) {
        consume(kChaosQueues[queue]);
      } else {
        look(queue);
      }
      std::this_thread::sleep_for(kPause);
    }
  }

  void addRows(unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
      const std::string text = m_label + "row" + std::to_string(i);
      LegacyEvent event(const_cast<char*>(text.c_str()), 0);
      const Time begin = now();
      if (m_manager.newEvent(&event, 0) != 0) throw std::runtime_error("a row cannot be added");
      note({JournalEntry::kRow, begin, now(), 0, event.getId(), 0, text});
    }
  }

  void note(const JournalEntry& entry) { m_journal.write(entry); }
  void note(JournalEntry::Kind kind) {
    const Time time = now();
    note({kind, time, time});
  }

 private:
  bool failed() const { return !m_host.lastClusterCall().failure.empty(); }

  // Whether a call that failed is made again. A host that gives up may never know what came of it.
  bool triesAgain() { return g_stopping == 0 && !m_random.oneIn(4); }

  void write(unsigned int dsid) {
    const std::string text = m_label + "n" + std::to_string(++m_written);
    LegacyEvent event(const_cast<char*>(text.c_str()), 0);
    Time begin = now();
    note({JournalEntry::kWriting, begin, begin, dsid, 0, 0, text});
    for (;;) {
      const int status = m_manager.newEvent(&event, dsid);
      const Time end = now();
      if (status == 0) {
        const unsigned long id = m_host.lastClusterCall().newId;
        note({JournalEntry::kWritten, begin, end, dsid, id, 0, text});
        return;
      }
      note({JournalEntry::kFailed, begin, end, dsid, 0, 0, text});
      if (!triesAgain()) return;
      begin = now();
    }
  }

  // The id of the next event; 0 at the end of the queue, and when it cannot be read.
  unsigned long read(unsigned int dsid, unsigned long afterId) {
    Event* next = nullptr;
    const Time begin = now();
    const int status = m_manager.getNextEvent(afterId, &next, dsid);
    const Time end = now();
    const std::unique_ptr<Event> event(next);
    if (status != 0 || failed()) {
      note({JournalEntry::kFailed, begin, end, dsid, 0, afterId});
      return 0;
    }
    JournalEntry entry{JournalEntry::kRead, begin, end, dsid, 0, afterId};
    if (event) {
      const auto legacy = dynamic_cast<LegacyEvent*>(event.get());
      entry.id = event->getId();
      entry.text = legacy == nullptr ? "another-event" : legacy->getPayload();
    }
    note(entry);
    return entry.id;
  }

  void remove(unsigned int dsid, unsigned long id) {
    Time begin = now();
    note({JournalEntry::kDeleting, begin, begin, dsid, id});
    for (;;) {
      m_manager.deleteEvent(id, dsid);
      const Time end = now();
      if (!failed()) {
        note({JournalEntry::kDeleted, begin, end, dsid, id});
        return;
      }
      note({JournalEntry::kFailed, begin, end, dsid, id});
      if (!triesAgain()) return;
      begin = now();
    }
  }

  void consume(unsigned int dsid) {
    for (unsigned int left = 1 + m_random.below(4); left > 0; --left) {
      const unsigned long id = read(dsid, 0);
      if (id == 0) return;
      remove(dsid, id);
    }
  }

  // Goes on from where it was, to the end of the queue, then from the start.
  void look(unsigned int queue) {
    for (unsigned int left = 1 + m_random.below(8); left > 0; --left) {
      m_passed[queue] = read(kChaosQueues[queue], m_passed[queue]);
      if (m_passed[queue] == 0) return;
    }
  }

  JournalWriter& m_journal;
  const std::string m_label;
  Random m_random;
  EventSystemHost::Host m_host;
  EventSystem::EventManager m_manager;
  unsigned long m_written = 0;
  std::array<unsigned long, kChaosQueues.size()> m_passed;
};

int run(const std::vector<std::string>& arguments) {
  const std::string& task = arguments.at(3);
  const unsigned long number = std::stoul(arguments.at(4));
  JournalWriter journal(arguments.at(1));
  Traffic traffic(arguments.at(0), journal, arguments.at(2), Random(number, 0));
  if (task == "work") traffic.work();
  if (task == "rows") traffic.addRows(number);
  traffic.note(JournalEntry::kEnded);
  return 0;
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  std::signal(SIGTERM, EventSystemTest::stop);
  try {
    return EventSystemTest::run({arguments + 1, arguments + count});
  } catch (const EventSystemHost::HostError& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return EventSystemTest::kRefusedStart;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}
