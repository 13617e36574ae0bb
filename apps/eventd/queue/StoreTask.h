// Stores the events of one request.
//
// Thread safety: made by any thread, used by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_STORETASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_STORETASK_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EventSystem/Event.h"
#include "apps/eventd/queue/KeyDesk.h"
#include "apps/eventd/queue/Operations.h"
#include "apps/eventd/queue/QueueService.h"
#include "apps/eventd/queue/Task.h"

namespace EventApps {

class Core;

class StoreTask : public Task {
 public:
  using Events = std::vector<std::unique_ptr<EventSystem::Event>>;

  StoreTask(Core& core, OperationPtr operation, Events events, unsigned int dsid,
            std::optional<IdempotencyKey> key, QueueService::Stored done);

  bool step() override;
  void fail(const std::exception& problem) override;

 private:
  enum class Begin { kGoOn, kWait, kAnswer };

  Begin begin();
  bool storeNext();
  bool refuse(int code, const char* why, const std::string& problem);
  void notStored(int code);
  void refuseForStore(int code, const std::string& problem);
  std::string whatFailed(int code) const;
  void answer();
  void answered(int status);
  void count() const;

  Core& m_core;
  OperationPtr m_operation;
  const Events m_events;
  const unsigned int m_dsid;
  const std::optional<IdempotencyKey> m_key;
  const QueueService::Stored m_done;
  KeyedRequest* m_request = nullptr;  // while it is claimed
  bool m_begun = false;
  std::size_t m_next = 0;
  std::size_t m_first = 0;  // of those that this task has stored
  StoreResult m_result;
};

}  // namespace EventApps

#endif
