// Reads the events of a queue many at a time.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_PAGEREADER_H
#define EVENTSYSTEM_HOST_CLUSTER_PAGEREADER_H

#include <vector>

#include "host/cluster/ClusterReader.h"
#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"

namespace EventSystemHost {

// How many events a page has at most: well below what one message of gRPC holds.
constexpr std::size_t kPageEvents = 500;

struct EventPage {
  std::vector<ClusterEvent> events;
  unsigned long last = 0;     // the highest id that was looked at
  unsigned long highest = 0;  // id handed out in the queue
  std::int64_t birth = 0;     // the revision that created the queue's sequence
  std::int64_t revision = 0;  // of etcd when it answered
};

class PageReader {
 public:
  // `channel` outlives it.
  explicit PageReader(EtcdChannel& channel) : m_channel(channel) {}

  // The first `most` events with ids from `first` to `last`.
  EtcdResult read(const EtcdKeys& keys, unsigned long first, unsigned long last, std::size_t most,
                  const Deadline& deadline, EventPage& page);

 private:
  EtcdChannel& m_channel;
};

// How many ids the next page spans. etcd gathers all keys of a range before it looks at the limit,
// so the span is a page's where ids are dense, and grows only where they are not.
unsigned long nextSpan(unsigned long span, std::size_t found);

}  // namespace EventSystemHost

#endif
