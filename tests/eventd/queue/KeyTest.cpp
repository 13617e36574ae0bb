// Requests that are repeated.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

#include "EventSystem/ResultCode.h"
#include "tests/eventd/queue/ServiceFixture.h"
#include "tests/support/ForkedProcess.h"
#include "tests/support/WatchedDisk.h"

namespace EventSystemTest {
namespace {

using EventApps::IdempotencyKey;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Key : public ServiceTest {
 protected:
  using ServiceTest::ServiceTest;

  StoreResult storeWith(const std::string& key, const std::string& body, std::size_t count = 2,
                        unsigned int dsid = 0) {
    Events events;
    for (std::size_t i = 0; i < count; ++i) {
      events.push_back(newCapacityEvent(key + "-" + std::to_string(i)));
    }
    return store(std::move(events), dsid, IdempotencyKey{key, body});
  }

  void useLimits(int count, int days) const {
    std::ofstream(home() / "OrbCentral.ini")
        << "[events]\ncount_limit = " << count << "\nage_limit_days = " << days << '\n';
  }

  // How often each event is there, by its server, audit records left out.
  std::map<std::string, int> servers() {
    std::map<std::string, int> found;
    for (unsigned long last = 0;;) {
      const ReadResult page = read({0, last, 1000, {EventSystem::kCapacityEvent}, {}});
      if (page.events.empty()) return found;
      last = page.last;
      for (const auto& event : page.events) ++found[event->view().fields.back().second];
    }
  }
};

TEST_F(Key, StoresARequestOnce) {
  start();
  EXPECT_TRUE(service().supportsKeys());
  const StoreResult first = storeWith("a", "body");
  EXPECT_EQ(first.code, 0) << first.problem;
  EXPECT_FALSE(first.replayed);
  EXPECT_THAT(first.ids, ElementsAre(1, 2));
  const StoreResult again = storeWith("a", "body");
  EXPECT_EQ(again.code, 0);
  EXPECT_TRUE(again.replayed);
  EXPECT_EQ(again.ids, first.ids);
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2));
  EXPECT_EQ(service().counters().written.at(EventSystem::kCapacityEvent), 2u);
  EXPECT_EQ(service().counters().keyRows, 2u);
}

TEST_F(Key, IsKnownAfterARestart) {
  for (const char* const durability : {"strict", "group"}) {
    useDurability(durability);
    start();
    const StoreResult first = storeWith(durability, "body");
    start();
    const StoreResult again = storeWith(durability, "body");
    EXPECT_TRUE(again.replayed);
    EXPECT_EQ(again.ids, first.ids);
  }
  EXPECT_EQ(servers().size(), 4u);
}

TEST_F(Key, IsRefusedForAnotherBody) {
  start();
  storeWith("a", "body");
  const StoreResult other = storeWith("a", "other");
  EXPECT_TRUE(other.keyMismatch);
  EXPECT_NE(other.code, 0);
  EXPECT_THAT(other.ids, IsEmpty());
  EXPECT_EQ(idsAfter(0).size(), 2u);
}

TEST_F(Key, IsOneOfItsQueue) {
  start();
  addDataSelection(5);
  storeWith("a", "body");
  const StoreResult other = storeWith("a", "other", 2, 5);
  EXPECT_EQ(other.code, 0) << other.problem;
  start();
  const StoreResult again = storeWith("a", "other", 2, 5);
  EXPECT_TRUE(again.replayed);
  EXPECT_EQ(again.ids, other.ids);
  EXPECT_EQ(idsAfter(0, 5), other.ids);
}

TEST_F(Key, OfRequestsAtOnceIsStoredOnce) {
  start();
  std::vector<std::thread> threads;
  std::vector<StoreResult> results(16);
  for (StoreResult& result : results) {
    threads.emplace_back([&] { result = storeWith("a", "body", 50); });
  }
  for (std::thread& thread : threads) thread.join();
  int stored = 0;
  for (const StoreResult& result : results) {
    EXPECT_EQ(result.code, 0) << result.problem;
    EXPECT_EQ(result.ids, results[0].ids);
    stored += result.replayed ? 0 : 1;
  }
  EXPECT_EQ(stored, 1);
  EXPECT_EQ(idsAfter(0).size(), 50u);
}

TEST_F(Key, GoesOnWhereAFullQueueStopped) {
  useLimits(3, 0);
  start();
  const StoreResult first = storeWith("a", "body", 5);
  EXPECT_EQ(first.code, EventSystem::kStorageLimits);
  EXPECT_THAT(first.ids, ElementsAre(1, 2, 3));
  remove(1);
  remove(2);
  start();
  const StoreResult rest = storeWith("a", "body", 5);
  EXPECT_EQ(rest.code, 0) << rest.problem;
  EXPECT_FALSE(rest.replayed);
  EXPECT_THAT(rest.ids, ElementsAre(1, 2, 3, 4, 5));
  EXPECT_THAT(idsAfter(0), ElementsAre(3, 4, 5));
}

TEST_F(Key, IsKnownWhenItsEventsAreGone) {
  start();
  storeWith("a", "body");
  remove(1);
  remove(2);
  EXPECT_TRUE(storeWith("a", "body").replayed);
  start();
  EXPECT_TRUE(storeWith("a", "body").replayed);
  EXPECT_THAT(idsAfter(0), IsEmpty());
}

TEST_F(Key, EndsAfterItsTime) {
  start();
  storeWith("a", "body");
  stop();
  limits.keyLife = std::chrono::seconds(-1);
  start();
  const StoreResult anew = storeWith("a", "other");
  EXPECT_FALSE(anew.replayed);
  EXPECT_THAT(anew.ids, ElementsAre(3, 4));
  EXPECT_LE(service().counters().keyRows, 2u) << "the old rows are gone";
}

TEST_F(Key, OfTheOldestRequestGoesFirstWhenThereAreTooMany) {
  limits.keyRows = 10;
  start();
  for (int i = 0; i < 20; ++i) storeWith("key" + std::to_string(i), "body");
  EXPECT_LE(service().counters().keyRows, 12u);
  EXPECT_TRUE(storeWith("key19", "body").replayed);
  EXPECT_FALSE(storeWith("key0", "body").replayed);
  start();
  EXPECT_TRUE(storeWith("key19", "body").replayed);
  EXPECT_LE(service().counters().keyRows, 12u);
}

// An age limit makes the library walk the queue before it writes, and the walk takes in audit
// records: they get the ids that were expected for the events.
TEST_F(Key, KnowsTheIdsThatEventsReallyGot) {
  useLimits(0, 1);
  start();
  storeWith("a", "body", 1);
  leaveAuditRecord("in between");
  const StoreResult first = storeWith("b", "body");
  EXPECT_THAT(first.ids, ElementsAre(3, 4));
  start();
  const StoreResult again = storeWith("b", "body");
  EXPECT_TRUE(again.replayed);
  EXPECT_EQ(again.ids, first.ids);
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2, 3, 4));
}

// Ends this process at the n-th change of a file from now on.
class SuddenEnd : public DiskWatcher {
 public:
  void armFor(int calls) { m_left = calls; }

  int before(const DiskRequest& request) override {
    const bool changes = request.call == DiskCall::kWrite || request.call == DiskCall::kSync;
    if (changes && m_left > 0 && --m_left == 0) ::kill(::getpid(), SIGKILL);
    return 0;
  }
  void after(const DiskRequest&) override {}

 private:
  std::atomic<int> m_left = 0;
};

constexpr int kRequests = 3;

struct Answer {
  int request;
  std::array<unsigned long, 2> ids;
};

class KeyDeath : public Key, public testing::WithParamInterface<const char*> {
 protected:
  KeyDeath() : Key(TempDir::inMemory()) { useDurability(GetParam()); }

  // What a server does that ends at a change of a file; with a number that is too large it ends by
  // itself.
  void serve(int output, int lastCall) {
    SuddenEnd end;
    watchDisk(&end);
    start();
    if (m_auditMeanwhile) leaveAuditRecord("in between");
    end.armFor(lastCall);
    for (int i = 0; i < kRequests; ++i) {
      const StoreResult result = storeWith("key" + std::to_string(i), "body");
      if (result.code != 0 || result.ids.size() != 2) ::_exit(2);
      const Answer answer{i, {result.ids[0], result.ids[1]}};
      tellParent(output, &answer, sizeof answer);
    }
    ::_exit(0);
  }

  // The answers that came before the end.
  std::vector<Answer> serveUntil(int lastCall, bool& ended) {
    ForkedProcess process([&](int output) { serve(output, lastCall); });
    std::vector<Answer> answers;
    Answer answer{};
    while (process.read(&answer, sizeof answer) == sizeof answer) answers.push_back(answer);
    const int status = process.wait();
    ended = WIFEXITED(status);
    EXPECT_TRUE(!ended || WEXITSTATUS(status) == 0);
    return answers;
  }

  void repeatAll(const std::vector<Answer>& answers) {
    for (int i = 0; i < kRequests; ++i) {
      const StoreResult again = storeWith("key" + std::to_string(i), "body");
      ASSERT_EQ(again.code, 0) << again.problem;
      ASSERT_EQ(again.ids.size(), 2u);
      if (static_cast<std::size_t>(i) < answers.size()) {
        EXPECT_TRUE(again.replayed);
        EXPECT_THAT(again.ids, testing::ElementsAreArray(answers[static_cast<std::size_t>(i)].ids));
      }
      expectStored(i, again.ids);
    }
    for (const auto& [server, count] : servers()) EXPECT_EQ(count, 1) << server;
    EXPECT_EQ(servers().size(), 2u * kRequests);
  }

  void expectStored(int request, const Ids& ids) {
    for (std::size_t i = 0; i < ids.size(); ++i) {
      const auto found = answerOf<EventApps::FindResult>(
          [&](auto done) { service().find(ids[i], 0, std::move(done)); });
      ASSERT_NE(found.event, nullptr) << ids[i];
      EXPECT_EQ(found.event->view().fields.back().second,
                "key" + std::to_string(request) + "-" + std::to_string(i));
    }
  }

  void forget() {
    stop();
    for (const auto& entry : std::filesystem::directory_iterator(home())) {
      if (entry.path().filename() != "OrbCentral.ini") std::filesystem::remove_all(entry.path());
    }
  }

  // Kills a server everywhere, and repeats what it was asked.
  void killEverywhere() {
    bool ended = false;
    int call = 0;
    while (!ended && !HasFailure()) {
      SCOPED_TRACE("ended at call " + std::to_string(++call));
      forget();
      start();
      stop();
      const std::vector<Answer> answers = serveUntil(call, ended);
      start();
      repeatAll(answers);
    }
    EXPECT_GT(call, 10) << "a few calls for each event";
  }

  bool m_auditMeanwhile = false;
};

TEST_P(KeyDeath, AnywhereStoresNothingTwiceAndLosesNothing) {
  killEverywhere();
}

TEST_P(KeyDeath, AnywhereFindsEventsThatGotOtherIds) {
  useLimits(0, 1);
  m_auditMeanwhile = true;
  killEverywhere();
}

TEST_P(KeyDeath, DoesNotBringBackWhatWasConsumed) {
  ForkedProcess process([&](int) {
    start();
    storeWith("a", "body");
    remove(2);
    remove(1);
    ::kill(::getpid(), SIGKILL);
  });
  EXPECT_TRUE(WIFSIGNALED(process.wait()));
  start();
  EXPECT_TRUE(storeWith("a", "body").replayed);
  EXPECT_THAT(idsAfter(0), IsEmpty());
}

TEST_P(KeyDeath, DoesNotBringBackWhatWasConsumedAfterAnotherRequestFailed) {
  useLimits(2, 0);
  for (const bool restarted : {false, true}) {
    forget();
    ForkedProcess process([&](int) {
      start();
      storeWith("a", "body");
      storeWith("b", "body");
      if (restarted) start();
      remove(2);
      remove(1);
      ::kill(::getpid(), SIGKILL);
    });
    EXPECT_TRUE(WIFSIGNALED(process.wait()));
    start();
    EXPECT_TRUE(storeWith("a", "body").replayed);
    EXPECT_THAT(idsAfter(0), IsEmpty());
    stop();
  }
}

INSTANTIATE_TEST_SUITE_P(EachDurability, KeyDeath, testing::Values("strict", "group"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
}  // namespace EventSystemTest
