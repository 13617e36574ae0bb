#include "apps/common/QueueFigures.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "EventSystem/platform/HostConfig.h"
#include "apps/common/DataSelections.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/EventKinds.h"
#include "apps/common/QueueNames.h"

namespace EventApps {

void QueueFigures::add(const EventView& event) {
  oldest = count == 0 ? event.date : std::min(oldest, event.date);
  newest = std::max(newest, event.date);
  ++count;
  ++countByType[event.type];
  if (!event.problem.empty()) ++damaged;
}

Figures readFigures(const QueueReader& reader) {
  Figures figures;
  reader.forEach(0, 0, [&](const EventView& event) {
    figures[0].add(event);
    return true;
  });
  reader.forEachOfDataSelections([&](const EventView& event) {
    figures[event.dsid].add(event);
    return true;
  });
  figures[0];  // named also when empty
  for (const DataSelection& selection : dataSelections()) figures[selection.id];
  for (auto& [dsid, queue] : figures) {
    queue.highestId = reader.highestId(dsid);
    queue.known = isGlobalQueue(dsid) || QMDSIDValidate(dsid) != 0;
  }
  return figures;
}

nlohmann::ordered_json jsonOfQueue(unsigned int dsid, const QueueFigures& queue) {
  nlohmann::ordered_json object = {{"dsid", dsid},
                                   {"count", queue.count},
                                   {"damaged", queue.damaged},
                                   {"highestId", queue.highestId},
                                   {"known", queue.known}};
  if (queue.count > 0) {
    object["oldest"] = queue.oldest;
    object["newest"] = queue.newest;
  }
  auto& types = object["types"] = nlohmann::ordered_json::object();
  for (const auto& [type, count] : queue.countByType) types[kindName(type)] = count;
  return object;
}

}  // namespace EventApps
