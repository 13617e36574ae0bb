// One host of the cluster as a process of its own: the library with the manager and its stores, and
// traffic until it is told to end or is killed. What it does and is told is in its journal.
//
// chaos_host HOME JOURNAL LABEL work SEED   writes, reads and consumes until SIGTERM
// chaos_host HOME JOURNAL LABEL serve SEED  the same through what a daemon puts before the library
// chaos_host HOME JOURNAL LABEL rows COUNT  adds rows to the database (cluster mode off)
// chaos_host HOME JOURNAL LABEL start 0     starts, which copies the database, and ends

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <thread>

#include "host/Host.h"
#include "tests/cluster/chaos/Front.h"
#include "tests/cluster/chaos/Journal.h"
#include "tests/cluster/chaos/Queues.h"
#include "tests/differential/Random.h"

namespace EventSystemTest {
namespace {

using Time = JournalEntry::Time;

constexpr std::chrono::milliseconds kPause{2};  // after each step

volatile std::sig_atomic_t g_stopping = 0;

void stop(int) {
  g_stopping = 1;
}

Time now() {
  return std::chrono::steady_clock::now();
}

// What readers were shown is noted as so many steps from one event to the next.
void note(JournalWriter& journal, JournalEntry step, const Front::Page& page) {
  step.kind = JournalEntry::kRead;
  for (const auto& [id, name] : page.events) {
    step.id = id;
    step.text = name;
    journal.write(step);
    step.afterId = id;
  }
  if (!page.isLast) return;
  step.id = 0;
  step.text.clear();
  journal.write(step);
}

class Traffic {
 public:
  Traffic(Front& front, JournalWriter& journal, std::string label, Random random)
      : m_front(front),
        m_journal(journal),
        m_label(std::move(label)),
        m_random(random),
        m_passed{} {}

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
      const std::string name = m_label + "row" + std::to_string(i);
      const Time begin = now();
      const unsigned long id = m_front.store(textOfEvent(name), 0).id;
      if (id == 0) throw std::runtime_error("a row cannot be added");
      m_journal.write({JournalEntry::kRow, begin, now(), 0, id, 0, name});
    }
  }

 private:
  // Whether a call that failed is made again. A host that gives up may never know what came of it.
  bool triesAgain() { return g_stopping == 0 && !m_random.oneIn(4); }

  void write(unsigned int dsid) {
    const std::string name = m_label + "n" + std::to_string(++m_written);
    const std::string text = textOfEvent(name);
    bool open = false;
    Time begin = now();
    m_journal.write({JournalEntry::kWriting, begin, begin, dsid, 0, 0, name});
    do {
      const Front::Stored stored = m_front.store(text, dsid);
      const Time end = now();
      if (stored.id != 0) {
        m_journal.write({JournalEntry::kWritten, begin, end, dsid, stored.id, 0, name});
        return;
      }
      open = open || stored.open;
      m_journal.write({JournalEntry::kFailed, begin, end, dsid, 0, 0, name});
      begin = now();
    } while (triesAgain());
    if (!open) m_journal.write({JournalEntry::kRefused, begin, begin, dsid, 0, 0, name});
  }

  // The id of the next event; 0 at the end of the queue, and when it cannot be read.
  unsigned long read(unsigned int dsid, unsigned long afterId) {
    const Time begin = now();
    const auto page = m_front.read(dsid, afterId);
    const JournalEntry step{JournalEntry::kFailed, begin, now(), dsid, 0, afterId};
    if (!page) {
      m_journal.write(step);
      return 0;
    }
    note(m_journal, step, *page);
    return page->events.empty() ? 0 : page->events.front().first;
  }

  void remove(unsigned int dsid, unsigned long id) {
    Time begin = now();
    m_journal.write({JournalEntry::kDeleting, begin, begin, dsid, id});
    do {
      const bool removed = m_front.remove(dsid, id);
      const Time end = now();
      m_journal.write(
          {removed ? JournalEntry::kDeleted : JournalEntry::kFailed, begin, end, dsid, id});
      if (removed) return;
      begin = now();
    } while (triesAgain());
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

  Front& m_front;
  JournalWriter& m_journal;
  const std::string m_label;
  Random m_random;
  unsigned long m_written = 0;
  std::array<unsigned long, kChaosQueues.size()> m_passed;
};

// A reader that waits at the end of the global queue for what arrives, while another consumes.
void watch(DaemonFront& front, const std::string& file) {
  constexpr std::chrono::milliseconds kWait{200};
  JournalWriter journal(file);
  for (unsigned long last = 0; g_stopping == 0;) {
    const Time begin = now();
    const auto page = front.read(0, last, kWait);
    const JournalEntry step{JournalEntry::kFailed, begin, now(), 0, 0, last};
    if (!page) {
      journal.write(step);
      continue;
    }
    note(journal, step, *page);
    if (!page->events.empty()) last = page->events.back().first;
  }
}

void noteNow(JournalWriter& journal, JournalEntry::Kind kind) {
  const Time time = now();
  journal.write({kind, time, time});
}

int serve(const std::vector<std::string>& arguments, JournalWriter& journal) {
  DaemonFront front(arguments.at(0));
  noteNow(journal, JournalEntry::kStarted);
  std::thread watcher([&] { watch(front, arguments.at(1)); });
  Traffic(front, journal, arguments.at(2), Random(std::stoul(arguments.at(4)), 0)).work();
  watcher.join();
  noteNow(journal, JournalEntry::kEnded);
  return 0;
}

int run(const std::vector<std::string>& arguments) {
  const std::string& task = arguments.at(3);
  const unsigned long number = std::stoul(arguments.at(4));
  JournalWriter journal(arguments.at(1));
  if (task == "serve") return serve(arguments, journal);
  LibraryFront front(arguments.at(0));
  noteNow(journal, JournalEntry::kStarted);
  Traffic traffic(front, journal, arguments.at(2), Random(number, 0));
  if (task == "work") traffic.work();
  if (task == "rows") traffic.addRows(number);
  noteNow(journal, JournalEntry::kEnded);
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
