#include "tests/threads/ThreadsRound.h"

#include <algorithm>
#include <fstream>
#include <latch>
#include <optional>
#include <set>
#include <thread>

#include "EventSystem/platform/OrbDB.h"
#include "tests/support/Events.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;

// Event strings of all types that parsing leaves as they are.
std::vector<std::string> sampleTexts() {
  std::ifstream file(EVENTSYSTEM_DAY_EVENTS);
  std::vector<std::string> texts;
  for (std::string line; std::getline(file, line);) {
    const std::string text = line.substr(0, line.find('\t'));
    if (!text.starts_with("EVENT{")) continue;
    const std::unique_ptr<Event> event = parsed(text);
    if (event != nullptr && textOf(*event) == text) texts.push_back(text);
  }
  return texts;
}

class Home {
 public:
  explicit Home(const RoundPlan& plan) : m_directory(TempDir::inMemory()) {
    std::ofstream(path() / "host.ini") << plan.hostIni;
    std::ofstream(path() / "OrbCentral.ini") << "[events]\ncount_limit = " << plan.countLimit
                                             << "\nage_limit_days = " << plan.ageLimitDays << '\n';
    std::filesystem::create_directory(path() / "audit");
  }
  const std::filesystem::path& path() const { return m_directory.path(); }
  std::filesystem::path auditDatabase() const { return path() / "audit" / "audit.db"; }

 private:
  TempDir m_directory;
};

// A process's life, from the start of its host to the end.
class Life {
 public:
  explicit Life(const Home& home)
      : m_host(EventSystemHost::HostOptions{home.path(), EventSystemHost::Access::kReadWrite,
                                            std::nullopt, std::nullopt}) {}
  EventSystemHost::Host& host() { return m_host; }
  EventManager& manager() { return m_manager; }

 private:
  EventSystemHost::Host m_host;
  EventManager m_manager;
};

bool addDataSelection(unsigned int dsid) {
  OrbDB::CTable* const table = OrbDB::COrbDatabase::Instance().GetTable("dataselection");
  if (table == nullptr) return false;
  OrbDB::CTable selections(*table);
  const std::string record = "id=" + std::to_string(dsid) + ",dstypeid=9";
  return selections.addRecord(record.c_str(), nullptr, 0) < 1;
}

class Round {
 public:
  explicit Round(const RoundPlan& plan) : m_plan(plan), m_home(plan) {}

  Ledger run() {
    {
      Life life(m_home);
      m_texts = sampleTexts();
      if (m_texts.size() < 200) fail("only " + std::to_string(m_texts.size()) + " texts to parse");
      if (!addDataSelection(7) || !addDataSelection(8)) fail("no data selections");
      runActors(life);
      if (m_all.failures.empty()) verify(life.manager(), "at the end");
    }
    if (m_all.failures.empty()) restart();
    return m_all;
  }

 private:
  void fail(const std::string& what) { m_all.failures.push_back(what); }

  void runActors(Life& life) {
    std::vector<std::unique_ptr<ThreadActor>> actors;
    actors.reserve(static_cast<std::size_t>(m_plan.threads));
    for (int i = 0; i < m_plan.threads; ++i) {
      actors.push_back(std::make_unique<ThreadActor>(m_plan, i, life.manager(), life.host(),
                                                     m_home.auditDatabase(), m_texts));
    }
    std::latch start(m_plan.threads);
    std::vector<std::thread> threads;
    threads.reserve(actors.size());
    for (const auto& actor : actors) {
      threads.emplace_back([&start, &actor] {
        start.arrive_and_wait();
        actor->run();
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& actor : actors) merge(actor->ledger());
  }

  void merge(const Ledger& one) {
    for (const auto& [queue, kept] : one.kept) m_all.kept[queue].insert(kept.begin(), kept.end());
    for (const auto& [queue, ids] : one.given) {
      m_all.given[queue].insert(m_all.given[queue].end(), ids.begin(), ids.end());
    }
    m_all.audits.insert(m_all.audits.end(), one.audits.begin(), one.audits.end());
    for (const auto& [what, count] : one.counts) m_all.counts[what] += count;
    m_all.failures.insert(m_all.failures.end(), one.failures.begin(), one.failures.end());
  }

  void verify(EventManager& manager, const std::string& when) {
    for (const unsigned int queue : {0u, 7u, 8u, 9u}) verifyIds(queue);
    for (const unsigned int queue : {0u, 7u, 8u}) verifyQueue(manager, queue, when);
  }

  void verifyIds(unsigned int queue) {
    std::vector<unsigned long> ids = m_all.given[queue];
    std::sort(ids.begin(), ids.end());
    const auto twice = std::adjacent_find(ids.begin(), ids.end());
    if (twice != ids.end()) {
      fail("id " + std::to_string(*twice) + " of queue " + std::to_string(queue) + " given twice");
    }
  }

  // Audit rows get their ids from the import, so they are known by their marks alone.
  void verifyQueue(EventManager& manager, unsigned int queue, const std::string& when) {
    const std::string where = " of queue " + std::to_string(queue) + " " + when;
    Kept missing = m_all.kept[queue];
    std::multiset<std::string> audits;
    if (queue == 0) audits.insert(m_all.audits.begin(), m_all.audits.end());
    unsigned long after = 0;
    std::size_t found = 0;
    for (; const std::unique_ptr<Event> event = next(manager, after, queue); ++found) {
      const std::string mark = markIn(textOf(*event));
      if (event->getId() <= after) return fail("order" + where + ": " + textOf(*event));
      after = event->getId();
      const auto expected = missing.find(after);
      if (expected != missing.end() && expected->second == mark) {
        missing.erase(expected);
      } else if (const auto audit = audits.find(mark); audit != audits.end()) {
        audits.erase(audit);
      } else {
        fail("doubled or mixed up" + where + ": " + textOf(*event));
      }
    }
    const std::string lost = "lost" + where + ": ";
    for (const auto& [id, mark] : missing) fail(lost + mark);
    const std::string lostAudit = "audit row lost" + where + ": ";
    for (const std::string& mark : audits) fail(lostAudit + mark);
    const auto limit = static_cast<std::size_t>(m_plan.countLimit);
    if (queue == 0 && limit != 0 && found > limit) fail("more events than the limit" + where);
    m_all.counts["events found"] += found;
  }

  std::unique_ptr<Event> next(EventManager& manager, unsigned long after, unsigned int queue) {
    Event* event = nullptr;
    const int result = manager.getNextEvent(after, &event, queue);
    if (result != 0) fail("getNextEvent gave " + std::to_string(result));
    return std::unique_ptr<Event>(event);
  }

  void restart() {
    Life life(m_home);
    verify(life.manager(), "after the next start");
    if (m_plan.cluster || m_plan.countLimit != 0) return;
    const std::unique_ptr<Event> event = newCapacityEvent("mark-new-end");
    life.manager().newEvent(event.get(), 0);
    for (const unsigned long id : m_all.given[0]) {
      if (event->getId() <= id) return fail("the next start gave an id that was given before");
    }
  }

  const RoundPlan m_plan;
  std::vector<std::string> m_texts;
  const Home m_home;
  Ledger m_all;
};

}  // namespace

Ledger runThreads(const RoundPlan& plan) {
  return Round(plan).run();
}

RoundPlan databasePlan(std::uint64_t seed, std::uint64_t number) {
  static constexpr const char* kDurabilities[] = {"strict", "group", "relaxed"};
  RoundPlan plan;
  plan.seed = seed + number;
  // A log that is rotated while all write to it.
  plan.hostIni = std::string("[database]\ndurability = ") +
                 kDurabilities[number % std::size(kDurabilities)] +
                 "\n[log]\nlevel = trace\nmax_bytes = 65536\nmax_files = 2\n";
  switch (number % 4) {
    case 1:
      plan.countLimit = 60;
      break;
    case 2:
      plan.ageLimitDays = 30;
      break;
    default:
      plan.audit = true;
      break;
  }
  return plan;
}

RoundPlan clusterPlan(std::uint64_t seed, std::uint64_t number, const std::string& endpoints) {
  RoundPlan plan;
  plan.seed = seed + number;
  plan.cluster = true;
  plan.hostIni = "[cluster]\ncluster_mode = 1\nmember = node1\nqueue = threads-" +
                 std::to_string(seed) + "-" + std::to_string(number) +
                 "\nendpoints = " + endpoints +
                 "\n[database]\ndurability = relaxed\n[log]\nlevel = info\nmax_bytes = 65536\n";
  return plan;
}

}  // namespace EventSystemTest
