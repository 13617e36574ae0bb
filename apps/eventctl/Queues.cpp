#include "apps/eventctl/Queues.h"

#include "apps/common/Failure.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/DaemonAddress.h"
#include "apps/eventctl/DaemonQueues.h"
#include "apps/eventctl/DirectQueues.h"

namespace EventApps {

void ReadableQueues::requireQueue(unsigned int dsid) {
  if (!hasQueue(dsid)) throw Failure(noSuchSelection(dsid));
}

std::unique_ptr<ReadableQueues> openToRead(const GlobalOptions& options) {
  if (const auto daemon = findDaemon(options)) return std::make_unique<DaemonQueues>(*daemon);
  return std::make_unique<DirectReader>(options);
}

std::unique_ptr<WritableQueues> openToWrite(const GlobalOptions& options) {
  if (const auto daemon = findDaemon(options)) return std::make_unique<DaemonQueues>(*daemon);
  return std::make_unique<DirectQueues>(openWriter(options));
}

std::vector<unsigned int> queuesMeant(ReadableQueues& queues, const GlobalOptions& options,
                                      bool all) {
  if (!all) {
    queues.requireQueue(options.dsid);
    return {options.dsid};
  }
  std::vector<unsigned int> dsids = {0};
  for (const auto& [selection, count] : queues.selections()) dsids.push_back(selection.id);
  return dsids;
}

}  // namespace EventApps
