// What eventd answers when the disk below its queues fails.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/eventd/Daemon.h"
#include "tests/eventd/http/RawClient.h"
#include "tests/host/FaultVfs.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

constexpr const char* kEvents = "/v1/queues/0/events";
constexpr const char* kEvent = R"({"kind":"legacy","fields":{"payload":"x"}})";

class FailingDisk : public ::testing::Test {
 protected:
  FailingDisk() { FaultVfs::install(); }
  ~FailingDisk() override {
    m_daemon.reset();
    FaultVfs::install();
  }

  void start(const std::string& durability = "group") {
    m_daemon.reset();
    std::ofstream(home() / "host.ini")
        << "[database]\ndurability = " << durability << "\n[log]\nlevel = off\n";
    EventSystemHost::HostOptions options;
    options.home = home();
    options.reserveBytes = m_reserveBytes;
    m_daemon = std::make_unique<EventApps::Daemon>(EventApps::loadConfiguration(home(), {}),
                                                   options, std::vector<int>());
  }

  std::uintmax_t m_reserveBytes = 0;

  std::filesystem::path home() const { return m_directory.path(); }

  Reply ask(const std::string& method, const std::string& path, const std::string& body = "",
            const std::string& headers = "") const {
    RawClient client(home() / "eventd.sock");
    client.send(method + " " + path + " HTTP/1.1\r\nHost: test\r\n" + headers +
                "Content-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\n\r\n" + body);
    return client.reply();
  }
  Reply get(const std::string& path) const { return ask("GET", path); }
  Reply post() const { return ask("POST", kEvents, kEvent); }

  std::size_t events() const {
    return json::parse(get(std::string(kEvents) + "?limit=1000").body)["events"].size();
  }

  static json problemIn(const Reply& reply, unsigned status, const std::string& name) {
    EXPECT_EQ(reply.status, status) << reply.body;
    EXPECT_EQ(reply.headers.at("content-type"), "application/problem+json");
    json problem = json::parse(reply.body);
    EXPECT_EQ(problem.value("type", ""), "/problems/" + name);
    return problem;
  }

  // A daemon that is asked tries again what has failed.
  void waitUntilReady() const {
    while (get("/readyz").status != 200) {
    }
  }

 private:
  TempDir m_directory;
  std::unique_ptr<EventApps::Daemon> m_daemon;
};

TEST_F(FailingDisk, ThatDoesNotFlushLeavesItOpenWhatIsStored) {
  start();
  FaultVfs::failFlush(1, 1000000);
  const json problem = problemIn(post(), 500, "store-failed");
  EXPECT_FALSE(problem.contains("ids")) << "whether it is stored is not known";
  EXPECT_THAT(problem.value("detail", ""), HasSubstr("a flush failed"));
  const json why = problemIn(get("/readyz"), 503, "unavailable");
  EXPECT_THAT(why.value("detail", ""), HasSubstr("events.db"));
  EXPECT_EQ(get("/healthz").status, 200U) << "it serves all the same";
  FaultVfs::failFlush(0);
  waitUntilReady();
  EXPECT_EQ(post().status, 201U);
}

TEST_F(FailingDisk, ThatFailsARequestWithAKeyIsAskedAgainAndStoresItOnce) {
  start();
  const auto store = [this] { return ask("POST", kEvents, kEvent, "Idempotency-Key: one\r\n"); };
  FaultVfs::failFlush(1);
  EXPECT_EQ(store().status, 500U);
  waitUntilReady();
  const Reply stored = store();
  EXPECT_EQ(stored.status, 201U) << stored.body;
  EXPECT_EQ(store().body, stored.body);
  EXPECT_EQ(events(), 1U);
}

TEST_F(FailingDisk, ThatFailsOneEventInStrictModeStoresNothing) {
  start("strict");
  EXPECT_EQ(post().status, 201U);
  FaultVfs::failFlush(1);
  EXPECT_EQ(problemIn(post(), 500, "store-failed")["ids"], json::array());
  EXPECT_EQ(events(), 1U);
}

// A flush that hangs in a commit holds the database.
TEST_F(FailingDisk, ThatHangsKeepsNobodyFromHearingThatTheProcessServes) {
  start("strict");
  FaultVfs::holdFlushes();
  const auto sent = [this](const std::string& request) {
    auto client = std::make_unique<RawClient>(home() / "eventd.sock");
    client->send(request);
    return client;
  };
  const std::string body = kEvent;
  const auto stored = sent("POST " + std::string(kEvents) +
                           " HTTP/1.1\r\nHost: test\r\nContent-Type: application/json\r\n"
                           "Content-Length: " +
                           std::to_string(body.size()) + "\r\n\r\n" + body);
  FaultVfs::waitForHeldFlush();
  std::vector<std::unique_ptr<RawClient>> asking;
  for (int i = 0; i < 16; ++i) asking.push_back(sent("GET /readyz HTTP/1.1\r\nHost: test\r\n\r\n"));
  for (int i = 0; i < 16; ++i) EXPECT_EQ(get("/healthz").status, 200U);
  FaultVfs::letFlushesGo();
  EXPECT_EQ(stored->reply().status, 201U);
  for (const auto& client : asking) client->reply();
}

TEST_F(FailingDisk, ThatIsFullStoresNothingAndIsReadOn) {
  start();
  EXPECT_EQ(post().status, 201U);
  FaultVfs::setDiskFull(true);
  std::size_t stored = 1;
  Reply last = post();
  for (; last.status == 201; last = post()) ++stored;  // what a file has room for
  const json problem = problemIn(last, 507, "disk-full");
  EXPECT_EQ(problem["ids"], json::array());
  EXPECT_THAT(problem.value("detail", ""), HasSubstr(home().string() + ": the disk is full: "));
  EXPECT_EQ(events(), stored);
  const json why = problemIn(get("/readyz"), 503, "unavailable");
  EXPECT_EQ(why["reads"], true);
  EXPECT_EQ(why["writes"], false);
  EXPECT_THAT(why.value("detail", ""), HasSubstr("the disk is full"));
  FaultVfs::setDiskFull(false);
  waitUntilReady();
  EXPECT_EQ(post().status, 201U);
  EXPECT_EQ(events(), stored + 1);
}

TEST_F(FailingDisk, ThatIsFullLetsEventsBeDeleted) {
  m_reserveBytes = 1u << 20;
  start();
  const auto reserve = home() / "events.db.reserve";
  EXPECT_EQ(post().status, 201U);
  ASSERT_EQ(std::filesystem::file_size(reserve), m_reserveBytes);
  FaultVfs::setDiskFullWhileThereIs(reserve);
  std::size_t stored = 1;
  for (; post().status == 201; ++stored) {
  }
  for (std::size_t id = 1; id <= stored; ++id) {
    const std::string path = std::string(kEvents) + "/" + std::to_string(id);
    ASSERT_EQ(ask("DELETE", path).status, 204U) << id << " of " << stored;
  }
  EXPECT_EQ(std::filesystem::file_size(reserve), 0U);
  EXPECT_EQ(events(), 0U);
  FaultVfs::setDiskFull(false);
  waitUntilReady();
  EXPECT_EQ(post().status, 201U);
  EXPECT_EQ(std::filesystem::file_size(reserve), m_reserveBytes) << "for the next time";
}

TEST_F(FailingDisk, ThatHasLessThanIsKeptBackForDeletingTakesNothing) {
  start();
  EXPECT_EQ(post().status, 201U);
  m_reserveBytes = std::uintmax_t{1} << 60;
  start();
  problemIn(post(), 507, "disk-full");
  EXPECT_EQ(events(), 1U);
  EXPECT_EQ(get("/readyz?for=reads").status, 200U);
  EXPECT_EQ(ask("DELETE", std::string(kEvents) + "/1").status, 204U);
}

TEST_F(FailingDisk, ThatIsFullAtTheFirstStartIsNamed) {
  m_reserveBytes = std::uintmax_t{1} << 60;
  try {
    start();
    ADD_FAILURE() << "it started";
  } catch (const std::exception& problem) {
    EXPECT_THAT(problem.what(), HasSubstr(home().string() + ": the disk is full: "));
  }
}

TEST_F(FailingDisk, ThatDoesNotFlushADataSelectionIsNoConflict) {
  start();
  FaultVfs::failFlush(1);
  problemIn(ask("PUT", "/v1/queues/7"), 500, "store-failed");
}

}  // namespace
}  // namespace EventSystemTest
