// Reads whole queues at the cluster service, many events at a time, and asks how the service is. It
// writes nothing there: no key, no lease.
//
// Thread safety: any thread, except for construction and destruction.

#ifndef EVENTSYSTEM_HOST_CLUSTER_CLUSTERREADER_H
#define EVENTSYSTEM_HOST_CLUSTER_CLUSTERREADER_H

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "EventSystem/Export.h"
#include "host/cluster/ClusterConfiguration.h"
#include "host/cluster/ClusterReport.h"

namespace EventSystemHost {

// Why the service cannot be read: what is wrong and at which endpoints.
class EVENTSYSTEM_HOST_API ClusterError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The same, because no majority of the members answers.
class EVENTSYSTEM_HOST_API ClusterWithoutMajority : public ClusterError {
 public:
  using ClusterError::ClusterError;
};

struct ClusterEvent {
  unsigned long id = 0;
  std::string member;  // that stored it
  std::string text;
};

class EVENTSYSTEM_HOST_API ClusterReader {
 public:
  // Connects when it is first asked for something.
  ClusterReader(const ClusterConfiguration& configuration, const std::string& queue);
  ~ClusterReader();

  ClusterReader(const ClusterReader&) = delete;
  ClusterReader& operator=(const ClusterReader&) = delete;

  // Returns false to end the walk.
  using Visitor = std::function<bool(const ClusterEvent&)>;

  // The events with ids above `afterId`, in the order of their ids, up to the last one that was
  // there when the walk began. Those deleted meanwhile may be missing. Throws ClusterError, as all
  // below do.
  void forEach(unsigned int dsid, unsigned long afterId, const Visitor& visit);

  std::optional<ClusterEvent> find(unsigned long id, unsigned int dsid);

  // The highest id that the service has handed out; 0 for a new queue.
  unsigned long highestId(unsigned int dsid);

  // The data selections that the service knows of, 0 for the global queue included, in order.
  std::vector<unsigned int> dataSelections();

  // How the cluster is; throws nothing.
  ClusterReport report();

  // Requests sent to etcd so far.
  unsigned long roundTrips() const;

 private:
  struct Parts;
  Parts& parts() const;
  Parts& checkedParts();

  const ClusterConfiguration m_configuration;
  const std::string m_queue;

  mutable std::mutex m_mutex;  // guards the members below
  mutable std::unique_ptr<Parts> m_parts;
  bool m_checked = false;
};

}  // namespace EventSystemHost

#endif
