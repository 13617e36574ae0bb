#include "apps/eventd/queue/Core.h"

#include <exception>

#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/Failure.h"
#include "apps/eventd/queue/ReadTask.h"

namespace EventApps {
namespace {

constexpr unsigned int kSelectionOfProbe = 1;
constexpr int kFileGone = 14;  // as the database calls a file that is not there

}  // namespace

Core::Core(EventSystemHost::Host& theHost, const ServiceLimits& theLimits,
           ServiceObserver* observer)
    : host(theHost),
      limits(theLimits),
      operations(observer),
      health(theHost),
      waitingPlaces(theLimits.waiting),
      subscriberPlaces(theLimits.waiting),
      answers(std::make_shared<Worker>()),
      audience(theLimits, theHost.cluster() == nullptr,
               [this](const SubscriberPtr& subscriber) { fetch(subscriber); }),
      shortReads(theLimits.shortReads),
      longReads(theLimits.longReads),
      databasePlace(theHost.configuration().databaseFile),
      logPlace(theHost.configuration().databaseFile.string() + "-wal"),
      flusher([this] { return flush(); },
              [this, observer](int status, double seconds) {
                tally.note([&](ServiceCounters& all) {
                  ++(status == 0 ? all.flushes : all.failedFlushes);
                });
                if (observer != nullptr) observer->onFlush(seconds);
              },
              *answers),
      library(theHost, tally),
      keys(theHost, theLimits),
      selections(dataSelections()),
      figures(theHost, theLimits, walker, flusher,
              [this](Job job) { m_queue.post(std::move(job)); }),
      lookout(theLimits, health, *answers, timer,
              [this] { m_queue.post([this] { tryQueues(); }); }),
      m_auditWatch(theHost.configuration().auditDirectory / "audit.db"),
      m_probe(theHost) {
  library.wrote = [this] {
    flusher.noteWrite();
    figures.noteChange();
  };
  library.added = [this](unsigned int queue, const Published& event) {
    figures.added(queue, event.view());
  };
  library.removed = [this](unsigned int queue, unsigned long id, int type) {
    figures.removed(queue, id, type);
  };
  startFull();
  tryReading();
  tryWriting();
  if (const int status = host.waitDurable(); status != 0) throw Failure(flushProblem(status));
  lookout.ended();
  showArrivals();
}

Core::~Core() {
  operations.takeNoMore();
  answers->post([this] { audience.close("the service ends"); });
  operations.waitForAll();
  timer.stop();
  walker.finish();
  m_queue.post([this] { keys.settle(); });
  m_queue.finish();
  flusher.finish();
  answers->finish();
}

int Core::flush() const {
  const int status = host.waitDurable();
  if (status != 0 || host.cluster() != nullptr) return status;
  return databasePlace.isKept() && logPlace.isKept() ? 0 : kFileGone;
}

void Core::run(TaskPtr task) {
  m_queue.post([this, task = std::move(task)] {
    if (!runSlice(task)) run(task);
  });
}

void Core::runInBackground(TaskPtr task) {
  m_queue.post([this, task = std::move(task)] {
    m_background.push_back(task);
    if (m_background.size() == 1) m_queue.post([this] { workInBackground(); });
  });
}

// While there is something in the background, one call of this is in the line of the queue thread.
void Core::workInBackground() {
  const Slice slice;
  do {
    const TaskPtr task = std::move(m_background.front());
    m_background.pop_front();
    runJob([&] {
      if (!runSlice(task)) m_background.push_back(task);
    });
  } while (!m_background.empty() && !slice.isOver());
  if (!m_background.empty()) m_queue.post([this] { workInBackground(); });
}

// Whether the task has ended.
bool Core::runSlice(const TaskPtr& task) {
  bool ended = true;
  try {
    ended = task->step();
  } catch (const std::exception& problem) {
    task->fail(problem);
  }
  showArrivals();
  return ended;
}

void Core::answer(std::function<void(int)> answer, Removed removed) {
  flusher.whenDurable([this, answer = std::move(answer), removed = std::move(removed),
                       arrivals = library.takeArrivals(),
                       generation = m_notedGeneration](int status) {
    const bool current = generation == m_shownGeneration;
    if (current) audience.trustKeptEvents(status == 0);
    if (current && status != 0) flushFailed(status);
    if (status == 0) health.worked(Health::Matter::kFlush);
    answer(status);
    if (status != 0) return;
    if (current) {
      for (const Arrivals& each : arrivals) audience.show(each);
    }
    for (const auto& [queue, id] : removed) audience.removed(queue, id);
  });
}

void Core::showArrivals() {
  if (library.hasArrivals()) answer([](int) {});
}

// Whether what was written is there will be seen when it can be read again; then it is shown.
void Core::flushFailed(int status) {
  health.failed(Health::Matter::kFlush, flushProblem(status));
  m_queue.post([this, shown = audience.shown(), generation = ++m_shownGeneration] {
    m_notedGeneration = generation;
    library.forget(shown);
    figures.readAnew();
  });
  keepLooking();
}

std::string Core::flushProblem(int status) const {
  if (status == kFileGone) {
    const bool isLog = databasePlace.isKept();
    return (isLog ? logPlace : databasePlace).file().string() +
           ": the file was removed or replaced while it is in use; what is only in it is lost when "
           "this process is killed. Put it back where it was, or stop the daemon " +
           (isLog ? "with SIGTERM, which copies what it has into the database"
                  : "and put a backup there with eventctl restore");
  }
  const std::string lack = host.lackOfSpace();
  return host.configuration().databaseFile.string() + ": a flush failed (status " +
         std::to_string(status) + "); what was just done may not survive power loss; " +
         (lack.empty() ? "the log says why" : lack);
}

void Core::keepLooking() {
  if (m_looking.exchange(true)) return;
  timer.callAfter(library.isClustered() ? limits.lookForOtherMembers : limits.lookForAuditRows,
                  [this] { answers->post([this] { look(); }); });
}

void Core::look() {
  const std::vector<unsigned int> awaited = audience.awaited();
  if (awaited.empty()) {
    m_looking = false;
  } else {
    m_queue.post([this, awaited] { lookFor(awaited); });
  }
}

// In the database only audit records come from others. After a failed flush everything is looked
// for.
void Core::lookFor(const std::vector<unsigned int>& queues) {
  try {
    for (const unsigned int queue : queues) {
      const bool mayHaveMore = library.isClustered() || library.isBehind(queue) ||
                               (queue == 0 && m_auditWatch.mayHaveRows());
      if (mayHaveMore) library.discover(queue);
    }
    health.worked(Health::Matter::kRead);
  } catch (const Failure& problem) {
    health.failed(Health::Matter::kRead, problem.what());
  }
  showArrivals();
  // One look after the other, however long one takes.
  m_looking = false;
  keepLooking();
}

bool Core::makesProgress() {
  const bool queueGoesOn = m_queue.goesOn();
  return flusher.goesOn() && queueGoesOn;
}

// The library refuses at the limit; until it has, nobody knows.
void Core::startFull() {
  const int limit = host.configuration().countLimit;
  if (host.cluster() != nullptr || limit <= 0) return;
  int count = 0;
  DatabaseQueueReader().forEachId(0, [&](unsigned int, unsigned long) { return ++count < limit; });
  if (count >= limit) health.failed(Health::Matter::kFullQueue, library.whyFull());
}

void Core::tryQueues() {
  tryReading();
  tryWriting();
  endLook();
}

void Core::endLook() {
  flusher.noteWrite();
  answer([this](int) { lookout.ended(); });
}

void Core::tryReading() {
  const auto first = [](unsigned long, const EventPtr&) { return false; };
  try {
    library.discover(0);
    if (!library.isClustered()) {
      library.walk(0, 0, {}, first);
      library.walk(kSelectionOfProbe, 0, {}, first);
    }
    health.worked(Health::Matter::kRead);
  } catch (const std::exception& problem) {
    health.failed(Health::Matter::kRead, problem.what());
  }
}

void Core::tryWriting() {
  try {
    if (library.isClustered()) return tryWritingAtService();
    m_probe.write();
    health.worked(Health::Matter::kStore);
  } catch (const std::exception& problem) {
    health.failed(Health::Matter::kStore, problem.what());
  }
}

// There is nothing that could be written to no harm. What etcd says of itself counts: it takes no
// writes while it has an alarm.
void Core::tryWritingAtService() {
  if (!health.isFailing(Health::Matter::kStore)) return;
  const EventSystemHost::ClusterReport report = host.cluster()->report();
  if (report.failure.empty() && report.alarms.empty()) health.worked(Health::Matter::kStore);
}

// The turn of a subscriber is one slice: who reads on from far back does not keep those waiting who
// have little to read.
void Core::fetch(const SubscriberPtr& subscriber) {
  longReads.take([this, subscriber] {
    if (subscriber->cancelled) return false;
    fetchNow(subscriber);
    return true;
  });
}

void Core::fetchNow(const SubscriberPtr& subscriber) {
  const auto fetched = [this, subscriber](ReadTask::Read read) {
    longReads.end();
    if (read.code != 0) return audience.end(subscriber, read.problem);
    Audience::deliver(*subscriber, read.events);
    audience.goOn(subscriber, read.seenTo, read.shown);
  };
  ReadTask::Request request{.dsid = subscriber->queue,
                            .after = subscriber->seenTo,
                            .limit = Audience::kEventsAtOnce,
                            .types = subscriber->types,
                            .goesOn = [] { return false; }};
  runInBackground(std::make_shared<ReadTask>(*this, std::move(request), fetched));
}

}  // namespace EventApps
