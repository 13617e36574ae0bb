// What the operations of a queue service share: its threads, the library, those who wait.
//
// Thread safety: as each member says; the functions from any thread unless they say otherwise.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_CORE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_CORE_H

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apps/eventd/queue/Audience.h"
#include "apps/eventd/queue/AuditWatch.h"
#include "apps/eventd/queue/FiguresCache.h"
#include "apps/eventd/queue/FilePlace.h"
#include "apps/eventd/queue/Flusher.h"
#include "apps/eventd/queue/Health.h"
#include "apps/eventd/queue/KeyDesk.h"
#include "apps/eventd/queue/Library.h"
#include "apps/eventd/queue/Lookout.h"
#include "apps/eventd/queue/Operations.h"
#include "apps/eventd/queue/OwnTables.h"
#include "apps/eventd/queue/SelectionSet.h"
#include "apps/eventd/queue/Task.h"
#include "apps/eventd/queue/Timer.h"
#include "apps/eventd/queue/Turns.h"

namespace EventApps {

class Core {
 public:
  Core(EventSystemHost::Host& host, const ServiceLimits& limits, ServiceObserver* observer);
  ~Core();

  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;

  // Lets the queue thread work on it until it has ended.
  void run(TaskPtr task);

  // The same for what there may be much of: all of it together has one turn between the others,
  // however much it is.
  void runInBackground(TaskPtr task);

  void onQueueThread(std::function<void()> call) { m_queue.post(std::move(call)); }

  // From the queue thread: `answer` runs on the answering thread with a database status, 0 when all
  // that was written before survives power loss; then, not sooner, what has arrived is shown.
  // Removed events are (queue, id).
  using Removed = std::vector<std::pair<unsigned int, unsigned long>>;
  void answer(std::function<void(int)> answer, Removed removed = {});

  // Shows what has arrived, with nothing else to answer.
  void showArrivals();

  // What a failed flush means for who waited for it.
  std::string flushProblem(int status) const;

  // Looks for events that nobody here has written, while somebody waits.
  void keepLooking();

  // See QueueService::makesProgress().
  bool makesProgress();

  EventSystemHost::Host& host;
  const ServiceLimits limits;
  Operations operations;
  Tally tally;
  Health health;
  Places waitingPlaces;                   // of subscribers, too
  Places subscriberPlaces;                // these are counted
  const std::shared_ptr<Worker> answers;  // handles outlive it
  Worker walker;                          // walks over whole queues

  // Of the answering thread.
  Audience audience;
  Turns shortReads;
  Turns longReads;

  const FilePlace databasePlace;
  const FilePlace logPlace;  // of the database, with what it does not have yet
  Flusher flusher;

  // Of the queue thread.
  Library library;
  KeyDesk keys;

  SelectionSet selections;
  FiguresCache figures;
  Timer timer;
  Lookout lookout;

 private:
  int flush() const;
  bool runSlice(const TaskPtr& task);
  void workInBackground();
  void flushFailed(int status);
  void tryQueues();
  void tryReading();
  void tryWriting();
  void tryWritingAtService();
  void endLook();
  void startFull();
  void look();
  void lookFor(const std::vector<unsigned int>& queues);
  void fetch(const SubscriberPtr& subscriber);
  void fetchNow(const SubscriberPtr& subscriber);

  // Of the queue thread.
  AuditWatch m_auditWatch;
  WriteProbe m_probe;
  std::deque<TaskPtr> m_background;

  std::atomic<bool> m_looking = false;
  // How often a flush has failed: as the queue thread and as the answering thread know it. What the
  // one has noted before it knew is not shown by the other: it is noted once more.
  unsigned int m_notedGeneration = 0;
  unsigned int m_shownGeneration = 0;
  Worker m_queue;  // last: it uses the others
};

}  // namespace EventApps

#endif
