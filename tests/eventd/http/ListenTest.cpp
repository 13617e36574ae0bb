// Where a server can listen, and what stands in its way.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <fstream>
#include <string>

#include "apps/eventd/http/ListeningSockets.h"
#include "tests/eventd/http/TestServer.h"
#include "tests/support/NameLookup.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;

class Listen : public ::testing::Test {
 protected:
  Listen()
      : server(
            {},
            [](const auto& exchange) {
              exchange->respond({200, "", "served", {}});
            },
            1) {}

  std::filesystem::path path() const { return directory.path() / "s"; }

  // What the error says; empty when there is none.
  template <typename Call>
  static std::string errorOf(const Call& call) {
    try {
      call();
      return "";
    } catch (const Http::ServerError& error) {
      return error.what();
    }
  }

  struct stat state() const {
    struct stat found {};
    EXPECT_EQ(0, lstat(path().c_str(), &found));
    return found;
  }

  TempDir directory;
  Http::Server server;
};

TEST_F(Listen, GivesTheSocketItsModeWhateverTheUmask) {
  const mode_t before = umask(0777);
  server.listenUnix(path(), 0620);
  umask(before);
  EXPECT_EQ(0620u, state().st_mode & 07777u);
}

TEST_F(Listen, GivesTheSocketItsGroup) {
  const group* const own = getgrgid(getgid());
  ASSERT_NE(nullptr, own);
  server.listenUnix(path(), 0660, own->gr_name);
  EXPECT_EQ(getgid(), state().st_gid);
}

TEST_F(Listen, RefusesAGroupThatIsNotThere) {
  EXPECT_THAT(errorOf([&] { server.listenUnix(path(), 0660, "no such group"); }),
              HasSubstr("no such group"));
  EXPECT_FALSE(std::filesystem::exists(path())) << "nothing is left behind";
}

TEST_F(Listen, RemovesTheSocketInTheEnd) {
  server.listenUnix(path(), 0600);
  server.start();
  EXPECT_EQ("served", RawClient(path()).ask("/").body);
  server.stop();
  EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(Listen, LeavesTheSocketOfItsSuccessorAlone) {
  server.listenUnix(path(), 0600);
  std::filesystem::remove(path());
  Http::Server successor(
      {},
      [](const auto& exchange) {
        exchange->respond({200, "", "successor", {}});
      },
      1);
  successor.listenUnix(path(), 0600);
  successor.start();
  server.stop();
  EXPECT_EQ("successor", RawClient(path()).ask("/").body);
}

TEST_F(Listen, TakesThePlaceOfASocketThatNobodyAnswersOn) {
  { const Http::Descriptor dead = Http::listenOnUnixSocket(path(), 0600, ""); }
  ASSERT_TRUE(std::filesystem::exists(path()));
  server.listenUnix(path(), 0600);
  server.start();
  EXPECT_EQ("served", RawClient(path()).ask("/").body);
}

TEST_F(Listen, LeavesASocketAloneThatSomebodyAnswersOn) {
  const Http::Descriptor other = Http::listenOnUnixSocket(path(), 0600, "");
  EXPECT_THAT(errorOf([&] { server.listenUnix(path(), 0600); }), HasSubstr("Another process"));
  EXPECT_TRUE(std::filesystem::exists(path()));
}

TEST_F(Listen, LeavesAFileAloneThatIsNoSocket) {
  std::ofstream(path()) << "precious";
  EXPECT_THAT(errorOf([&] { server.listenUnix(path(), 0600); }), HasSubstr("no socket"));
  EXPECT_EQ(8u, std::filesystem::file_size(path()));
}

TEST_F(Listen, SaysWhatIsWrongWithAPath) {
  const std::filesystem::path deep = directory.path() / std::string(200, 'x');
  EXPECT_THAT(errorOf([&] { server.listenUnix(deep, 0600); }), HasSubstr("107 bytes"));
  EXPECT_THAT(errorOf([&] { server.listenUnix("", 0600); }), HasSubstr("empty"));
  EXPECT_THAT(errorOf([&] { server.listenUnix(directory.path() / "no" / "s", 0600); }),
              HasSubstr("folder"));
}

TEST_F(Listen, TakesAFreePortAndKnowsIt) {
  const std::uint16_t port = server.listenTcp("127.0.0.1", 0);
  server.start();
  EXPECT_NE(0, port);
  EXPECT_EQ("served", RawClient(port).ask("/").body);
}

TEST_F(Listen, TakesOnePortAtAllAddressesOfAName) {
  if (!isKnownName("localhost")) GTEST_SKIP() << "this machine does not know localhost";
  const std::uint16_t port = server.listenTcp("localhost", 0);
  server.start();
  EXPECT_NE(0, port);
  EXPECT_EQ("served", RawClient(port).ask("/").body);
}

TEST_F(Listen, SaysThatAPortIsTaken) {
  const std::uint16_t port = server.listenTcp("127.0.0.1", 0);
  EXPECT_THAT(errorOf([&] { server.listenTcp("127.0.0.1", port); }),
              HasSubstr("port " + std::to_string(port)));
}

TEST_F(Listen, SaysThatAnAddressIsNotKnown) {
  EXPECT_THAT(errorOf([&] { server.listenTcp("", 0); }), HasSubstr("\"\""));
  EXPECT_THAT(errorOf([&] { server.listenTcp("300.1.1.1:80", 0); }), HasSubstr("300.1.1.1:80"));
  EXPECT_THAT(errorOf([&] { server.listenTcp("192.0.2.1", 0); }), HasSubstr("192.0.2.1"));
}

TEST_F(Listen, TakesOverASocketThatListens) {
  Http::Descriptor unixSocket = Http::listenOnUnixSocket(path(), 0600, "");
  std::vector<Http::Descriptor> tcpSockets = Http::listenOnTcp("127.0.0.1", 0);
  const std::uint16_t port = Http::portOf(tcpSockets.front().get());
  server.adopt(unixSocket.release());
  server.adopt(tcpSockets.front().release());
  server.start();
  EXPECT_EQ("served", RawClient(path()).ask("/").body);
  EXPECT_EQ("served", RawClient(port).ask("/").body);
  server.stop();
  EXPECT_TRUE(std::filesystem::exists(path())) << "it is whoever made it who removes it";
}

TEST_F(Listen, TakesOverNothingElse) {
  EXPECT_THAT(errorOf([&] { server.adopt(-1); }), HasSubstr("descriptor -1"));
  EXPECT_NE("", errorOf([&] { server.adopt(socket(AF_INET, SOCK_STREAM, 0)); }));
  EXPECT_NE("", errorOf([&] { server.adopt(socket(AF_INET, SOCK_DGRAM, 0)); }));
  EXPECT_NE("", errorOf([&] { server.adopt(::open("/dev/null", O_RDONLY)); }));
}

TEST_F(Listen, MayBeginWhileTheServerRuns) {
  server.start();
  server.listenUnix(path(), 0600);
  EXPECT_EQ("served", RawClient(path()).ask("/").body);
}

}  // namespace
}  // namespace EventSystemTest
