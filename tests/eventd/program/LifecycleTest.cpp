// How eventd starts, stops, and works with a service manager.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <string>
#include <vector>

#include "tests/eventd/http/Certificates.h"
#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

class Lifecycle : public DaemonHome {
 protected:
  // The message with which it refuses to start.
  std::string refusal(const std::string& ini, const std::vector<std::string>& arguments = {}) {
    write("eventd.ini", ini);
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << ini << outcome.err;
    return outcome.err;
  }
  // Certificates for this machine, and a token, where eventd.ini says that they are.
  void showCertificates(const Certificates& certificates,
                        const std::string& address = "127.0.0.1") const {
    certificates.sign("server", "localhost", "serverAuth");
    for (const char* const name : {"server.crt", "server.key"}) {
      std::filesystem::copy(certificates.file(name), home() / name,
                            std::filesystem::copy_options::overwrite_existing);
    }
    write("eventd.ini", "[tls]\nlisten = " + address +
                            ":0\ncertificate_file = server.crt\nkey_file = server.key\n");
    if (!std::filesystem::exists(home() / "token")) {
      write("token", makeToken("one", EventApps::Role::kWrite) + "\n");
    }
  }
  // What eventctl says over TLS; without an authority it has that of the system.
  Outcome ask(const std::string& host, const std::filesystem::path& authority,
              std::vector<std::string> command) const {
    if (command.front() == "add") command.insert(command.end(), {"--payload", "x"});
    if (!authority.empty()) command.insert(command.end(), {"--ca-file", authority.string()});
    command.insert(command.end(), {"--token-file", (home() / "token").string(), "--url",
                                   "https://" + host + ":" + std::to_string(port("https"))});
    return eventctl(command);
  }
  bool trusts(const Certificates& certificates) const {
    RawClient client(port("https"));
    return client.startTls(certificates.authority(), {}, {});
  }
  std::string place() const { return "eventd: " + (home() / "eventd.ini").string() + ": "; }
};

TEST_F(Lifecycle, RefusesWhatItDoesNotKnowOrAllow) {
  EXPECT_THAT(refusal("[unx]\npath = x\n"),
              HasSubstr(place() + "[unx] path = \"x\": unknown section; the sections are [unix]"));
  EXPECT_THAT(refusal("[unix]\npth = x\n"), HasSubstr("[unix] pth = \"x\": unknown entry; "));
  const std::vector<std::pair<std::string, std::string>> wrong = {
      {"unix", "enabled = yes"},
      {"unix", "mode = 0888"},
      {"unix", "mode = 01000"},
      {"unix", "role = root"},
      {"unix", "path ="},
      {"tcp", "listen = 8780"},
      {"tcp", "listen = example:80"},
      {"tcp", "listen = ::1:80"},
      {"tcp", "listen = [::1]:x"},
      {"tcp", "listen = 1.2.3.4:70000"},
      {"tls", "client_role = x"},
      {"metrics", "public = 2"},
      {"limits", "body_bytes = 1"},
      {"limits", "connections = 0"},
      {"limits", "waiting = -1"},
      {"limits", "requests_per_second = x"},
      {"limits", "burst = 0"},
      {"limits", "batch_events = 0"},
      {"limits", "idempotency_hours = 0"},
      {"limits", "heartbeat_ms = 1"},
      {"limits", "stream_backlog_bytes = 131071"},
      {"limits", "grace_seconds = 1.5"}};
  for (const auto& [section, entry] : wrong) {
    const std::string name = entry.substr(0, entry.find(' '));
    const std::string message = refusal("[" + section + "]\n" + entry + "\n");
    EXPECT_THAT(message, HasSubstr(place() + "[" + section + "] " + name + " = \"")) << entry;
    EXPECT_THAT(message, HasSubstr("allowed is ")) << entry;
  }
}

TEST_F(Lifecycle, RefusesToLeaveTheMachineInTheClear) {
  makeToken("one", EventApps::Role::kRead);
  for (const char* address : {"0.0.0.0:0", "[::]:0", "192.0.2.1:80"}) {
    EXPECT_THAT(refusal("[tcp]\nlisten = " + std::string(address) + "\n"),
                HasSubstr("is not a loopback address"))
        << address;
  }
}

TEST_F(Lifecycle, RefusesTcpThatNobodyOrAnybodyCouldUse) {
  EXPECT_THAT(refusal("[tcp]\nlisten = 127.0.0.1:0\n"),
              HasSubstr("eventctl --home " + home().string() + " token add NAME --role write"));
  EXPECT_THAT(refusal("[tls]\nlisten = 127.0.0.1:0\n"), HasSubstr("certificate_file and key_file"));
  EXPECT_THAT(refusal("[tls]\nlisten = 0.0.0.0:0\ncertificate_file = c\nkey_file = k\n"),
              HasSubstr("neither tokens nor a client_ca_file"));
  EXPECT_THAT(refusal("[unix]\nenabled = 0\n"), HasSubstr("would listen nowhere"));
}

TEST_F(Lifecycle, ChecksAConfigurationWithoutStarting) {
  write("eventd.ini", "[limits]\nburst = 5\n");
  const Outcome good = run({"--check-config"});
  EXPECT_EQ(good.status, 0);
  EXPECT_EQ(good.out, (home() / "eventd.ini").string() + ": nothing is wrong\n");
  EXPECT_FALSE(std::filesystem::exists(home() / "events.db"));
  EXPECT_THAT(refusal("[limits]\nburst = x\n", {"--check-config"}), HasSubstr("[limits] burst"));
  EXPECT_THAT(refusal("", {"--config", "/nowhere/eventd.ini"}),
              HasSubstr("/nowhere/eventd.ini: there is no such file"));
}

TEST_F(Lifecycle, ChecksTheFilesOfTlsWithItsConfiguration) {
  makeToken("one", EventApps::Role::kRead);
  const std::string ini = "[tls]\nlisten = 127.0.0.1:0\ncertificate_file = c\nkey_file = k\n";
  const std::vector<std::vector<std::string>> ways = {{}, {"--check-config"}};
  for (const auto& arguments : ways) {
    EXPECT_THAT(refusal(ini, arguments),
                HasSubstr("The certificate cannot be read from " + (home() / "c").string()));
  }
}

TEST_F(Lifecycle, RefusesAWrongConfigurationOfTheQueuesLikeItsOwn) {
  for (const char* file : {"host.ini", "OrbCentral.ini"}) {
    write(file, "[nowhere]\nx = 1\n");
    const std::string place = "eventd: " + (home() / file).string() + ": [nowhere] x";
    EXPECT_THAT(refusal(""), HasSubstr(place));
    EXPECT_THAT(refusal("", {"--check-config"}), HasSubstr(place));
    EXPECT_FALSE(std::filesystem::exists(home() / "events.db"));
    write(file, "");
  }
}

TEST_F(Lifecycle, SaysWhatIsWrongWithItsCommandLine) {
  const Outcome outcome = run({"--hom"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("eventd --help"));
  EXPECT_THAT(run({"--version"}).out, HasSubstr("eventd 1."));
}

TEST_F(Lifecycle, IsTheOnlyOneOfItsHome) {
  start();
  const Outcome second = run();
  EXPECT_EQ(second.status, 1);
  EXPECT_THAT(second.err, HasSubstr(std::to_string(program().pid())));
  EXPECT_EQ(get("/healthz").status, 200U);
}

TEST_F(Lifecycle, StopsInGoodOrder) {
  write("host.ini", "[log]\nlevel = info\n");
  start();
  add("kept");
  EXPECT_EQ(notifications().next(0), "");
  EXPECT_EQ(stop().status, 0);
  EXPECT_THAT(notifications().next(0), HasSubstr("STOPPING=1"));
  EXPECT_FALSE(std::filesystem::exists(socket()));
  EXPECT_THAT(log(), HasSubstr("eventd stops"));
  start();
  EXPECT_EQ(ids().size(), 1U);
}

TEST_F(Lifecycle, AnswersReadersThatWaitWhenItStops) {
  start();
  std::vector<RawClient> readers;
  for (int i = 0; i < 20; ++i) {
    readers.emplace_back(socket());
    readers.back().get("/v1/queues/0/events?wait=60");
  }
  while (jsonOf(get("/v1/stats"))["waiting"] != 20) {
  }
  EXPECT_EQ(stop().status, 0);
  for (RawClient& reader : readers) {
    const Reply reply = reader.reply();
    EXPECT_EQ(reply.status, 200U);
    EXPECT_EQ(reply.body, "{\"events\":[],\"last\":0}\n");
  }
}

TEST_F(Lifecycle, ReplacesTheSocketOfADaemonThatWasKilled) {
  start();
  kill();
  EXPECT_TRUE(std::filesystem::exists(socket()));
  start();
  EXPECT_EQ(get("/healthz").status, 200U);
}

TEST_F(Lifecycle, TellsTheServiceManagerThatItIsAlive) {
  start({}, {"WATCHDOG_USEC=150000"});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(notifications().next(120000), "WATCHDOG=1");
}

TEST_F(Lifecycle, TellsTheJournalWhatSomebodyShouldLookAt) {
  write("OrbCentral.ini", "[events]\ncount_limit = 1\n");
  write("host.ini", "[log]\nlevel = info\n");
  startUnderAJournal();
  EXPECT_TRUE(program().waitForError("<6>listens on " + socket().string()));
  add("fits");
  EXPECT_EQ(post("/v1/queues/0/events", statusEvent("does not fit")).status, 507U);
  const std::string said = stop().err;
  EXPECT_THAT(said, HasSubstr("\n<4>"));
  EXPECT_THAT(said, HasSubstr("\n<3>"));
  EXPECT_THAT(said, Not(HasSubstr("POST")));
  EXPECT_THAT(log(), HasSubstr("POST"));
}

TEST_F(Lifecycle, SaysWhereItListensWhereNoServiceManagerDoes) {
  Program daemon({"--home", home().string()});
  ASSERT_TRUE(daemon.waitForError("eventd: listens on " + socket().string() + "; "));
  daemon.signal(SIGTERM);
  const Outcome outcome = daemon.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(linesOf(outcome.err), SizeIs(1)) << outcome.err;
}

TEST_F(Lifecycle, ListensWhereTheCommandLineSays) {
  const Outcome refused = run({"--listen", "127.0.0.1:0"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("token add NAME"));
  const std::string token = makeToken("one", EventApps::Role::kRead);
  write("eventd.ini", "[tcp]\nlisten = 127.0.0.1:1\n");
  start({"--listen", "127.0.0.1:0"});
  EXPECT_EQ(requestTcp({.path = "/v1/queues", .token = token}).status, 200U);
  const Outcome wrong = run({"--listen", "localhost"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_THAT(wrong.err, HasSubstr("--listen: 'localhost' is not"));
}

// Warnings stay to be found: they are not rotated away by what goes well.
TEST_F(Lifecycle, LogsNothingOfWhatGoesWellUnlessAskedTo) {
  start();
  add("one");
  ids();
  EXPECT_EQ(request({.method = "DELETE", .path = "/v1/queues/0/events/1"}).status, 204U);
  stop();
  EXPECT_EQ(log(), "");
}

TEST_F(Lifecycle, TellsTheJournalNothingTwice) {
  write("host.ini", "[log]\nlevel = info\nfile = -\n");
  startUnderAJournal();
  add("one");
  EXPECT_TRUE(program().waitForError("POST"));
  EXPECT_THAT(stop().err, Not(HasSubstr("<6>")));
}

TEST_F(Lifecycle, SaysNothingWhereNoJournalListens) {
  start({}, {"JOURNAL_STREAM=1:2"});
  EXPECT_EQ(stop().err, "");
}

TEST_F(Lifecycle, ReadsAgainWhatASignalAsksFor) {
  start();
  program().signal(SIGHUP);
  EXPECT_THAT(notifications().next(120000), HasSubstr("RELOADING=1"));
  EXPECT_THAT(notifications().next(120000), HasSubstr("READY=1"));
  EXPECT_EQ(get("/healthz").status, 200U);
}

TEST_F(Lifecycle, FlushesTogetherUnlessToldOtherwise) {
  start();
  EXPECT_EQ(jsonOf(get("/v1/stats"))["durability"], "group");
  stop();
  write("host.ini", "[database]\ndurability = strict\n");
  start();
  EXPECT_EQ(jsonOf(get("/v1/stats"))["durability"], "strict");
}

TEST_F(Lifecycle, ServesOverTls) {
  const Certificates certificates;
  certificates.sign("server", "localhost", "serverAuth");
  certificates.sign("client", "node1", "clientAuth");
  makeToken("one", EventApps::Role::kRead);
  write("eventd.ini", "[tls]\nlisten = 127.0.0.1:0\ncertificate_file = " +
                          certificates.file("server.crt").string() +
                          "\nkey_file = " + certificates.file("server.key").string() +
                          "\nclient_ca_file = " + certificates.authority().string() +
                          "\nclient_role = write\n");
  start();
  RawClient client(port("https"));
  ASSERT_TRUE(client.startTls(certificates.authority(), certificates.file("client.crt"),
                              certificates.file("client.key")));
  const json me = jsonOf(client.ask("/v1/whoami"));
  EXPECT_EQ(me["via"], "certificate");
  EXPECT_EQ(me["role"], "write");
  EXPECT_EQ(me["name"], "node1");
  RawClient nobody(port("https"));
  ASSERT_TRUE(nobody.startTls(certificates.authority(), {}, {}));
  EXPECT_EQ(nobody.ask("/v1/whoami").status, 401U);
}

TEST_F(Lifecycle, ShowsTheCertificateThatItHasReadAgain) {
  const Certificates before;
  const Certificates after;
  showCertificates(before);
  start();
  EXPECT_TRUE(trusts(before));
  showCertificates(after);
  EXPECT_FALSE(trusts(after));
  program().signal(SIGHUP);
  EXPECT_THAT(notifications().next(120000), HasSubstr("RELOADING=1"));
  EXPECT_THAT(notifications().next(120000), HasSubstr("READY=1"));
  EXPECT_TRUE(trusts(after));
  EXPECT_FALSE(trusts(before));
}

TEST_F(Lifecycle, ServesEventctlOverTls) {
  const Certificates certificates;
  showCertificates(certificates);
  start();
  const Outcome added = ask("localhost", certificates.authority(), {"add", "legacy"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_EQ(added.out, "1\n");
  EXPECT_THAT(ask("127.0.0.1", certificates.authority(), {"show", "1"}).out, HasSubstr("legacy"));
}

TEST_F(Lifecycle, IsNotToldATokenByEventctlWhenItMayBeAnother) {
  const Certificates certificates;
  const Certificates others;
  showCertificates(certificates, "127.0.0.2");
  start();
  for (const auto& authority :
       {certificates.authority(), others.authority(), std::filesystem::path()}) {
    const Outcome outcome = ask("127.0.0.2", authority, {"add", "legacy"});
    EXPECT_EQ(outcome.status, 1) << "no certificate is good for that address";
    EXPECT_THAT(outcome.err, HasSubstr("does not answer: "));
  }
  EXPECT_EQ(jsonOf(get("/v1/queues"))["queues"][0]["count"], 0);
  EXPECT_THAT(log(), Not(HasSubstr("token:one")));
}

// A socket that listens, as a service manager makes it.
class GivenSocket {
 public:
  explicit GivenSocket(const std::filesystem::path& path)
      : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    listenAt(reinterpret_cast<const sockaddr*>(&address), sizeof address);
  }
  // On TCP, at an address of IPv4.
  explicit GivenSocket(in_addr_t host) : m_socket(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(host);
    listenAt(reinterpret_cast<const sockaddr*>(&address), sizeof address);
  }

  int get() const { return m_socket.get(); }

 private:
  void listenAt(const sockaddr* address, socklen_t size) {
    EXPECT_EQ(::bind(m_socket.get(), address, size), 0);
    EXPECT_EQ(::listen(m_socket.get(), 8), 0);
  }

  EtcdNodes::Descriptor m_socket;
};

TEST_F(Lifecycle, TakesTheSocketOfTheServiceManagerInsteadOfItsOwn) {
  const auto path = home() / "given.sock";
  const GivenSocket given(path);
  startWith(given.get());
  RawClient client(path);
  EXPECT_EQ(client.ask("/healthz").status, 200U);
  EXPECT_FALSE(std::filesystem::exists(socket()));
  EXPECT_EQ(stop().status, 0);
  EXPECT_TRUE(std::filesystem::exists(path)) << "it is the service manager's";
  startWith(given.get());
  RawClient again(path);
  EXPECT_EQ(again.ask("/v1/queues").status, 200U);
}

TEST_F(Lifecycle, RefusesASocketOfTheServiceManagerThatAnybodyCouldUse) {
  const GivenSocket here(INADDR_LOOPBACK);
  const Outcome open = runWith(here.get());
  EXPECT_NE(open.status, 0);
  EXPECT_THAT(open.err, HasSubstr("there are no tokens"));
  makeToken("one", EventApps::Role::kRead);
  const GivenSocket everywhere(INADDR_ANY);
  const Outcome clear = runWith(everywhere.get());
  EXPECT_NE(clear.status, 0);
  EXPECT_THAT(clear.err, HasSubstr("is not a loopback address"));
}

}  // namespace
}  // namespace EventSystemTest
