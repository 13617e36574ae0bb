#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>

#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Access;
using EventSystemHost::HostError;

class File : public HostTest {
 protected:
  std::string refusal(Access access = Access::kReadWrite) {
    try {
      start(access);
    } catch (const HostError& problem) {
      return problem.what();
    }
    return "(started)";
  }

  static unsigned modeOf(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
  }

  std::map<std::string, std::string> contents() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home())) {
      // The index of the WAL is memory that processes share, not data.
      if (entry.path().extension() == ".db-shm") continue;
      files[entry.path().string()] = entry.is_directory() ? "/" : contentOf(entry.path());
    }
    return files;
  }
};

TEST_F(File, IsPrivateWhateverTheUmaskIs) {
  for (const mode_t mask : {0U, 0777U}) {
    const mode_t before = umask(mask);
    const std::string sub = "sub" + std::to_string(mask);
    writeFile("host.ini",
              "[database]\nfile = " + sub + "/deep/e.db\ndirectory = " + sub + "/tables\n");
    std::filesystem::permissions(home() / "host.ini", std::filesystem::perms::owner_all);
    startWithTablesIn(home() / sub / "tables");
    umask(before);
    const std::filesystem::path file = home() / sub / "deep" / "e.db";
    for (const char* suffix : {"", "-wal", "-shm", ".lock"}) {
      EXPECT_EQ(modeOf(file.string() + suffix), 0600U) << suffix << " " << mask;
    }
    EXPECT_EQ(modeOf(home() / sub / "tables" / "orbdb.ini"), 0600U);
    for (const auto& directory : {file.parent_path(), home() / sub, home() / sub / "tables"}) {
      EXPECT_EQ(modeOf(directory), 0700U) << directory;
    }
    stop();
  }
}

TEST_F(File, SaysWhatItIs) {
  start();
  EXPECT_EQ(sqlite(database(), "PRAGMA application_id"), std::to_string(0x45765351));
  EXPECT_EQ(sqlite(database(), "PRAGMA user_version"), "1");
  EXPECT_EQ(sqlite(database(), "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(sqlite(database(), "PRAGMA auto_vacuum"), "2");
}

TEST_F(File, OfANewerLayoutIsRefused) {
  start();
  stop();
  sqlite(database(), "PRAGMA user_version = 2");
  for (const Access access : {Access::kReadWrite, Access::kReadOnly}) {
    const std::string message = refusal(access);
    EXPECT_EQ(message, database().string() +
                           ": has layout 2, this program reads layout 1; use the release that "
                           "wrote the file, or a later one");
  }
  EXPECT_EQ(sqlite(database(), "PRAGMA user_version"), "2");
}

TEST_F(File, OfAnotherProgramIsRefusedAndNotTouched) {
  sqlite(database(),
         "PRAGMA application_id = 77; CREATE TABLE theirs (x); INSERT INTO theirs "
         "VALUES (1)");
  const std::string before = contentOf(database());
  for (const Access access : {Access::kReadWrite, Access::kReadOnly}) {
    const std::string message = refusal(access);
    EXPECT_NE(message.find(database().string() + ": is a SQLite database of another program "
                                                 "(application id 77"),
              std::string::npos)
        << message;
  }
  EXPECT_EQ(contentOf(database()), before);
}

TEST_F(File, WithTablesButNoMarkIsRefused) {
  sqlite(database(), "CREATE TABLE theirs (x)");
  EXPECT_NE(refusal().find("another program (application id 0"), std::string::npos);
}

TEST_F(File, ThatIsNoDatabaseIsRefused) {
  writeFile("events.db", std::string(5000, 'x'));
  const std::string said = refusal();
  EXPECT_NE(said.find(database().string() + ": cannot be opened: file is not a database"),
            std::string::npos);
  EXPECT_NE(said.find("with eventctl restore"), std::string::npos) << said;
  EXPECT_EQ(contentOf(database()), std::string(5000, 'x'));
}

TEST_F(File, WithoutContentIsTakenAsNew) {
  writeFile("events.db", "");
  EXPECT_EQ(refusal(), "(started)");
  EXPECT_EQ(sqlite(database(), "PRAGMA user_version"), "1");
}

TEST_F(File, ThatDoesNotExistCannotBeRead) {
  const std::string message = refusal(Access::kReadOnly);
  EXPECT_NE(message.find(database().string() + ": there is no database"), std::string::npos)
      << message;
  EXPECT_TRUE(std::filesystem::is_empty(home()));
}

TEST_F(File, WithASecondNameIsRefused) {
  startWithTables();
  stop();
  std::filesystem::create_hard_link(database(), home() / "second.db");
  for (const Access access : {Access::kReadWrite, Access::kReadOnly}) {
    EXPECT_EQ(refusal(access).rfind(database().string() + ": has 2 hard links; ", 0), 0U)
        << refusal(access);
  }
  std::filesystem::remove(home() / "second.db");
  EXPECT_EQ(refusal(), "(started)");
}

TEST_F(File, ThatIsAPipeIsRefusedAndNotWaitedFor) {
  ASSERT_EQ(mkfifo(database().c_str(), 0600), 0);
  for (const Access access : {Access::kReadWrite, Access::kReadOnly}) {
    EXPECT_EQ(refusal(access).rfind(database().string() + ": is not a regular file; ", 0), 0U)
        << refusal(access);
  }
}

TEST_F(File, ThatIsALinkToNowhereIsRefused) {
  std::filesystem::create_symlink(home() / "nowhere.db", database());
  EXPECT_EQ(refusal().rfind(database().string() + ": is a symbolic link to ", 0), 0U) << refusal();
}

TEST_F(File, IsNotChangedByReading) {
  startWithTables();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  stop();
  const auto before = contents();
  start(Access::kReadOnly);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().open(), 0);
  stop();
  EXPECT_EQ(contents(), before);
}

TEST_F(File, OpenForReadingRefusesEveryWrite) {
  startWithTables();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  EventSystemHost::HostOptions options;
  options.home = home();
  options.access = Access::kReadOnly;
  options.logLevel = EventSystemHost::LogLevel::kOff;
  stop();
  EventSystemHost::Host reader(options);
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  EXPECT_GT(open("events").addRecord(eventRecord(2).c_str(), nullptr, 0), 0);
  EXPECT_GT(open("events").updateRecord("1", "type=6"), 0);
  EXPECT_GT(open("events").deleteRecord("1"), 0);
  EXPECT_GT(orb.CheckAddTable("events", definitions().c_str()), 0);
  EXPECT_GT(orb.insertRecordsFromIni("eventproperties", definitions().c_str()), 0);
  EXPECT_EQ(reader.waitDurable(), 0);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
}

TEST_F(File, IsSmallAgainWhenTheHostEnds) {
  startWithTables();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  EXPECT_GT(std::filesystem::file_size(database().string() + "-wal"), 0U);
  stop();
  EXPECT_EQ(std::filesystem::file_size(database().string() + "-wal"), 0U);
}

}  // namespace
}  // namespace EventSystemTest
