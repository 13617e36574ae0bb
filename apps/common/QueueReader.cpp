#include "apps/common/QueueReader.h"

#include "apps/common/ClusterQueueReader.h"
#include "apps/common/DatabaseQueueReader.h"

namespace EventApps {

std::unique_ptr<QueueReader> readerOf(const EventSystemHost::Host& host) {
  if (host.cluster() == nullptr) return std::make_unique<DatabaseQueueReader>();
  return std::make_unique<ClusterQueueReader>(*host.cluster());
}

}  // namespace EventApps
