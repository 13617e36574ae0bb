#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <string>

#include "EventSystem/platform/HostConfig.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Durability;
using EventSystemHost::HostConfiguration;
using EventSystemHost::HostError;
using EventSystemHost::LogLevel;

class Configuration : public HostTest {
 protected:
  // The message with which the host refuses to start.
  std::string refusal(const std::string& hostIni, const std::string& limitsIni = "") {
    writeFile("host.ini", hostIni);
    writeFile("OrbCentral.ini", limitsIni);
    try {
      start();
    } catch (const HostError& problem) {
      return problem.what();
    }
    return "(started)";
  }

  std::string iniValue(const std::string& path, const char* section, const char* entry) {
    std::array<char, 4096> value{};
    InifileGetValueA(section, entry, value.data(), value.size(), "(default)", path.c_str());
    return value.data();
  }
};

TEST_F(Configuration, NeedsNoFile) {
  const HostConfiguration& configuration = start().configuration();
  std::array<char, 256> name{};
  gethostname(name.data(), name.size() - 1);
  EXPECT_EQ(configuration.home, home());
  EXPECT_EQ(configuration.serverName, name.data());
  EXPECT_FALSE(configuration.clusterMode);
  EXPECT_EQ(configuration.clusterQueue, "events");
  EXPECT_EQ(configuration.clusterMember, configuration.serverName);
  EXPECT_EQ(configuration.auditDirectory, home() / "audit");
  EXPECT_EQ(configuration.databaseFile, home() / "events.db");
  EXPECT_EQ(configuration.databaseDirectory, home());
  EXPECT_EQ(configuration.durability, Durability::kStrict);
  EXPECT_EQ(configuration.logLevel, LogLevel::kWarning);
  EXPECT_EQ(configuration.logFile, home() / "log" / "eventsystem.log");
  EXPECT_EQ(configuration.logMaxBytes, 10U << 20);
  EXPECT_EQ(configuration.logMaxFiles, 5U);
  EXPECT_EQ(configuration.ageLimitDays, 0);
  EXPECT_EQ(configuration.countLimit, 50000);
}

TEST_F(Configuration, RefusesAPipeInPlaceOfAnIniFile) {
  for (const char* name : {"host.ini", "OrbCentral.ini", "orbdb.ini"}) {
    ASSERT_EQ(mkfifo((home() / name).c_str(), 0600), 0);
    try {
      start();
      ADD_FAILURE() << name;
    } catch (const HostError& problem) {
      EXPECT_EQ(problem.what(), (home() / name).string() +
                                    ": is not a regular file; an ini file is expected there");
    }
    std::filesystem::remove(home() / name);
  }
}

TEST_F(Configuration, RefusesALogInThePlaceOfAnotherFile) {
  for (const char* name : {"events.db", "events.db-wal", "events.db-shm", "events.db-journal",
                           "events.db.lock", "events.db.reserve", "orbdb.ini", "host.ini",
                           "OrbCentral.ini", "audit/audit.db", "sub/../events.db"}) {
    const std::string message = refusal(std::string("[log]\nfile = ") + name + "\n");
    EXPECT_EQ(message.rfind((home() / "host.ini").string() + ": [log] file: ", 0), 0U)
        << name << ": " << message;
    EXPECT_NE(message.find(" and the log ([log] file); give each a file of its own"),
              std::string::npos)
        << message;
  }
}

TEST_F(Configuration, SaysWhichTwoUsesAFileWouldHave) {
  EXPECT_EQ(refusal("[log]\nfile = events.db\n"),
            (home() / "host.ini").string() + ": [log] file: " + (home() / "events.db").string() +
                " would be both the database ([database] file) and the log ([log] file); give "
                "each a file of its own");
}

TEST_F(Configuration, RefusesTwoUsesOfOneFile) {
  const auto refused = [&](const std::string& hostIni) {
    const std::string message = refusal(hostIni);
    EXPECT_NE(message.find(" would be both "), std::string::npos) << hostIni << message;
  };
  refused("[database]\nfile = audit/audit.db\n");
  refused("[database]\nfile = orbdb.ini\n");
  refused("[database]\nfile = host.ini\n");
  refused("[database]\nfile = OrbCentral.ini\n");
  refused("[log]\nfile = a.db\n[database]\nfile = a.1.db\n");
  std::filesystem::create_symlink(home() / "events.db", home() / "l.log");
  writeFile("events.db", "");
  refused("[log]\nfile = l.log\n");
  EXPECT_EQ(refusal("[log]\nfile = a.db\nmax_files = 1\n[database]\nfile = a.1.db\n"), "(started)")
      << "without rotation there is no older log";
}

TEST_F(Configuration, TakesEveryEntry) {
  writeFile("host.ini",
            "; a comment\n[server]\nname = one\n[cluster]\ncluster_mode = 0\nqueue = q\n"
            "member = m\nendpoints = a:1, b:2\ndeadline_ms = 500\nca_file = ca.pem\n"
            "certificate_file = c.pem\nkey_file = k.pem\nserver_name = etcd\nuser = u\n"
            "password = p\nlease_seconds = 90\n[audit]\ndirectory = /somewhere\n[database]\nfile = "
            "data/e.db\n"
            "directory = tables\ndurability = group\n[log]\nlevel = error\nfile = l.log\n"
            "max_bytes = 2048\nmax_files = 2\n");
  writeFile("OrbCentral.ini", "[events]\nage_limit_days = 30\ncount_limit = 100\n");
  const HostConfiguration& configuration = start().configuration();
  EXPECT_EQ(configuration.serverName, "one");
  EXPECT_FALSE(configuration.clusterMode);
  EXPECT_EQ(configuration.clusterQueue, "q");
  EXPECT_EQ(configuration.clusterMember, "m");
  EXPECT_EQ(configuration.cluster.endpoints, (std::vector<std::string>{"a:1", "b:2"}));
  EXPECT_EQ(configuration.cluster.deadline, std::chrono::milliseconds(500));
  EXPECT_EQ(configuration.cluster.trustedCertificatesFile, home() / "ca.pem");
  EXPECT_EQ(configuration.cluster.certificateFile, home() / "c.pem");
  EXPECT_EQ(configuration.cluster.keyFile, home() / "k.pem");
  EXPECT_EQ(configuration.cluster.serverName, "etcd");
  EXPECT_EQ(configuration.cluster.user, "u");
  EXPECT_EQ(configuration.cluster.password, "p");
  EXPECT_EQ(configuration.cluster.leaseTtl, std::chrono::seconds(90));
  EXPECT_EQ(configuration.auditDirectory, "/somewhere");
  EXPECT_EQ(configuration.databaseFile, home() / "data" / "e.db");
  EXPECT_EQ(configuration.databaseDirectory, home() / "tables");
  EXPECT_EQ(configuration.durability, Durability::kGroup);
  EXPECT_EQ(configuration.logLevel, LogLevel::kError);
  EXPECT_EQ(configuration.logFile, home() / "l.log");
  EXPECT_EQ(configuration.logMaxBytes, 2048U);
  EXPECT_EQ(configuration.logMaxFiles, 2U);
  EXPECT_EQ(configuration.ageLimitDays, 30);
  EXPECT_EQ(configuration.countLimit, 100);
  EXPECT_TRUE(std::filesystem::exists(home() / "data" / "e.db"));
  EXPECT_TRUE(std::filesystem::exists(home() / "tables" / "orbdb.ini"));
}

TEST_F(Configuration, OptionsGoBeforeTheLogSection) {
  writeFile("host.ini", "[log]\nlevel = error\nfile = l.log\n");
  EventSystemHost::HostOptions options;
  options.home = home();
  options.logLevel = LogLevel::kTrace;
  options.logFile = home() / "other.log";
  const EventSystemHost::Host own(options);
  EXPECT_EQ(own.configuration().logLevel, LogLevel::kTrace);
  EXPECT_TRUE(std::filesystem::exists(home() / "other.log"));
  EXPECT_FALSE(std::filesystem::exists(home() / "l.log"));
}

TEST_F(Configuration, TakesTheDurabilityThatTheProgramPrefersUnlessTheFileSaysAnother) {
  const auto durability = [this] {
    EventSystemHost::HostOptions options;
    options.home = home();
    options.durability = Durability::kGroup;
    return EventSystemHost::Host(options).configuration().durability;
  };
  EXPECT_EQ(durability(), Durability::kGroup);
  writeFile("host.ini", "[database]\ndurability = strict\n");
  EXPECT_EQ(durability(), Durability::kStrict);
}

TEST_F(Configuration, RefusesWhatItDoesNotKnow) {
  const std::string file = (home() / "host.ini").string();
  EXPECT_EQ(refusal("[database]\ndurabilty = group\n"),
            file +
                ": [database] durabilty = \"group\": unknown entry; the entries of this section "
                "are file directory durability");
  EXPECT_EQ(refusal("[databases]\nfile = x\n"),
            file +
                ": [databases] file = \"x\": unknown section; the sections are [server] "
                "[cluster] [audit] [database] [log]");
  EXPECT_NE(refusal("stray = 1\n").find("[] stray = \"1\": unknown section"), std::string::npos);
  EXPECT_NE(refusal("[log]\nno value\n").find("[log] no value"), std::string::npos);
}

TEST_F(Configuration, RefusesBadValues) {
  const std::string file = (home() / "host.ini").string();
  EXPECT_EQ(refusal("[database]\ndurability = fast\n"),
            file + ": [database] durability = \"fast\": allowed is one of strict group relaxed");
  EXPECT_EQ(refusal("[log]\nmax_files = many\n"),
            file + ": [log] max_files = \"many\": allowed is a number from 1 to 1000");
  EXPECT_NE(refusal("[log]\nmax_files = 0\n").find("a number from 1"), std::string::npos);
  EXPECT_NE(refusal("[log]\nmax_files = 3x\n").find("a number from 1"), std::string::npos);
  EXPECT_NE(refusal("[log]\nmax_files =\n").find("a number from 1"), std::string::npos);
  EXPECT_NE(refusal("[log]\nlevel = INFO\n").find("off error warning info trace"),
            std::string::npos);
  EXPECT_NE(refusal("[cluster]\ncluster_mode = 2\n").find("from 0 to 1"), std::string::npos);
  EXPECT_NE(refusal("[cluster]\nqueue =\n").find("a name of 1 to 128"), std::string::npos);
  EXPECT_NE(refusal("[cluster]\nmember = a/b\n").find("a name of 1 to 128"), std::string::npos);
  EXPECT_NE(refusal("[cluster]\nendpoints = host\n").find("host:port"), std::string::npos);
  EXPECT_NE(refusal("[cluster]\nendpoints =\n").find("host:port"), std::string::npos);
  EXPECT_NE(refusal("[log]\nlevel = info\nlevel = off\n").find("stands there twice"),
            std::string::npos);
}

TEST_F(Configuration, RefusesBadLimits) {
  const std::string file = (home() / "OrbCentral.ini").string();
  EXPECT_EQ(refusal("", "[events]\ncount_limit = -1\n"),
            file + ": [events] count_limit = \"-1\": allowed is a number from 0 to 2147483647");
  EXPECT_NE(refusal("", "[events]\nage_limit_days = 24856\n").find("from 0 to 24855"),
            std::string::npos);
}

TEST_F(Configuration, FillsTheLibrarysView) {
  start();
  stop();
  writeFile("host.ini", "[server]\nname = one\n[cluster]\nqueue = q\ncluster_mode = 1\n");
  EventSystemHost::HostOptions options;
  options.home = home();
  options.access = EventSystemHost::Access::kReadOnly;  // needs no cluster service
  auto host = std::make_unique<EventSystemHost::Host>(options);
  configManager.lock();
  EXPECT_EQ(configManager.clusterMode, 1);
  EXPECT_STREQ(configManager.databaseConfigDirectory, home().c_str());
  EXPECT_STREQ(configManager.clusterQueue, "q");
  EXPECT_STREQ(configManager.clusterMember, "one");
  configManager.unlock();
  host.reset();
  EXPECT_STREQ(configManager.databaseConfigDirectory, "");
  EXPECT_EQ(configManager.clusterMode, 0);
}

TEST_F(Configuration, AnswersTheAuditDirectoryWithoutAFile) {
  start();
  const char* section = _kvr_config_section_string_table_[kSectionAudit];
  const char* entry = _kvr_config_entry_string_table_[kEntryAuditDirectory];
  EXPECT_EQ(iniValue(configManager.configFile, section, entry), (home() / "audit").string());
}

TEST_F(Configuration, AnswersTheAuditDirectoryOfTheFile) {
  writeFile("host.ini", "[audit]\ndirectory = elsewhere\n");
  start();
  ASSERT_EQ(InifileLoadA(configManager.configFile), 0);
  EXPECT_EQ(iniValue(configManager.configFile, "audit", "directory"),
            (home() / "elsewhere").string());
}

TEST_F(Configuration, LocatesOnlyTheLimitsFile) {
  std::array<char, 4096> path{};
  EXPECT_EQ(QMConfigLocate("OrbCentral", path.data(), path.size()), 0) << "no host";
  start();
  EXPECT_NE(QMConfigLocate("OrbCentral", path.data(), path.size()), 0);
  EXPECT_EQ(std::string(path.data()), (home() / "OrbCentral.ini").string());
  const auto length = static_cast<unsigned int>(std::strlen(path.data()));
  EXPECT_EQ(QMConfigLocate("OrbCentral", path.data(), length), 0);
  EXPECT_NE(QMConfigLocate("OrbCentral", path.data(), length + 1), 0);
  EXPECT_EQ(QMConfigLocate("Orb", path.data(), path.size()), 0);
  EXPECT_EQ(QMConfigLocate(nullptr, path.data(), path.size()), 0);
  EXPECT_EQ(QMConfigLocate("OrbCentral", nullptr, 10), 0);
}

TEST_F(Configuration, ReadsAnIniFileAfreshAfterItsRelease) {
  start();
  const std::string path = (home() / "OrbCentral.ini").string();
  int value = -1;
  const auto read = [&] {
    EXPECT_EQ(InifileReleaseA(path.c_str()), 0);
    EXPECT_EQ(InifileLoadA(path.c_str()), 0);
    EXPECT_EQ(InifileGetIntegerA("events", "count_limit", &value, 50000, path.c_str()), 0);
    return value;
  };
  EXPECT_EQ(read(), 50000) << "no file is an empty one";
  writeFile("OrbCentral.ini", "[events]\ncount_limit = 7\n");
  EXPECT_EQ(InifileGetIntegerA("events", "count_limit", &value, 50000, path.c_str()), 0);
  EXPECT_EQ(value, 50000) << "what is loaded stays";
  EXPECT_EQ(read(), 7);
  writeFile("OrbCentral.ini", "[events]\ncount_limit = -7\n");
  EXPECT_EQ(read(), -7);
}

TEST_F(Configuration, GivesTheDefaultForWhatIsNoNumber) {
  start();
  writeFile("other.ini", "[events]\ncount_limit = lots\n");
  const std::string path = (home() / "other.ini").string();
  int value = -1;
  ASSERT_EQ(InifileLoadA(path.c_str()), 0);
  EXPECT_NE(InifileGetIntegerA("events", "count_limit", &value, 12, path.c_str()), 0);
  EXPECT_EQ(value, 12);
  EXPECT_NE(log().find("count_limit = \"lots\": not a 32-bit number"), std::string::npos) << log();
}

TEST_F(Configuration, CutsAValueToItsBuffer) {
  start();
  writeFile("other.ini", "[a]\nb = abcdef\n");
  const std::string path = (home() / "other.ini").string();
  ASSERT_EQ(InifileLoadA(path.c_str()), 0);
  std::array<char, 8> value{};
  EXPECT_EQ(InifileGetValueA("a", "b", value.data(), 4, "", path.c_str()), 0);
  EXPECT_STREQ(value.data(), "abc");
  EXPECT_EQ(iniValue(path, "a", "c"), "(default)");
  EXPECT_EQ(InifileReleaseA(path.c_str()), 0);
  EXPECT_EQ(iniValue(path, "a", "b"), "(default)");
}

}  // namespace
}  // namespace EventSystemTest
