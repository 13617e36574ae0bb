#include "apps/common/QueueNames.h"

namespace EventApps {

std::string queueName(unsigned int dsid) {
  if (isGlobalQueue(dsid)) return "the global queue";
  return "the queue of data selection " + std::to_string(dsid);
}

}  // namespace EventApps
