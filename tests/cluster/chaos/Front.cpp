#include "tests/cluster/chaos/Front.h"

#include <chrono>
#include <future>
#include <memory>

#include "EventSystem/LegacyEvent.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/common/DataSelections.h"
#include "apps/common/EventView.h"
#include "tests/cluster/chaos/Queues.h"

namespace EventSystemTest {
namespace {

using EventApps::EventView;
using EventApps::QueueService;

constexpr unsigned int kMostRead = 4;

EventSystemHost::HostOptions optionsFor(const std::filesystem::path& home) {
  EventSystemHost::HostOptions options;
  options.home = home;
  return options;
}

std::string nameOf(const EventView& event) {
  for (const auto& [key, text] : event.fields) {
    if (key == "payload") return text;
  }
  return "another-event";
}

EventApps::ServiceLimits limits() {
  EventApps::ServiceLimits limits;
  limits.lookForOtherMembers = std::chrono::milliseconds(10);
  return limits;
}

// Waits for the answer to what `ask` asks.
template <class Answer, class Ask>
Answer answerOf(const Ask& ask) {
  const auto promise = std::make_shared<std::promise<Answer>>();
  ask([promise](Answer answer) { promise->set_value(std::move(answer)); });
  return promise->get_future().get();
}

}  // namespace

std::string textOfEvent(const std::string& name) {
  std::string payload = name;
  EventSystem::LegacyEvent event(payload.data(), 0);
  return EventApps::eventStringOf(event);
}

LibraryFront::LibraryFront(const std::filesystem::path& home)
    : m_host(optionsFor(home)), m_queues(m_host) {}

Front::Stored LibraryFront::store(const std::string& text, unsigned int dsid) {
  const auto event = EventApps::parseEvent(text);
  unsigned long id = 0;
  if (m_queues.store(*event, dsid, id) != 0) return {0, m_queues.isOpen()};
  return {id, false};
}

std::optional<Front::Page> LibraryFront::read(unsigned int dsid, unsigned long afterId) {
  try {
    const auto event = m_queues.next(afterId, dsid);
    if (!event) return Page{{}, true};
    return Page{{{event->getId(), nameOf(EventApps::viewOf(*event, dsid))}}, false};
  } catch (const EventApps::Failure&) {
    return std::nullopt;
  }
}

bool LibraryFront::remove(unsigned int dsid, unsigned long id) {
  try {
    m_queues.remove(id, dsid);
    return true;
  } catch (const EventApps::Failure&) {
    return false;
  }
}

DaemonFront::DaemonFront(const std::filesystem::path& home) : m_host(optionsFor(home)) {
  for (const unsigned int dsid : kChaosQueues) {
    if (dsid != 0 && QMDSIDValidate(dsid) == 0) {
      EventApps::addDataSelection(m_host, {.id = dsid, .type = 9, .name = ""});
    }
  }
  m_service.emplace(m_host, limits());
}

Front::Stored DaemonFront::store(const std::string& text, unsigned int dsid) {
  std::vector<std::unique_ptr<EventSystem::Event>> events;
  events.push_back(EventApps::parseEvent(text));
  const auto result = answerOf<EventApps::StoreResult>(
      [&](auto done) { m_service->store(std::move(events), dsid, std::nullopt, std::move(done)); });
  if (result.code != 0) return {0, result.unsettled};
  return {result.ids.front(), false};
}

std::optional<Front::Page> DaemonFront::read(unsigned int dsid, unsigned long afterId,
                                             std::chrono::milliseconds wait) {
  const auto result = answerOf<EventApps::ReadResult>([&](auto done) {
    m_service->read({dsid, afterId, kMostRead, {}, wait}, std::move(done));
  });
  if (result.code != 0) return std::nullopt;
  Page page{{}, result.events.size() < kMostRead};
  for (const auto& event : result.events) {
    page.events.emplace_back(event->id(), nameOf(event->view()));
  }
  return page;
}

bool DaemonFront::remove(unsigned int dsid, unsigned long id) {
  const auto result = answerOf<EventApps::RemoveResult>(
      [&](auto done) { m_service->remove(id, dsid, std::move(done)); });
  return result.code == 0;
}

}  // namespace EventSystemTest
