#include "apps/eventd/queue/Core.h"

#include <exception>

#include "apps/common/Failure.h"
#include "apps/eventd/queue/ReadTask.h"

namespace EventApps {
namespace {

constexpr unsigned int kSelectionOfProbe = 1;
constexpr int kDatabaseGone = 14;  // as the database calls a file that is not there
constexpr std::chrono::seconds kProbeInterval(1);

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
      audience(theLimits, [this](const SubscriberPtr& subscriber) { fetch(subscriber); }),
      shortReads(theLimits.shortReads),
      longReads(theLimits.longReads),
      databasePlace(theHost.configuration().databaseFile),
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
      figures(theHost, theLimits, walker, *answers),
      m_auditWatch(theHost.configuration().auditDirectory / "audit.db") {
  library.wrote = [this] {
    flusher.noteWrite();
    figures.noteChange();
  };
  if (const int status = host.waitDurable(); status != 0) throw Failure(flushProblem(status));
  tryQueues();
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
  const bool isSafe = status != 0 || host.cluster() != nullptr || databasePlace.isKept();
  return isSafe ? status : kDatabaseGone;
}

void Core::run(TaskPtr task) {
  m_queue.post([this, task = std::move(task)] { runSlice(task); });
}

void Core::runSlice(const TaskPtr& task) {
  try {
    const bool ended = task->step();
    showArrivals();
    if (!ended) run(task);
  } catch (const std::exception& problem) {
    task->fail(problem.what());
    showArrivals();
  }
}

void Core::answer(std::function<void(int)> answer, Removed removed) {
  flusher.whenDurable([this, answer = std::move(answer), removed = std::move(removed),
                       arrivals = library.takeArrivals(),
                       generation = m_notedGeneration](int status) {
    const bool current = generation == m_shownGeneration;
    if (current) audience.trustKeptEvents(status == 0);
    if (current && status != 0) flushFailed(status);
    answer(status);
    if (status != 0) return;
    health.worked(Health::Matter::kFlush);
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
  });
  keepLooking();
}

std::string Core::flushProblem(int status) const {
  if (status == kDatabaseGone) {
    return host.configuration().databaseFile.string() +
           ": the file was removed or replaced while it is in use; what was just done is lost when "
           "this process ends. Put it back where it was, or stop the daemon and put a backup there "
           "with eventctl restore";
  }
  return host.configuration().databaseFile.string() + ": a flush failed (status " +
         std::to_string(status) +
         "); what was just done may not survive power loss; the log says why";
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

void Core::probe() {
  if (m_probing.exchange(true)) return;
  m_queue.post([this] {
    tryQueues();
    timer.callAfter(kProbeInterval, [this] { m_probing = false; });
  });
}

void Core::tryQueues() {
  try {
    library.discover(0);
    library.walk(kSelectionOfProbe, 0, {}, [](unsigned long, const EventPtr&) { return false; });
    health.worked(Health::Matter::kRead);
    health.worked(Health::Matter::kStore);
  } catch (const Failure& problem) {
    health.failed(Health::Matter::kRead, problem.what());
  }
  flusher.noteWrite();
  answer([](int) {});
}

void Core::fetch(const SubscriberPtr& subscriber) {
  ReadTask::Request request{subscriber->queue, subscriber->seenTo, Audience::kEventsAtOnce,
                            subscriber->types};
  run(std::make_shared<ReadTask>(*this, std::move(request),
                                 [this, subscriber](ReadTask::Read read) {
                                   if (read.code != 0)
                                     return audience.end(subscriber, read.problem);
                                   Audience::deliver(*subscriber, read.events);
                                   audience.goOn(subscriber, read.seenTo, read.shown);
                                 }));
}

}  // namespace EventApps
