#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>

#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Access;
using EventSystemHost::HostError;

constexpr uid_t kSomebody = 65534;

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

// A file that root would empty or write to, were a link to it followed.
class LinkedFile : public File {
 protected:
  void linkTo(const std::filesystem::path& link) const {
    writeFile("precious", "precious");
    std::filesystem::remove(link);
    std::filesystem::create_symlink(home() / "precious", link);
  }
  void expectUntouched() const { EXPECT_EQ(contentOf(home() / "precious"), "precious"); }
};

TEST_F(LinkedFile, InThePlaceOfTheLockIsNotFollowed) {
  linkTo(home() / "events.db.lock");
  EXPECT_EQ(refusal(), (home() / "events.db.lock").string() +
                           ": is a symbolic link, which is not followed here; remove it");
  expectUntouched();
}

TEST_F(LinkedFile, InThePlaceOfANewFileIsNotFollowed) {
  linkTo(home() / "orbdb.ini.new");
  EXPECT_EQ(refusal(), "(started)");
  expectUntouched();
  EXPECT_TRUE(std::filesystem::is_regular_file(home() / "orbdb.ini"));
}

TEST_F(LinkedFile, InThePlaceOfTheLogIsFollowedWhereItIsOnesOwn) {
  std::filesystem::create_directory(home() / "log");
  linkTo(home() / "log" / "eventsystem.log");
  EXPECT_EQ(refusal(), "(started)");
  if (geteuid() != 0) GTEST_SKIP() << "only root can make a link of somebody else's";
  stop();
  writeFile("precious", "precious");
  ASSERT_EQ(lchown((home() / "log" / "eventsystem.log").c_str(), kSomebody, kSomebody), 0);
  EXPECT_NE(refusal().find("is a symbolic link of the user with the number 65534"),
            std::string::npos);
  expectUntouched();
}

TEST_F(File, OfSomebodyElseIsNotUsedByRoot) {
  if (geteuid() != 0) GTEST_SKIP() << "for root only";
  start();
  stop();
  for (const auto& file : {home(), database()}) {
    ASSERT_EQ(chown(file.c_str(), kSomebody, 0), 0);
    EXPECT_EQ(refusal().rfind(file.string() + ": belongs to the user with the number 65534: ", 0),
              0U)
        << refusal();
    ASSERT_EQ(chown(file.c_str(), 0, 0), 0);
  }
  EXPECT_EQ(refusal(), "(started)");
}

TEST_F(File, ThatOthersMayWriteToIsNotUsedByRoot) {
  if (geteuid() != 0) GTEST_SKIP() << "for root only";
  for (const mode_t mode : {0707U, 01777U}) {
    ASSERT_EQ(chmod(home().c_str(), mode), 0);
    EXPECT_EQ(refusal().rfind(home().string() + ": others than root may write to it: ", 0), 0U);
  }
  ASSERT_EQ(chmod(home().c_str(), 0770), 0);
  ASSERT_EQ(chown(home().c_str(), 0, kSomebody), 0);
  EXPECT_EQ(refusal().rfind(home().string() + ": others than root may write to it: ", 0), 0U);
  ASSERT_EQ(chown(home().c_str(), 0, 0), 0);
  EXPECT_EQ(refusal(), "(started)");
}

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
