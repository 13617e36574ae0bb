#include "apps/eventd/queue/QueueService.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/eventd/queue/CheckTask.h"
#include "apps/eventd/queue/Core.h"
#include "apps/eventd/queue/ReadTask.h"
#include "apps/eventd/queue/RemoveTask.h"
#include "apps/eventd/queue/StoreTask.h"

namespace EventApps {
namespace {

constexpr unsigned long kAllIds = std::numeric_limits<unsigned long>::max();
constexpr const char* kEnding = "the service is ending; ask again when it has been started anew";
constexpr const char* kGivenUp =
    "the reading was given up: its reader has gone, or the service is ending";

}  // namespace

class QueueService::Parts {
 public:
  Parts(EventSystemHost::Host& host, const ServiceLimits& limits, ServiceObserver* observer)
      : core(host, limits, observer) {}

  // An operation, or null after `refused` was sent on its way.
  OperationPtr begin(const char* name, std::function<void()> refused) {
    OperationPtr operation = core.operations.begin(name);
    if (!operation) core.answers->post(std::move(refused));
    return operation;
  }

  void read(const WaitingReaderPtr& reader, Timer::Clock::time_point end);
  bool beginRead(const WaitingReaderPtr& reader, Timer::Clock::time_point end, Turns& turns);
  void answerRead(const WaitingReaderPtr& reader, Timer::Clock::time_point end,
                  ReadTask::Read read);
  void giveUp(const WaitingReaderPtr& reader);
  void change(const char* name, std::function<void()> call, const Changed& done);
  void removeFound(unsigned int dsid, unsigned long end, bool dryRun, const RemoveTask::Done& done);
  void startSubscriber(const SubscriberPtr& subscriber, std::optional<unsigned long> after);

  Checks checks;
  Core core;
};

QueueService::QueueService(EventSystemHost::Host& host, const ServiceLimits& limits,
                           ServiceObserver* observer)
    : m_parts(std::make_unique<Parts>(host, limits, observer)) {}

QueueService::~QueueService() = default;

void QueueService::store(std::vector<std::unique_ptr<EventSystem::Event>> events, unsigned int dsid,
                         std::optional<IdempotencyKey> key, Stored done) {
  auto operation = m_parts->begin("store", [done] {
    done({EventSystem::kStoreFailure, {}, kEnding});
  });
  if (!operation) return;
  m_parts->core.run(std::make_shared<StoreTask>(m_parts->core, std::move(operation),
                                                std::move(events), dsid, std::move(key),
                                                std::move(done)));
}

bool QueueService::supportsKeys() const {
  return m_parts->core.keys.isSupported();
}

std::optional<Waiting> QueueService::read(const ReadRequest& request, ReadDone done) {
  Core& core = m_parts->core;
  auto operation = m_parts->begin("read", [done, after = request.after] {
    done({{}, after, EventSystem::kStoreFailure, kEnding});
  });
  if (!operation) return Waiting([] {});
  const auto reader = std::make_shared<WaitingReader>();
  if (request.wait.count() > 0 && !(reader->place = core.waitingPlaces.take())) return std::nullopt;
  reader->request = request;
  reader->request.limit = std::max(1U, request.limit);
  reader->done = std::move(done);
  reader->operation = std::move(operation);
  core.answers->post([parts = m_parts.get(), reader, end = Timer::Clock::now() + request.wait] {
    parts->read(reader, end);
  });
  return Waiting([&core, answers = std::weak_ptr(core.answers), reader] {
    reader->cancelled = true;
    if (const auto alive = answers.lock()) {
      alive->post([&core, reader] { core.audience.drop(reader); });
    }
  });
}

// What is kept answers those who follow a queue, without the library.
void QueueService::Parts::read(const WaitingReaderPtr& reader, Timer::Clock::time_point end) {
  const ReadRequest& request = reader->request;
  if (auto kept = core.audience.readKept(request)) return reader->answer(std::move(*kept));
  // Who asks for some types only may have to pass over a whole queue.
  const bool isShort = request.limit <= core.limits.shortRead && request.types.empty();
  Turns& turns = isShort ? core.shortReads : core.longReads;
  turns.take([this, reader, end, &turns] { return beginRead(reader, end, turns); });
}

bool QueueService::Parts::beginRead(const WaitingReaderPtr& reader, Timer::Clock::time_point end,
                                    Turns& turns) {
  // A client that has gone, or seems to have, may still listen to what comes at once.
  const bool isNeeded = core.operations.takesMore() && !(reader->cancelled && reader->waits());
  if (!isNeeded) {
    giveUp(reader);
    return false;
  }
  const ReadRequest& request = reader->request;
  const auto goesOn = [this, reader] { return core.operations.takesMore() && !reader->cancelled; };
  ReadTask::Request toRead{request.dsid, request.after, request.limit, request.types, goesOn};
  core.runInBackground(std::make_shared<ReadTask>(core, std::move(toRead),
                                                  [this, reader, end, &turns](ReadTask::Read read) {
                                                    answerRead(reader, end, std::move(read));
                                                    turns.end();
                                                  }));
  return true;
}

void QueueService::Parts::giveUp(const WaitingReaderPtr& reader) {
  if (reader->waits()) return core.audience.giveUp(reader);
  reader->answer({{}, reader->request.after, EventSystem::kStoreFailure, kGivenUp});
}

void QueueService::Parts::answerRead(const WaitingReaderPtr& reader, Timer::Clock::time_point end,
                                     ReadTask::Read read) {
  const bool answersNow = read.code != 0 || !read.events.empty() || !reader->waits();
  if (answersNow) {
    if (read.code == 0 && !read.complete) return giveUp(reader);
    const unsigned long last = lastOf(reader->request, read.events, read.seenTo);
    return reader->answer({std::move(read.events), last, read.code, std::move(read.problem)});
  }
  reader->operation->stopClock();
  core.audience.wait(reader, read.seenTo);
  if (reader->number == 0) return;
  reader->timer = &core.timer;
  reader->end = core.timer.callAt(end, [this, weak = std::weak_ptr(reader)] {
    core.answers->post([this, weak] {
      const auto late = weak.lock();
      if (late && late->number != 0) core.audience.giveUp(late);
    });
  });
  core.keepLooking();
}

std::optional<Subscription> QueueService::subscribe(unsigned int dsid,
                                                    std::optional<unsigned long> after,
                                                    std::set<int> types, Deliver deliver,
                                                    Ended ended) {
  Core& core = m_parts->core;
  const auto subscriber = std::make_shared<Subscriber>();
  subscriber->place = core.subscriberPlaces.takeWith(core.waitingPlaces);
  if (!subscriber->place) return std::nullopt;
  subscriber->queue = queueOf(dsid);
  subscriber->types = std::move(types);
  subscriber->deliver = std::move(deliver);
  subscriber->ended = std::move(ended);
  m_parts->startSubscriber(subscriber, after);
  const auto onAnswers = [answers = std::weak_ptr(core.answers)](auto call) {
    if (const auto alive = answers.lock()) alive->post(std::move(call));
  };
  return Subscription(
      [&core, onAnswers, subscriber] {
        onAnswers([&core, subscriber] { core.audience.resume(subscriber); });
      },
      [&core, onAnswers, subscriber] {
        subscriber->cancelled = true;
        onAnswers([&core, subscriber] { core.audience.drop(subscriber); });
      });
}

// Everything up to the highest id of now is there to be read, and what follows will be shown.
void QueueService::Parts::startSubscriber(const SubscriberPtr& subscriber,
                                          std::optional<unsigned long> after) {
  subscriber->fetching = true;
  const auto start = [this, subscriber, after] {
    const unsigned long shown = core.library.highest(subscriber->queue);
    core.answer([this, subscriber, shown, seenTo = after.value_or(shown)](int) {
      core.audience.add(subscriber);
      core.audience.goOn(subscriber, seenTo, shown);
      core.keepLooking();
    });
  };
  core.run(std::make_shared<CallTask>(start, [this, subscriber](const std::exception& problem) {
    core.answers->post([this, subscriber, why = std::string(problem.what())] {
      core.audience.end(subscriber, why);
    });
  }));
}

void QueueService::find(unsigned long id, unsigned int dsid,
                        const std::function<void(FindResult)>& done) {
  const auto operation = m_parts->begin("find", [done] {
    done({nullptr, EventSystem::kStoreFailure, kEnding});
  });
  if (!operation) return;
  Core& core = m_parts->core;
  const auto answer = [&core, operation, done](FindResult result) {
    core.answer([&core, operation, done, result = std::move(result)](int status) {
      done(status == 0 || result.code != 0
               ? result
               : FindResult{nullptr, EventSystem::kStoreFailure, core.flushProblem(status)});
    });
  };
  core.run(std::make_shared<CallTask>(
      [&core, id, dsid, answer] {
        answer({core.library.find(id, dsid), 0, {}});
      },
      [answer](const std::exception& problem) {
        answer({nullptr, codeOf(problem), problem.what()});
      }));
}

void QueueService::remove(unsigned long id, unsigned int dsid,
                          const std::function<void(RemoveResult)>& done) {
  const auto operation = m_parts->begin("remove", [done] {
    done({false, EventSystem::kStoreFailure, kEnding});
  });
  if (!operation) return;
  m_parts->core.run(std::make_shared<RemoveTask>(m_parts->core, dsid,
                                                 std::vector<unsigned long>{id},
                                                 [operation, done](const RemoveUpToResult& all) {
                                                   done({all.deleted > 0, all.code, all.problem});
                                                 }));
}

void QueueService::removeUpTo(std::optional<unsigned long> upTo, unsigned int dsid, bool dryRun,
                              const std::function<void(RemoveUpToResult)>& done) {
  const auto operation = m_parts->begin("remove_up_to", [done] {
    done({0, 0, EventSystem::kStoreFailure, kEnding});
  });
  if (!operation) return;
  Core& core = m_parts->core;
  const auto finished = [operation, done](const RemoveUpToResult& result) { done(result); };
  // What is stored after this call is not touched, however long the walk takes.
  core.run(std::make_shared<CallTask>(
      [parts = m_parts.get(), upTo, dsid, dryRun, finished] {
        Core& all = parts->core;
        all.library.discover(dsid);
        const unsigned long end = std::min(upTo.value_or(kAllIds), all.library.highest(dsid));
        all.walker.post([parts, end, dsid, dryRun, finished] {
          parts->removeFound(dsid, end, dryRun, finished);
        });
      },
      [parts = m_parts.get(), finished](const std::exception& problem) {
        const RemoveUpToResult failed{0, 0, codeOf(problem), problem.what()};
        parts->core.answer([finished, failed](int) { finished(failed); });
      }));
}

void QueueService::Parts::removeFound(unsigned int dsid, unsigned long end, bool dryRun,
                                      const RemoveTask::Done& done) {
  RemoveUpToResult counted;
  std::vector<unsigned long> ids;
  try {
    ids = idsUpTo(core.host, dsid, end);
    counted.deleted = ids.size();
    counted.last = ids.empty() ? 0 : ids.back();
  } catch (const std::exception& problem) {
    counted.code = codeOf(problem);
    counted.problem = problem.what();
  }
  if (!dryRun && counted.code == 0) {
    return core.runInBackground(std::make_shared<RemoveTask>(core, dsid, std::move(ids), done));
  }
  core.onQueueThread(
      [this, counted, done] { core.answer([counted, done](int) { done(counted); }); });
}

void QueueService::check(bool fix, const std::function<void(CheckResult)>& done) {
  const auto operation = m_parts->begin("check", [done] { done({{}, kEnding}); });
  if (!operation) return;
  m_parts->checks.check(m_parts->core, fix,
                        [operation, done](const CheckResult& result) { done(result); });
}

// What `call` does is durable when it returns.
void QueueService::Parts::change(const char* name, std::function<void()> call,
                                 const Changed& done) {
  const auto operation = begin(name, [done] { done({kEnding}); });
  if (!operation) return;
  const auto answer = [this, operation, done](const ChangeResult& result) {
    core.figures.noteChange();
    core.answer([operation, done, result](int) { done(result); });
  };
  core.run(std::make_shared<CallTask>(
      [call = std::move(call), answer] {
        try {
          call();
          answer({});
        } catch (const SelectionRefused& refused) {
          answer({refused.what(), refused.reason()});
        }
      },
      [answer](const std::exception& problem) {
        answer({.problem = problem.what(), .code = codeOf(problem)});
      }));
}

void QueueService::addDataSelection(const DataSelection& selection, const Changed& done) {
  Core& core = m_parts->core;
  m_parts->change(
      "add_data_selection",
      [&core, selection] {
        EventApps::addDataSelection(core.host, selection);
        core.selections.add(selection.id);
        core.figures.readAnew();
      },
      done);
}

void QueueService::removeDataSelection(unsigned int dsid, const Changed& done) {
  Core& core = m_parts->core;
  m_parts->change(
      "remove_data_selection",
      [&core, dsid] {
        EventApps::removeDataSelection(core.host, dsid);
        core.selections.remove(dsid);
        core.figures.readAnew();
      },
      done);
}

bool QueueService::hasQueue(unsigned int dsid) const {
  return m_parts->core.selections.hasQueue(dsid);
}

void QueueService::figures(const std::function<void(FiguresPtr)>& done) {
  const auto operation = m_parts->begin("figures", [done] {
    done(std::make_shared<FiguresSnapshot>(FiguresSnapshot{{}, {}, kEnding}));
  });
  if (!operation) return;
  m_parts->core.figures.get([operation, done](const FiguresPtr& found) { done(found); });
}

void QueueService::readiness(const std::function<void(const Readiness&)>& done) {
  m_parts->core.lookout.ask(done);
}

bool QueueService::makesProgress() {
  return m_parts->core.makesProgress();
}

ServiceCounters QueueService::counters() const {
  const Core& core = m_parts->core;
  ServiceCounters all = core.tally.read();
  all.waitingReaders = core.waitingPlaces.taken();
  all.subscribers = core.subscriberPlaces.taken();
  all.keyRows = core.keys.rows();
  return all;
}

}  // namespace EventApps
