// The table of data selections, which decides what queues there are. It is in the database wherever
// the queues are.
//
// Thread safety: one thread at a time; needs a running host.

#ifndef EVENTSYSTEM_APPS_COMMON_DATASELECTIONS_H
#define EVENTSYSTEM_APPS_COMMON_DATASELECTIONS_H

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "apps/common/Failure.h"
#include "apps/common/QueueReader.h"
#include "host/Host.h"

namespace EventApps {

struct DataSelection {
  unsigned int id = 0;
  int type = 9;
  std::string name;  // at most kLongestSelectionName bytes
};

constexpr std::size_t kLongestSelectionName = 255;

// The tables hold the number of a data selection in a signed 32-bit column.
constexpr unsigned int kHighestSelection = std::numeric_limits<int>::max();

// All of them, whether or not they have events.
std::vector<DataSelection> dataSelections();

// Why the data selections stay as they are: nothing has failed, it is not allowed.
class SelectionRefused : public Failure {
 public:
  enum class Reason { kExists, kUnknown, kHoldsEvents };

  SelectionRefused(Reason reason, const std::string& message)
      : Failure(message), m_reason(reason) {}

  Reason reason() const { return m_reason; }

 private:
  Reason m_reason;
};

// Durable when they return. Throw SelectionRefused, and change nothing then: when it is there
// already, when it is not there or still holds events. Throw Failure when the database fails.
void addDataSelection(EventSystemHost::Host& host, const DataSelection& selection);
void removeDataSelection(EventSystemHost::Host& host, unsigned int dsid);

unsigned long countEvents(const QueueReader& reader, unsigned int dsid);

}  // namespace EventApps

#endif
