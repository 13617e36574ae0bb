// A queue service on the reference host in a directory of its own, and what tests ask it.
//
// Thread safety: ask functions from any thread, the rest from the test's.

#ifndef EVENTSYSTEM_TESTS_EVENTD_QUEUE_SERVICEFIXTURE_H
#define EVENTSYSTEM_TESTS_EVENTD_QUEUE_SERVICEFIXTURE_H

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "apps/eventd/queue/QueueService.h"
#include "tests/power/RawDatabase.h"
#include "tests/support/Events.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

using Events = std::vector<std::unique_ptr<EventSystem::Event>>;
using Ids = std::vector<unsigned long>;

// A test that waits for longer than this has found a defect.
constexpr std::chrono::seconds kPatience(60);

// The answer to what `ask` asks.
template <class Answer, class Ask>
Answer answerOf(const Ask& ask) {
  auto promise = std::make_shared<std::promise<Answer>>();
  auto future = promise->get_future();
  ask([promise](Answer answer) { promise->set_value(std::move(answer)); });
  if (future.wait_for(kPatience) != std::future_status::ready) {
    ADD_FAILURE() << "no answer";
    return {};
  }
  return future.get();
}

// Waits until `holds`, and says whether it ever did.
template <class Condition>
bool eventually(const Condition& holds) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

inline Events eventsOf(std::initializer_list<std::string> servers) {
  Events events;
  for (const std::string& server : servers) events.push_back(newCapacityEvent(server));
  return events;
}

inline Events manyEvents(std::size_t count) {
  Events events;
  for (std::size_t i = 0; i < count; ++i) {
    events.push_back(newCapacityEvent("node" + std::to_string(i)));
  }
  return events;
}

inline std::unique_ptr<EventSystem::Event> auditEvent(const std::string& message) {
  return parsed(
      "EVENT{version:1;type:8;id:0;date:1700000000;AUDITEVENT{version:1;action:2;"
      "time:1700000000;loadSize:0;AUditMSg:" +
      message + ";}}");
}

inline Ids idsOf(const EventApps::EventList& events) {
  Ids ids;
  for (const auto& event : events) ids.push_back(event->id());
  return ids;
}

class ServiceTest : public ::testing::Test {
 protected:
  using QueueService = EventApps::QueueService;
  using StoreResult = EventApps::StoreResult;
  using ReadResult = EventApps::ReadResult;

  explicit ServiceTest(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
      : m_directory(parent) {
    limits.lookAge = limits.lookAgain = std::chrono::milliseconds(0);
  }
  ~ServiceTest() override { stop(); }

  std::filesystem::path home() const { return m_directory.path(); }
  std::filesystem::path database() const { return home() / "events.db"; }
  std::filesystem::path auditDatabase() const { return home() / "audit" / "audit.db"; }

  // As an off-line service leaves it.
  void leaveAuditRecord(const std::string& message) const {
    std::filesystem::create_directories(auditDatabase().parent_path());
    ASSERT_TRUE(leaveAuditRow(auditDatabase(),
                              "version:1;action:2;time:3;loadSize:4;AUditMSg:" + message, nullptr));
  }

  // Before the start.
  void useDurability(const std::string& durability) { m_durability = durability; }
  void useMore(const std::string& configuration) { m_more = configuration; }
  void useCountLimit(int limit) const {
    std::ofstream(home() / "OrbCentral.ini") << "[events]\ncount_limit = " << limit << '\n';
  }
  EventApps::ServiceLimits limits;
  EventApps::ServiceObserver* observer = nullptr;

  void start() {
    stop();
    std::ofstream(home() / "host.ini")
        << "[database]\ndurability = " << m_durability << "\n[log]\nlevel = off\n"
        << m_more;
    EventSystemHost::HostOptions options;
    options.home = home();
    m_host = std::make_unique<EventSystemHost::Host>(options);
    m_service = std::make_unique<QueueService>(*m_host, limits, observer);
  }
  void stop() {
    m_service.reset();
    m_host.reset();
  }

  QueueService& service() { return *m_service; }
  EventSystemHost::Host& host() { return *m_host; }

  StoreResult store(Events events, unsigned int dsid = 0,
                    std::optional<EventApps::IdempotencyKey> key = std::nullopt) {
    return answerOf<StoreResult>([&](auto done) {
      service().store(std::move(events), dsid, std::move(key), std::move(done));
    });
  }
  unsigned long storeOne(const std::string& server = "node1", unsigned int dsid = 0) {
    const StoreResult result = store(eventsOf({server}), dsid);
    EXPECT_EQ(result.code, 0) << result.problem;
    return result.ids.empty() ? 0 : result.ids.front();
  }
  ReadResult read(const EventApps::ReadRequest& request) {
    return answerOf<ReadResult>(
        [&](auto done) { EXPECT_TRUE(service().read(request, std::move(done))); });
  }
  Ids idsAfter(unsigned long after, unsigned int dsid = 0) {
    return idsOf(read({dsid, after, 1000, {}, {}}).events);
  }
  EventApps::RemoveResult remove(unsigned long id, unsigned int dsid = 0) {
    return answerOf<EventApps::RemoveResult>(
        [&](auto done) { service().remove(id, dsid, std::move(done)); });
  }
  EventApps::RemoveUpToResult removeUpTo(std::optional<unsigned long> upTo, bool dryRun = false,
                                         unsigned int dsid = 0) {
    return answerOf<EventApps::RemoveUpToResult>(
        [&](auto done) { service().removeUpTo(upTo, dsid, dryRun, std::move(done)); });
  }
  EventApps::Readiness readiness() {
    return answerOf<EventApps::Readiness>([&](auto done) { service().readiness(std::move(done)); });
  }
  EventApps::ChangeResult addDataSelection(unsigned int dsid) {
    return answerOf<EventApps::ChangeResult>([&](auto done) {
      service().addDataSelection({dsid, 9, "name"}, std::move(done));
    });
  }
  EventApps::ChangeResult removeDataSelection(unsigned int dsid) {
    return answerOf<EventApps::ChangeResult>(
        [&](auto done) { service().removeDataSelection(dsid, std::move(done)); });
  }

 private:
  TempDir m_directory;
  std::string m_durability = "group";
  std::string m_more;
  std::unique_ptr<EventSystemHost::Host> m_host;
  std::unique_ptr<QueueService> m_service;
};

}  // namespace EventSystemTest

#endif
