#include "apps/common/QueueNames.h"

namespace EventApps {

std::string queueName(unsigned int dsid) {
  if (isGlobalQueue(dsid)) return "the global queue";
  return "the queue of data selection " + std::to_string(dsid);
}

std::string noSuchSelection(unsigned int dsid) {
  const std::string number = std::to_string(dsid);
  return "data selection " + number +
         " does not exist in the dataselection table; add it with: eventctl dataselection add " +
         number;
}

}  // namespace EventApps
