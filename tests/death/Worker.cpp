#include "tests/death/Worker.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

#include "EventSystem/EventManager.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/OrbDB.h"
#include "host/Host.h"
#include "tests/death/EventMaker.h"
#include "tests/death/FileCalls.h"
#include "tests/differential/Random.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;
using EventSystemHost::Host;
using Kind = Message::Kind;

constexpr unsigned int kThreadNumbers = 100000;
constexpr unsigned int kConsumersShare = 99;  // seeds the consumer's numbers

// Whether an event is one that a worker has added; audit records come in from elsewhere.
bool isNumbered(const std::string& text) {
  const std::optional<EventNumber> number = numberOf(text);
  return number && !number->ofAudit;
}

class Worker {
 public:
  Worker(const LifePlan& plan, int output, Host& host, EventManager& manager)
      : m_plan(plan), m_output(output), m_host(host), m_manager(manager) {}

  void tellContents();
  void tellProblems();
  void work();

 private:
  // What one thread keeps.
  struct Share {
    Random random;
    std::uint64_t nextNumber;
    std::map<unsigned int, unsigned long> position{};  // by dsid
  };

  Share share(unsigned int thread) const {
    return {Random(m_plan.seed, thread), m_plan.firstNumber + thread * kThreadNumbers};
  }

  bool goesOn() const;
  void runAlone();
  void produce(unsigned int thread);
  void consume();
  void add(Share& share);
  bool consumeOne(Share& share);
  void check(Share& share);
  void expect(int result, const char* call) const;
  std::unique_ptr<Event> next(unsigned long afterId, unsigned int dsid) const;

  const LifePlan& m_plan;
  const int m_output;
  Host& m_host;
  EventManager& m_manager;
  std::atomic<std::uint64_t> m_calls{0};
  std::atomic<std::int64_t> m_backlog{0};
  std::atomic<unsigned int> m_producing{0};
};

void Worker::expect(int result, const char* call) const {
  if (result == 0) return;
  send(m_output, {.kind = Kind::kRefused, .result = result, .text = call});
}

std::unique_ptr<Event> Worker::next(unsigned long afterId, unsigned int dsid) const {
  Event* event = nullptr;
  expect(m_manager.getNextEvent(afterId, &event, dsid), "getNextEvent");
  return std::unique_ptr<Event>(event);
}

void Worker::tellContents() {
  for (const unsigned int dsid : kDsids) {
    if (dsid != queueOf(dsid)) continue;
    unsigned long after = 0;
    while (const std::unique_ptr<Event> event = next(after, dsid)) {
      after = event->getId();
      const std::string text = eventStringOf(*event);
      send(m_output, {.kind = Kind::kContents, .queue = queueOf(dsid), .id = after, .text = text});
      if (isNumbered(text)) ++m_backlog;
    }
  }
  send(m_output, {.kind = Kind::kContentsEnd});
}

void Worker::tellProblems() {
  const int problems = (m_manager.*access(ManagerStore()))->checkConsistency(false) +
                       (m_manager.*access(ManagerDSStore()))->checkConsistency(false);
  send(m_output, {.kind = Kind::kProblems, .number = static_cast<std::uint64_t>(problems)});
}

bool Worker::goesOn() const {
  return m_calls < m_plan.calls;
}

void Worker::work() {
  if (m_plan.producers == 0) {
    runAlone();
    return;
  }
  std::vector<std::thread> threads;
  m_producing = m_plan.producers;
  for (unsigned int thread = 1; thread <= m_plan.producers; ++thread) {
    threads.emplace_back([this, thread] { produce(thread); });
  }
  consume();
  for (std::thread& thread : threads) thread.join();
}

void Worker::runAlone() {
  Share mine = share(0);
  while (goesOn()) {
    const bool full = m_backlog > static_cast<std::int64_t>(m_plan.backlog);
    if (full || mine.random.oneIn(3)) {
      consumeOne(mine);
    } else {
      add(mine);
    }
    if (mine.random.oneIn(64)) check(mine);
  }
}

void Worker::produce(unsigned int thread) {
  Share mine = share(thread);
  while (goesOn()) {
    if (m_backlog > static_cast<std::int64_t>(m_plan.backlog)) {
      std::this_thread::yield();
    } else {
      add(mine);
    }
  }
  --m_producing;
}

void Worker::consume() {
  Share mine = share(kConsumersShare);
  while (goesOn() || m_producing > 0) {
    if (!consumeOne(mine)) std::this_thread::yield();
    if (mine.random.oneIn(128)) check(mine);
  }
}

void Worker::add(Share& share) {
  const unsigned int dsid = kDsids[share.random.below(kDsids.size())];
  const std::uint32_t queue = queueOf(dsid);
  const std::uint64_t number = share.nextNumber++;
  const std::unique_ptr<Event> event = makeEvent(number, queue == 0 ? 900 : 300);
  send(m_output,
       {.kind = Kind::kWillAdd, .queue = queue, .number = number, .text = eventStringOf(*event)});
  const int result = m_manager.newEvent(event.get(), dsid);
  send(m_output, {.kind = Kind::kAdded,
                  .queue = queue,
                  .number = number,
                  .id = event->getId(),
                  .result = result});
  ++m_calls;
  ++m_backlog;
  if (share.random.oneIn(8)) expect(m_host.waitDurable(), "waitDurable");
}

// False at the end of a queue, where the next walk begins anew.
bool Worker::consumeOne(Share& share) {
  const unsigned int dsid = kDsids[share.random.below(kDsids.size())];
  unsigned long& position = share.position[queueOf(dsid)];
  const std::unique_ptr<Event> event = next(position, dsid);
  position = event == nullptr ? 0 : event->getId();
  if (event == nullptr) return false;
  if (share.random.oneIn(5)) return true;  // left for a later walk
  const std::string text = eventStringOf(*event);
  send(m_output, {.kind = Kind::kWillDelete, .queue = queueOf(dsid), .id = position, .text = text});
  m_manager.deleteEvent(position, dsid);
  send(m_output, {.kind = Kind::kDeleted, .queue = queueOf(dsid), .id = position});
  ++m_calls;
  if (isNumbered(text)) --m_backlog;
  return true;
}

void Worker::check(Share& share) {
  expect(m_manager.checkConsistency(share.random.oneIn(2)), "checkConsistency");
}

void makeDataSelections() {
  for (const unsigned int dsid : kDsids) {
    if (dsid == queueOf(0) || dsid == 2 || QMDSIDValidate(dsid) != 0) continue;
    OrbDB::CTable table(*OrbDB::COrbDatabase::Instance().GetTable("dataselection"));
    table.addRecord(("id=" + std::to_string(dsid) + ",dstypeid=9").c_str(), nullptr, 0);
  }
}

// The process dies when it has used that much processor time, whatever it is doing then.
void dieAfter(std::chrono::microseconds processorTime) {
  sigevent death{};
  death.sigev_notify = SIGEV_SIGNAL;
  death.sigev_signo = SIGKILL;
  timer_t timer{};
  itimerspec when{};
  when.it_value.tv_nsec = std::chrono::nanoseconds(processorTime).count();
  if (timer_create(CLOCK_PROCESS_CPUTIME_ID, &death, &timer) != 0 ||
      timer_settime(timer, 0, &when, nullptr) != 0) {
    throw std::runtime_error("no timer of processor time");
  }
}

void tellStage(const LifePlan& plan, int output, Stage stage) {
  send(output, {.kind = Kind::kStage, .number = static_cast<std::uint64_t>(stage)});
  if (plan.end == LifePlan::End::kDuringFileCall && plan.stage == stage) {
    dieInFileCall(plan.fileCall, plan.moment);
  }
}

void live(const std::filesystem::path& home, const LifePlan& plan, int output) {
  tellStage(plan, output, Stage::kBorn);
  if (plan.end == LifePlan::End::kAfterCpuTime) dieAfter(plan.delay);
  {
    EventSystemHost::HostOptions options;
    options.home = home;
    Host host(options);
    tellStage(plan, output, Stage::kHostOpen);
    makeDataSelections();
    EventManager manager;
    tellStage(plan, output, Stage::kQueueOpen);
    Worker worker(plan, output, host, manager);
    worker.tellContents();
    worker.tellProblems();
    tellStage(plan, output, Stage::kWorking);
    worker.work();
    tellStage(plan, output, Stage::kClosing);
  }
  tellStage(plan, output, Stage::kQueueClosed);
}

}  // namespace

void runWorker(const std::filesystem::path& home, const LifePlan& plan, int output) {
  try {
    live(home, plan, output);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "worker: %s\n", problem.what());
    _exit(3);
  }
}

}  // namespace EventSystemTest
