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
  highestId = std::max(highestId, event.id);
  ++count;
  ++countByType[event.type];
  if (!event.problem.empty()) ++damaged;
}

void QueueFigures::remove(int type) {
  if (count == 0 || --count == 0) oldest = newest = 0;
  const auto ofType = countByType.find(type);
  if (ofType != countByType.end() && --ofType->second == 0) countByType.erase(ofType);
}

// The noted ids are read before the rows: an event that is stored in between is counted, and its id
// is known from its row.
FiguresReading::FiguresReading(const QueueReader& reader) : m_reader(reader) {
  of(0);
  for (const DataSelection& selection : dataSelections()) of(selection.id);
  m_walk = reader.beginAll();
}

QueueFigures& FiguresReading::of(unsigned int dsid) {
  const auto [queue, isNew] = m_figures.try_emplace(dsid);
  if (isNew) queue->second.highestId = m_reader.notedHighestId(dsid);
  return queue->second;
}

Figures FiguresReading::finish() {
  m_walk([this](const EventView& event) {
    of(event.dsid).add(event);
    return true;
  });
  for (auto& [dsid, queue] : m_figures) {
    queue.known = isGlobalQueue(dsid) || QMDSIDValidate(dsid) != 0;
  }
  return std::move(m_figures);
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
