// The queues as the cluster service holds them.
//
// Thread safety: none; needs the host's reader for its whole life.

#ifndef EVENTSYSTEM_APPS_COMMON_CLUSTERQUEUEREADER_H
#define EVENTSYSTEM_APPS_COMMON_CLUSTERQUEUEREADER_H

#include <optional>

#include "apps/common/EventView.h"
#include "apps/common/QueueReader.h"
#include "host/cluster/ClusterReader.h"

namespace EventApps {

// What a message about a failing service ends with.
constexpr const char* kClusterAdvice = "eventctl stats shows the members of the cluster";

class ClusterQueueReader : public QueueReader {
 public:
  // `service` outlives it.
  explicit ClusterQueueReader(EventSystemHost::ClusterReader& service) : m_service(service) {}

  // In the order of the ids. All throw Failure when the service cannot be read.
  void forEach(unsigned int dsid, unsigned long afterId, const Visitor& visit) const override;
  void forEachOfDataSelections(const Visitor& visit) const override;
  Walk beginAll() const override;
  std::optional<EventView> find(unsigned long id, unsigned int dsid) const override;
  unsigned long highestId(unsigned int dsid) const override;
  unsigned long notedHighestId(unsigned int dsid) const override;

 private:
  EventSystemHost::ClusterReader& m_service;
};

}  // namespace EventApps

#endif
