#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "EventSystem/platform/HostConfig.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

class Lifecycle : public HostTest {};

TEST_F(Lifecycle, WithoutAHostThereIsNoDatabaseAndNothingCrashes) {
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  const auto check = [&] {
    EXPECT_EQ(orb.GetTable("events"), nullptr);
    EXPECT_NE(orb.open(), 0);
    EXPECT_NE(orb.CheckAddTable("events", definitions().c_str()), 0);
    EXPECT_NE(orb.insertRecordsFromIni("eventproperties", definitions().c_str()), 0);
    EXPECT_EQ(QMDSIDValidate(1), 0);
  };
  check();
  start();
  EXPECT_EQ(orb.open(), 0);
  stop();
  check();
}

TEST_F(Lifecycle, ANewHostWorksAfterTheOldOne) {
  startWithTables();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  start();
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
  ASSERT_EQ(open("events").addRecord(eventRecord(2).c_str(), nullptr, 0), 0);
  start(EventSystemHost::Access::kReadOnly);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1, 2}));
}

TEST_F(Lifecycle, OneHostLivesAtATime) {
  start();
  EventSystemHost::HostOptions options;
  options.home = home() / "other";
  EXPECT_THROW(EventSystemHost::Host second(options), EventSystemHost::HostError);
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().open(), 0) << "the first one is not disturbed";
}

TEST_F(Lifecycle, AHostThatCouldNotStartLeavesNothingBehind) {
  writeFile("orbdb.ini", "[events]\ncolumn.1 = id number key\n");
  EXPECT_THROW(start(), EventSystemHost::HostError);
  EXPECT_NE(OrbDB::COrbDatabase::Instance().open(), 0);
  EXPECT_STREQ(configManager.databaseConfigDirectory, "");
  std::filesystem::remove(home() / "orbdb.ini");
  start();
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().open(), 0);
}

TEST_F(Lifecycle, DefaultHomeIsInTheStateDirectory) {
  const char* const state = std::getenv("XDG_STATE_HOME");
  const std::string before = state == nullptr ? "" : state;
  setenv("XDG_STATE_HOME", "/var/state", 1);
  EXPECT_EQ(EventSystemHost::defaultHome(), "/var/state/eventsystem");
  unsetenv("XDG_STATE_HOME");
  const char* const home = std::getenv("HOME");
  const std::string homeBefore = home == nullptr ? "" : home;
  setenv("HOME", "/home/someone", 1);
  EXPECT_EQ(EventSystemHost::defaultHome(), "/home/someone/.local/state/eventsystem");
  unsetenv("HOME");
  EXPECT_THROW(EventSystemHost::defaultHome(), EventSystemHost::HostError);
  if (!homeBefore.empty()) setenv("HOME", homeBefore.c_str(), 1);
  if (!before.empty()) setenv("XDG_STATE_HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace EventSystemTest
