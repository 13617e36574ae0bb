// The queues as a daemon serves them.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONQUEUES_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONQUEUES_H

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/QueueCheck.h"
#include "apps/eventctl/DaemonClient.h"
#include "apps/eventctl/Queues.h"

namespace EventApps {

// A write survives power loss when the call returns. Calls throw NoAnswer or DaemonProblem.
class DaemonQueues : public WritableQueues {
 public:
  explicit DaemonQueues(const DaemonAddress& address);

  bool hasQueue(unsigned int dsid) override;
  void forEach(unsigned int dsid, unsigned long after, const EventKind* kind,
               const Visitor& visit) override;
  std::optional<EventView> find(unsigned long id, unsigned int dsid) override;
  std::vector<std::pair<DataSelection, unsigned long>> selections() override;
  Statistics statistics() override;
  Woken waitForMore(unsigned int dsid, unsigned long after, const Listener& listener) override;

  Destination destination(unsigned int dsid, bool exact) override;
  std::size_t eventsAtOnce() const override { return 500; }
  // A lost answer is settled: the events are stored once, or it throws.
  StoreOutcome store(Events events, unsigned int dsid) override;
  std::optional<EventView> next(unsigned long after, unsigned int dsid) override;
  bool remove(unsigned long id, unsigned int dsid) override;
  void discard(unsigned long id, unsigned int dsid) override;
  unsigned long removeUpTo(unsigned long upTo, unsigned int dsid) override;
  void addSelection(const DataSelection& selection) override;
  void removeSelection(unsigned int dsid) override;
  void makeDurable() override {}

  CheckReport check(bool fix);

 private:
  Statistics withoutFigures(const DaemonProblem& problem);
  nlohmann::json post(Events events, unsigned int dsid);
  nlohmann::json postWithoutKey(const HttpRequest& request);
  StoreOutcome refusalOf(const DaemonProblem& problem, Events events, unsigned int dsid);
  std::string nextKey();

  DaemonClient m_client;
  std::string m_keyPrefix;
  unsigned long m_keys = 0;
  bool m_keysAreTaken = true;  // not in cluster mode
};

}  // namespace EventApps

#endif
