// One client of the cluster event service: what ClusterAPI offers, for one etcd cluster.
//
// A client has connections and a thread of its own; a process must not fork while it has one,
// except to execute another program at once.
//
// Thread safety: any thread, except for construction and destruction.

#ifndef EVENTSYSTEM_HOST_CLUSTER_CLUSTERCLIENT_H
#define EVENTSYSTEM_HOST_CLUSTER_CLUSTERCLIENT_H

#include <memory>
#include <string>

#include "host/cluster/ClusterConfiguration.h"
#include "host/cluster/ClusterReport.h"
#include "host/cluster/MemberHome.h"

namespace EventSystemHost {

// What the calls return when they fail; the log says more.
enum ClusterFailure : unsigned int {
  kClusterNotStarted = 1,
  kClusterBadArgument = 2,  // nothing was sent
  kClusterUnreachable = 3,  // no answer in time: a write may be done or not
  kClusterNoSpace = 4,      // etcd's quota is used up
  kClusterBusy = 5,         // etcd is behind with its work, or others kept writing
  kClusterRefused = 6       // etcd's own words are in the log
};

class ClusterClient {
 public:
  // Connects, logs in and reads through a majority. Throws std::runtime_error whose text says
  // what is wrong and where; a member that is down while a majority lives is only warned of.
  explicit ClusterClient(const ClusterConfiguration& configuration);

  // Takes back what is left at etcd of this client.
  ~ClusterClient();

  ClusterClient(const ClusterClient&) = delete;
  ClusterClient& operator=(const ClusterClient&) = delete;

  // As ClusterAPI.h. A plain write (id 0) that fails is stored once or not at all, and the same
  // event handed in again is not stored twice. When a copy (any other id) fails, copies with
  // higher ids fail with kClusterBusy until it is handed in again or another call is made.
  unsigned int newEvent(const std::string& queue, const std::string& member,
                        const std::string& text, unsigned long id, unsigned long& newId,
                        unsigned int dsid);
  unsigned int getNextEvent(const std::string& queue, unsigned long afterId, unsigned long& id,
                            std::string& member, std::string& text, unsigned int dsid);
  unsigned int deleteEventById(const std::string& queue, unsigned long id, unsigned int dsid);

  // The member's database holds no event below `belowId` any more and will not hand one in again:
  // what was kept to recognise those copies is removed.
  unsigned int forgetCopies(const std::string& queue, const std::string& member,
                            unsigned long belowId, unsigned int dsid);

  // Makes sure that this home alone is the member `member` of the queue. Throws
  // std::runtime_error whose text says who else is, or what else is wrong.
  void claim(const std::string& queue, const std::string& member, const MemberHome& home);

  ClusterReport report();

  // Requests sent to etcd so far.
  unsigned long roundTrips() const;

 private:
  unsigned int writeEvent(const std::string& queue, const std::string& member,
                          const std::string& text, unsigned long& newId, unsigned int dsid);
  unsigned int copyEvent(const std::string& queue, const std::string& member,
                         const std::string& text, unsigned long id, unsigned long& newId,
                         unsigned int dsid);

  struct Parts;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace EventSystemHost

#endif
