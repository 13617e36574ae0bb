// Power losses at every moment of a busy hour: what was acknowledged is there afterwards, and so is
// what was shown to anybody.

#include <gtest/gtest.h>

#include <map>

#include "tests/eventd/queue/ServiceFixture.h"
#include "tests/power/Days.h"
#include "tests/power/DiskLog.h"
#include "tests/power/DiskModel.h"
#include "tests/power/RawDatabase.h"
#include "tests/power/Reboot.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EventApps::EventPtr;
using EventApps::QueueService;
using EventApps::StoreResult;

constexpr int kProducers = 4;
constexpr int kRequests = 8;

// What was told to somebody, and when, as a position in the log of the disk.
class Ledger {
 public:
  explicit Ledger(const DiskLog& log) : m_log(log) {}

  void stored(unsigned long id) { note(m_stored, id); }
  void shown(const EventPtr& event) {
    note(m_stored, event->id());
    const std::lock_guard lock(m_mutex);
    m_texts[event->id()] = event->view().eventString;
  }
  void removalBegins(unsigned long id) { note(m_removalsBegun, id); }
  void removed(unsigned long id) { note(m_removed, id); }

  // Empty, or what is wrong with what is found after a loss at `point`.
  std::string judge(const Stored& found, std::size_t point) const {
    if (!found.problem.empty()) return found.problem;
    const auto table = found.rows.find("events");
    const std::map<unsigned long, std::string> none;
    const auto& rows = table == found.rows.end() ? none : table->second;
    for (const auto& [id, at] : m_stored) {
      if (at > point || isBefore(m_removalsBegun, id, point)) continue;
      const auto row = rows.find(id);
      if (row == rows.end()) return "event " + std::to_string(id) + " is lost";
      const auto text = m_texts.find(id);
      if (text != m_texts.end() && row->second != text->second) {
        return "event " + std::to_string(id) + " is another: " + row->second;
      }
    }
    for (const auto& [id, at] : m_removed) {
      if (at <= point && rows.contains(id)) return "event " + std::to_string(id) + " is back";
    }
    return "";
  }

  std::size_t facts() const { return m_stored.size() + m_removed.size(); }

 private:
  using Moments = std::map<unsigned long, std::size_t>;

  void note(Moments& moments, unsigned long id) {
    const std::size_t now = m_log.position();
    const std::lock_guard lock(m_mutex);
    moments.emplace(id, now);
  }
  static bool isBefore(const Moments& moments, unsigned long id, std::size_t point) {
    const auto found = moments.find(id);
    return found != moments.end() && found->second <= point;
  }

  const DiskLog& m_log;
  std::mutex m_mutex;
  Moments m_stored;
  Moments m_removalsBegun;
  Moments m_removed;
  std::map<unsigned long, std::string> m_texts;
};

class ServicePower : public testing::TestWithParam<const char*> {
 protected:
  ServicePower() : m_root(TempDir::inMemory()) {
    m_home = made("day");
    configureHome(m_home, GetParam());
    std::filesystem::create_directories(m_home / "audit");
    m_log = std::make_unique<DiskLog>(m_home);
    m_ledger = std::make_unique<Ledger>(*m_log);
  }

  std::filesystem::path made(const char* name) const {
    const auto directory = m_root.path() / name;
    std::filesystem::remove_all(directory);
    std::filesystem::create_directories(directory);
    return std::filesystem::canonical(directory);
  }

  void produce(QueueService& service, int producer) {
    for (int i = 0; i < kRequests; ++i) {
      const std::string name = std::to_string(producer) + "-" + std::to_string(i);
      const auto result = answerOf<StoreResult>([&](auto done) {
        service.store(eventsOf({name, name + "b"}), 0, keyOf(producer, name),
                      [this, done](const StoreResult& stored) {
                        for (const unsigned long id : stored.ids) m_ledger->stored(id);
                        done(stored);
                      });
      });
      ASSERT_EQ(result.code, 0) << result.problem;
      if (i % 4 == 3) remove(service, result.ids.front());
    }
  }

  // Half of the producers use keys.
  static std::optional<EventApps::IdempotencyKey> keyOf(int producer, const std::string& name) {
    if (producer % 2 == 0) return std::nullopt;
    return EventApps::IdempotencyKey{name, "body"};
  }

  void remove(QueueService& service, unsigned long id) {
    m_ledger->removalBegins(id);
    answerOf<EventApps::RemoveResult>([&](auto done) {
      service.remove(id, 0, [this, id, done](const EventApps::RemoveResult& result) {
        m_ledger->removed(id);
        done(result);
      });
    });
  }

  void follow(QueueService& service, const std::atomic<bool>& ends) {
    for (unsigned long last = 0; !ends;) {
      const auto result = answerOf<EventApps::ReadResult>([&](auto done) {
        service.read({0, last, 3, {}, std::chrono::milliseconds(5)},
                     [this, done](const EventApps::ReadResult& read) {
                       for (const EventPtr& event : read.events) m_ledger->shown(event);
                       done(read);
                     });
      });
      last = result.last;
    }
  }

  void busyHour() {
    EventSystemHost::HostOptions options;
    options.home = m_home;
    EventSystemHost::Host host(options);
    QueueService service(host);
    const auto subscription = service.subscribe(
        0, 0, {},
        [this](EventApps::EventSpan events) {
          for (const EventPtr& event : events) m_ledger->shown(event);
          return true;
        },
        [](const std::string&) {});
    std::atomic<bool> ends = false;
    std::thread follower([&] { follow(service, ends); });
    std::vector<std::thread> producers;
    for (int producer = 0; producer < kProducers; ++producer) {
      producers.emplace_back([&, producer] { produce(service, producer); });
    }
    for (std::thread& producer : producers) producer.join();
    ends = true;
    follower.join();
  }

  // What a server finds that is started on this disk.
  Stored restartOn(const DiskImage& image) const {
    const auto after = made("after");
    configureHome(after, GetParam());
    materialise(image, m_home, after);
    try {
      EventSystemHost::HostOptions options;
      options.home = after;
      const EventSystemHost::Host host(options);
      return readStored(after / "events.db");
    } catch (const EventSystemHost::HostError& refusal) {
      return {{}, 0, refusal.what()};
    }
  }

  // Empty, or what is wrong after a loss at whichever moment.
  std::string loseEverywhere() {
    const std::vector<DiskEntry> entries = m_log->entries();
    m_log.reset();
    for (const std::uint64_t damage : {kNothingUnflushed, kEverything, kInOrderAndTheNewestTorn}) {
      DiskModel model(entries);
      DiskImage last;
      Stored found = restartOn(last);
      for (std::size_t point = 0; point <= entries.size(); ++point) {
        model.advance(point);
        DiskImage image = model.crash(damage);
        if (image != last) found = restartOn(image);
        last = std::move(image);
        const std::string problem = m_ledger->judge(found, point);
        if (problem.empty()) continue;
        return "point " + std::to_string(point) + " damage " + std::to_string(damage) + ": " +
               problem;
      }
    }
    return "";
  }

  TempDir m_root;
  std::filesystem::path m_home;
  std::unique_ptr<DiskLog> m_log;
  std::unique_ptr<Ledger> m_ledger;
};

TEST_P(ServicePower, LossTakesNothingThatAnybodyKnows) {
  busyHour();
  EXPECT_GE(m_ledger->facts(), static_cast<std::size_t>(kProducers * kRequests * 2));
  EXPECT_EQ(loseEverywhere(), "");
}

INSTANTIATE_TEST_SUITE_P(EachDurability, ServicePower,
                         testing::Values("strict", "group", "relaxed"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
}  // namespace EventSystemTest
