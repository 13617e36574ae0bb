#include "apps/eventctl/QueueReader.h"

#include "apps/eventctl/ClusterQueueReader.h"
#include "apps/eventctl/DatabaseQueueReader.h"

namespace EventCtl {

std::unique_ptr<QueueReader> readerOf(const EventSystemHost::Host& host) {
  if (host.cluster() == nullptr) return std::make_unique<DatabaseQueueReader>();
  return std::make_unique<ClusterQueueReader>(*host.cluster());
}

OpenHost openReader(const GlobalOptions& options) {
  return openHost(hostOptions(options, EventSystemHost::Access::kReadOnly), options.wait);
}

}  // namespace EventCtl
