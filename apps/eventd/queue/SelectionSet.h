// Which data selections exist.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_SELECTIONSET_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_SELECTIONSET_H

#include <mutex>
#include <set>
#include <shared_mutex>
#include <vector>

#include "apps/common/DataSelections.h"
#include "apps/common/QueueNames.h"

namespace EventApps {

class SelectionSet {
 public:
  explicit SelectionSet(const std::vector<DataSelection>& all) {
    for (const DataSelection& each : all) m_ids.insert(each.id);
  }

  bool hasQueue(unsigned int dsid) const {
    if (isGlobalQueue(dsid)) return true;
    const std::shared_lock lock(m_mutex);
    return m_ids.contains(dsid);
  }

  void add(unsigned int dsid) {
    const std::unique_lock lock(m_mutex);
    m_ids.insert(dsid);
  }

  void remove(unsigned int dsid) {
    const std::unique_lock lock(m_mutex);
    m_ids.erase(dsid);
  }

 private:
  mutable std::shared_mutex m_mutex;
  std::set<unsigned int> m_ids;
};

}  // namespace EventApps

#endif
