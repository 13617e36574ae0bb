#include "apps/common/ClusterQueueReader.h"

#include <memory>
#include <string>
#include <utility>

#include "apps/common/DataSelections.h"
#include "apps/common/Failure.h"
#include "apps/common/QueueNames.h"
#include "apps/common/StoredForm.h"

namespace EventApps {
namespace {

using EventSystemHost::ClusterError;
using EventSystemHost::ClusterEvent;
using EventSystemHost::ClusterWithoutMajority;

std::string unread(const ClusterError& problem) {
  return "the cluster service cannot be read: " + std::string(problem.what()) + "; " +
         kClusterAdvice;
}

// What is asked of the service; its failures with what to do about them.
template <class Question>
auto ask(const Question& question) {
  try {
    return question();
  } catch (const ClusterWithoutMajority& problem) {
    throw NoMajority(unread(problem));
  } catch (const ClusterError& problem) {
    throw Failure(unread(problem));
  }
}

// The service keeps the text that a store handed in; the event's id is the one it is filed under.
EventView viewOfEvent(const ClusterEvent& stored, unsigned int dsid) {
  EventView view;
  if (const auto event = parseEvent(withId(stored.text, stored.id))) {
    view = viewOf(*event, dsid);
  } else {
    view.dsid = dsid;
    view.eventString = stored.text;
    view.problem = "unreadable event string";
  }
  view.id = stored.id;
  return view;
}

}  // namespace

void ClusterQueueReader::forEach(unsigned int dsid, unsigned long afterId,
                                 const Visitor& visit) const {
  const unsigned int queue = queueOf(dsid);
  ask([&] {
    m_service.forEach(queue, afterId,
                      [&](const ClusterEvent& event) { return visit(viewOfEvent(event, queue)); });
  });
}

void ClusterQueueReader::forEachOfDataSelections(const Visitor& visit) const {
  bool wanted = true;
  for (const unsigned int dsid : ask([this] { return m_service.dataSelections(); })) {
    if (isGlobalQueue(dsid)) continue;
    if (!wanted) return;
    forEach(dsid, 0, [&](const EventView& event) { return wanted = visit(event); });
  }
}

QueueReader::Walk ClusterQueueReader::beginAll() const {
  return [reader = std::make_shared<ClusterQueueReader>(m_service)](const Visitor& visit) {
    reader->forEach(0, 0, visit);
    reader->forEachOfDataSelections(visit);
  };
}

std::optional<EventView> ClusterQueueReader::find(unsigned long id, unsigned int dsid) const {
  const unsigned int queue = queueOf(dsid);
  const auto event = ask([&] { return m_service.find(id, queue); });
  if (!event) return std::nullopt;
  return viewOfEvent(*event, queue);
}

unsigned long ClusterQueueReader::highestId(unsigned int dsid) const {
  return ask([&] { return m_service.highestId(queueOf(dsid)); });
}

unsigned long ClusterQueueReader::notedHighestId(unsigned int dsid) const {
  return highestId(dsid);
}

}  // namespace EventApps
