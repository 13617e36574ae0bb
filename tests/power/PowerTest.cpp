// Power losses at every moment of a short day, and proof that the checks see a loss.

#include <gtest/gtest.h>

#include "tests/power/Days.h"
#include "tests/power/PowerTrial.h"

namespace EventSystemTest {
namespace {

void shortOne(Service& service, DiskLog&) {
  shortDay(service);
}

// The first thing that is wrong, at whichever moment; empty when nothing is.
std::string loseEverywhere(PowerTrial& trial, std::initializer_list<std::uint64_t> damages) {
  for (std::size_t point = 0; point < trial.points(); ++point) {
    for (const std::uint64_t damage : damages) {
      const std::string problem = trial.lose(point, damage);
      if (problem.empty()) continue;
      return "--point " + std::to_string(point) + " --damage " + std::to_string(damage) + ": " +
             problem;
    }
  }
  return "";
}

std::size_t numberOf(PowerTrial& trial, const std::string& name) {
  std::size_t number = 0;
  for (const DiskEntry& entry : trial.log()) {
    if (entry.path.filename() == name) number = entry.file;
  }
  return number;
}

class PowerLoss : public testing::TestWithParam<const char*> {};

TEST_P(PowerLoss, KeepsWhatWasPromised) {
  PowerTrial trial(GetParam(), shortOne);
  EXPECT_EQ(loseEverywhere(trial, {kNothingUnflushed, kInOrderAndTheNewestTorn, 3}), "");
  EXPECT_GT(trial.figures().points, 200u);
  EXPECT_GT(trial.figures().promised, 1000u);
}

TEST_P(PowerLoss, KeepsItOverASecondLoss) {
  PowerTrial trial(GetParam(), shortOne);
  for (std::size_t point = 7; point < trial.points(); point += 17) {
    EXPECT_EQ(trial.loseTwice(point, 4 + point, point), "")
        << "--point " << point << " --damage " << 4 + point << " --second " << point;
  }
}

TEST_P(PowerLoss, DuringTheCopyOfTheWalKeepsWhatWasPromised) {
  PowerTrial trial(GetParam(), [](Service& service, DiskLog& log) {
    longDay(service, [&log] { log.waitUntilCopied(1000); });
  });
  const std::size_t database = numberOf(trial, "events.db");
  const std::size_t wal = numberOf(trial, "events.db-wal");
  int copied = 0;
  int startedOver = 0;
  int givenBack = 0;
  for (std::size_t point = 0; point < trial.points() - 1; ++point) {
    const DiskEntry& entry = trial.log()[point];
    const bool written = entry.kind == DiskEntry::Kind::kWritten;
    if (entry.file == wal && written && entry.offset == 0) ++startedOver;
    if (entry.file != database) continue;
    if (entry.kind == DiskEntry::Kind::kTruncated) ++givenBack;
    if (++copied % 5 != 0) continue;
    EXPECT_EQ(trial.lose(point, 3 + point), "") << "--day long --point " << point;
  }
  EXPECT_GT(copied, 100);
  EXPECT_GT(startedOver, 2) << "while the service ran";
  EXPECT_GT(givenBack, 0) << "pages of the file";
}

INSTANTIATE_TEST_SUITE_P(EachDurability, PowerLoss, testing::Values("strict", "group", "relaxed"),
                         [](const auto& each) { return std::string(each.param); });

// A disk that says it has flushed and has not.
void forgetFlushes(PowerTrial& trial, DiskEntry::Kind kind, std::size_t every) {
  std::size_t count = 0;
  for (DiskEntry& entry : trial.log()) {
    if (entry.kind == kind && ++count % every == 0) entry.covered = 0;
  }
}

TEST(PowerLossChecks, SeeAFlushThatWasLeftOut) {
  PowerTrial trial("strict", shortOne);
  forgetFlushes(trial, DiskEntry::Kind::kFlushed, 20);
  EXPECT_NE(loseEverywhere(trial, {kNothingUnflushed}), "");
}

TEST(PowerLossChecks, SeeThatDirectoriesWereNotFlushed) {
  PowerTrial trial("strict", shortOne);
  for (DiskEntry& entry : trial.log()) {
    if (entry.kind != DiskEntry::Kind::kDirectoryFlushed) continue;
    entry.covered = 0;
    entry.names.clear();
  }
  EXPECT_NE(loseEverywhere(trial, {kNothingUnflushed}), "");
}

TEST(PowerLossChecks, SeeCallsThatReturnBeforeTheirFlush) {
  for (const char* durability : {"group", "relaxed"}) {
    PowerTrial trial(durability, shortOne);
    trial.setPromise(Promise::kEachCall);
    EXPECT_NE(loseEverywhere(trial, {kNothingUnflushed}), "") << durability;
  }
}

TEST(PowerLossChecks, SeeAnEventThatDiffersInOneCharacter) {
  PowerTrial trial("strict", shortOne);
  for (DiskEntry& entry : trial.log()) {
    const std::size_t at = entry.data.find("no. 9 ");
    if (at != std::string::npos) entry.data[at + 4] = '8';
  }
  EXPECT_NE(loseEverywhere(trial, {kEverything}), "");
}

}  // namespace
}  // namespace EventSystemTest
