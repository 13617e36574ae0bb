// A database that is damaged under a running service: what cannot be read is not answered as what
// is not there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <numeric>

#include "EventSystem/ResultCode.h"
#include "tests/eventd/queue/Inbox.h"
#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;

constexpr std::size_t kEvents = 300;
constexpr std::uintmax_t kPageBytes = 4096;

class DamageUnderService : public ServiceTest {
 protected:
  // All of it is in the database file, and little of it in anybody's memory.
  void startWithEvents() {
    start();
    addDataSelection(5);
    store(manyEvents(kEvents), 5);
    store(manyEvents(kEvents));
    start();
  }

  void cutDatabase() const { std::filesystem::resize_file(database(), 2 * kPageBytes); }

  // Some of the last quarter: the global queue was filled last.
  void overwritePagesOfEvents() const {
    constexpr std::uintmax_t kPages = 4;
    const auto pages = std::filesystem::file_size(database()) / kPageBytes;
    ASSERT_GT(pages, 4 * kPages);
    std::fstream file(database(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(pages * 3 / 4 * kPageBytes));
    file << std::string(kPages * kPageBytes, '\xff');
  }

  // What `ask` is answered by a service whose database was cut a moment before.
  template <class Ask>
  auto askedWhenCut(const Ask& ask) {
    startWithEvents();
    cutDatabase();
    const auto answer = ask();
    stop();
    for (const auto& entry : std::filesystem::directory_iterator(home())) {
      std::filesystem::remove_all(entry.path());
    }
    return answer;
  }
};

template <class Answer>
void expectDamage(const Answer& answer) {
  EXPECT_EQ(answer.code, EventSystem::kStoreFailure);
  EXPECT_THAT(answer.problem, HasSubstr("is damaged"));
}

TEST_F(DamageUnderService, IsNoEmptyQueue) {
  for (const unsigned int dsid : {0U, 5U}) {
    const ReadResult page = askedWhenCut([&] { return read({dsid, 0, 1000, {}, {}}); });
    expectDamage(page);
    EXPECT_TRUE(page.events.empty());
  }
}

TEST_F(DamageUnderService, IsNoEventThatIsNotThere) {
  expectDamage(askedWhenCut([&] {
    return answerOf<EventApps::FindResult>(
        [&](auto done) { service().find(7, 0, std::move(done)); });
  }));
  expectDamage(askedWhenCut([&] { return remove(7); }));
}

TEST_F(DamageUnderService, IsNothingToDelete) {
  expectDamage(askedWhenCut([&] { return removeUpTo(std::nullopt, true); }));
  expectDamage(askedWhenCut([&] { return removeUpTo(kEvents, false, 5); }));
}

TEST_F(DamageUnderService, IsNotCounted) {
  const auto figures = askedWhenCut([&] {
    return answerOf<EventApps::FiguresPtr>([&](auto done) { service().figures(std::move(done)); });
  });
  EXPECT_THAT(figures->problem, HasSubstr("is damaged"));
  EXPECT_TRUE(figures->queues.empty());
}

TEST_F(DamageUnderService, EndsAReadingBeforeTheFirstEventThatIsLost) {
  startWithEvents();
  overwritePagesOfEvents();
  Ids seen;
  ReadResult page = read({0, 0, 20, {}, {}});
  for (; page.code == 0 && !page.events.empty(); page = read({0, page.last, 20, {}, {}})) {
    for (const auto& event : page.events) seen.push_back(event->id());
  }
  expectDamage(page);
  ASSERT_FALSE(seen.empty());
  Ids all(seen.size());
  std::iota(all.begin(), all.end(), 1UL);
  EXPECT_EQ(seen, all) << "nothing is left out";
}

TEST_F(DamageUnderService, EndsAStreamBeforeTheFirstEventThatIsLost) {
  startWithEvents();
  overwritePagesOfEvents();
  Inbox inbox;
  const auto subscription = inbox.subscribe(service(), 0);
  ASSERT_TRUE(eventually([&] { return !inbox.why().empty(); }));
  EXPECT_THAT(inbox.why(), HasSubstr("is damaged"));
  Ids all(inbox.ids().size());
  std::iota(all.begin(), all.end(), 1UL);
  EXPECT_EQ(inbox.ids(), all);
}

}  // namespace
}  // namespace EventSystemTest
