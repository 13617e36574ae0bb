#include <gtest/gtest.h>

#include <fstream>

#include "tests/cluster/chaos/Journal.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

JournalEntry entryOf(const std::string& text) {
  JournalEntry entry{JournalEntry::kRead};
  entry.begin = JournalEntry::Time(std::chrono::nanoseconds(123456789012345));
  entry.end = JournalEntry::Time(std::chrono::nanoseconds(123456789012999));
  entry.dsid = 7;
  entry.id = 18446744073709551615u;
  entry.afterId = 5;
  entry.text = text;
  return entry;
}

TEST(ChaosJournal, KeepsWhatItIsGiven) {
  for (const char* const text : {"epoch1.host0.life1.n1", ""}) {
    const auto read = parseLine(toLine(entryOf(text)));
    ASSERT_TRUE(read);
    EXPECT_EQ(toLine(*read), toLine(entryOf(text)));
    EXPECT_EQ(read->id, 18446744073709551615u);
    EXPECT_EQ(read->begin, entryOf("").begin);
    EXPECT_EQ(read->text, text);
  }
}

TEST(ChaosJournal, KnowsALineThatWasNotFinished) {
  const std::string line = toLine(entryOf("text"));
  for (std::size_t size = 0; size < line.size(); ++size) {
    EXPECT_FALSE(parseLine(line.substr(0, size))) << size;
  }
}

TEST(ChaosJournal, TellsWhatWasAddedByOneLifeAfterTheOther) {
  const TempDir directory;
  const auto file = directory.path() / "journal";
  JournalReader reader(file);
  EXPECT_TRUE(reader.more().empty());
  {
    JournalWriter first(file);
    first.write(entryOf("one"));
    EXPECT_EQ(reader.more().size(), 1u);
    first.write(entryOf("two"));
  }
  std::ofstream(file, std::ios::app) << "W 12 13";
  EXPECT_EQ(reader.more().size(), 1u);
  JournalWriter second(file);
  second.write(entryOf("three"));
  const auto entries = reader.more();
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].text, "three");
  EXPECT_TRUE(reader.more().empty());
}

}  // namespace
}  // namespace EventSystemTest
