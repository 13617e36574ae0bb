// eventctl at a daemon: which one it finds, what it asks, and what it makes of the answers that
// come only when something goes wrong.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/e2e/EventctlHome.h"
#include "tests/e2e/FakeDaemon.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

const std::string kEmptyPage = R"({"events":[],"last":0})";

std::string eventJson(unsigned long id, const std::string& server) {
  return R"({"id":)" + std::to_string(id) +
         R"(,"dsid":0,"type":4,"kind":"serverstatus","date":1700000000,"time":"","fields":{},)"
         R"("eventString":"EVENT{version:1;type:4;id:)" +
         std::to_string(id) + ";date:1700000000;SERVERSTATUSEVENT{state:1;server:" + server +
         R"(;}}"})";
}

std::string pageOf(unsigned long id, const std::string& server) {
  return R"({"events":[)" + eventJson(id, server) + R"(],"last":)" + std::to_string(id) + "}";
}

class Daemon : public EventctlHome {
 protected:
  std::filesystem::path socket() const { return home() / "eventd.sock"; }

  FakeDaemon& answer(FakeDaemon::Answer answer) {
    m_daemon = std::make_unique<FakeDaemon>(socket(), std::move(answer));
    return *m_daemon;
  }

  // Whatever is asked for.
  FakeDaemon& always(const FakeAnswer& same) {
    return answer([same](const FakeRequest&) { return same; });
  }

  std::unique_ptr<FakeDaemon> m_daemon;
};

// One of each that asks a daemon.
std::vector<Arguments> commandsOfADaemon() {
  return {{"add", "legacy", "--payload", "x"},
          {"import", DAY_EVENTS},
          {"export"},
          {"list"},
          {"list", "--follow"},
          {"show", "1"},
          {"stats"},
          {"next"},
          {"consume"},
          {"delete", "1"},
          {"purge", "--yes"},
          {"check"},
          {"dataselection", "list"},
          {"dataselection", "add", "4"},
          {"dataselection", "remove", "4"}};
}

// A listening socket whose queue of connections is full.
class StoppedListener {
 public:
  explicit StoppedListener(const std::filesystem::path& socket) : m_listening(open()) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    EXPECT_EQ(::bind(m_listening, generic, sizeof address), 0);
    EXPECT_EQ(::listen(m_listening, 0), 0);
    do {
      m_waiting.push_back(open());
    } while (::connect(m_waiting.back(), generic, sizeof address) == 0);
    EXPECT_EQ(errno, EAGAIN);
  }

  ~StoppedListener() {
    ::close(m_listening);
    for (const int descriptor : m_waiting) ::close(descriptor);
  }

  StoppedListener(const StoppedListener&) = delete;
  StoppedListener& operator=(const StoppedListener&) = delete;

 private:
  static int open() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

  int m_listening;
  std::vector<int> m_waiting;
};

using DaemonLookUp = Daemon;
using DaemonImport = Daemon;
using DaemonConsume = Daemon;

TEST_F(DaemonLookUp, FindsTheOneThatServesTheHome) {
  const FakeDaemon& daemon = always({200, kEmptyPage});
  EXPECT_EQ(output({"list"}), "No events in the global queue.\n");
  EXPECT_THAT(daemon.lines(), ElementsAre("GET /v1/queues/0/events?after=0&limit=1000"));
}

TEST_F(DaemonLookUp, FindsTheSocketThatItsConfigurationNames) {
  const auto elsewhere = home().parent_path() / "elsewhere.sock";
  write("home/eventd.ini", "[unix]\npath = " + elsewhere.string() + "\n");
  const FakeDaemon daemon(elsewhere, [](const FakeRequest&) {
    return FakeAnswer{200, kEmptyPage};
  });
  EXPECT_EQ(output({"list"}), "No events in the global queue.\n");
  EXPECT_THAT(daemon.lines(), SizeIs(1));
}

TEST_F(DaemonLookUp, OpensTheQueuesWhereNobodyAnswers) {
  always({200, kEmptyPage});
  m_daemon.reset();  // its socket stays
  ASSERT_TRUE(std::filesystem::exists(socket()));
  EXPECT_EQ(add("a"), 1u);
}

TEST_F(DaemonLookUp, LeavesTheDaemonAloneWhenToldTo) {
  const FakeDaemon& daemon = always({200, kEmptyPage});
  EXPECT_EQ(output({"add", "legacy", "--payload", "x", "--direct"}), "1\n");
  EXPECT_THAT(daemon.lines(), IsEmpty());
}

TEST_F(DaemonLookUp, NamesTheSocketWhereNobodyAnswersThatWasAskedFor) {
  for (const Arguments& command :
       {Arguments{"list"}, Arguments{"add", "legacy", "--payload", "x"}}) {
    Arguments arguments = command;
    arguments.insert(arguments.end(), {"--socket", "/nowhere/eventd.sock"});
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("eventctl: the daemon at /nowhere/eventd.sock does not "
                                        "answer: "));
  }
}

TEST_F(DaemonLookUp, RefusesAddressesThatContradictOrCannotBe) {
  const auto refuses = [&](const Arguments& options, const std::string& why) {
    Arguments arguments = {"list"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(why));
  };
  refuses({"--socket", "a", "--url", "https://b"}, "exclude each other");
  refuses({"--direct", "--url", "https://b"}, "exclude each other");
  refuses({"--url", "http://example.org:8780"}, "use https://");
  refuses({"--url", "http://127.0.0.1.example.org"}, "use https://");
  refuses({"--url", "http://127.0.0.1@example.org"}, "use https://");
  refuses({"--url", "http://user@127.0.0.1:80@example.org"}, "use https://");
  refuses({"--url", "ftp://localhost"}, "is no address of a daemon");
  refuses({"--url", "http://127.0.0.1:1"}, "http://127.0.0.1:1 does not answer");
  refuses({"--url", "http://127.0.0.1:1", "--token", "two words"}, "character that no token holds");
  refuses({"--url", "http://127.0.0.1:1", "--token-file", "/nowhere"}, "/nowhere: holds no token");
}

TEST_F(DaemonLookUp, ShowsTheToken) {
  const FakeDaemon& daemon = always({200, kEmptyPage});
  const auto file = write("token", "evt_file\n");
  output({"list"});
  output({"list", "--token", "evt_option"}, {.environment = {"EVENTD_TOKEN=evt_environment"}});
  output({"list", "--token-file", file.string()});
  output({"list"}, {.environment = {"EVENTD_TOKEN=evt_environment"}});
  std::vector<std::string> shown;
  for (const FakeRequest& request : daemon.requests()) {
    shown.push_back(request.header("Authorization"));
  }
  EXPECT_THAT(shown,
              ElementsAre("", "Bearer evt_option", "Bearer evt_file", "Bearer evt_environment"));
}

TEST_F(Daemon, IsQuotedWhenItRefuses) {
  always(problem(403, "forbidden", "the role read does not allow this"));
  Outcome outcome = run({"delete", "3"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "eventctl: the role read does not allow this; a token of a higher role may do it: "
            "eventctl token add makes one\n");
  m_daemon.reset();
  std::filesystem::remove(socket());
  always({500, "<html>", ""});
  outcome = run({"delete", "3"});
  EXPECT_EQ(outcome.err,
            "eventctl: the daemon at " + socket().string() + " answered with status 500\n");
}

TEST_F(Daemon, IsNotBelievedWhenItIsAnotherProgram) {
  const auto saysWith = [&](const std::string& body, const Arguments& arguments) {
    m_daemon.reset();
    std::filesystem::remove(socket());
    always({200, body, ""});
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 1);
    return outcome.err;
  };
  EXPECT_THAT(saysWith("<html>hello</html>", {"stats"}), HasSubstr("is no daemon of the queues"));
  EXPECT_THAT(saysWith("[1]", {"stats"}), HasSubstr("not as this eventctl expects"));
  EXPECT_THAT(saysWith(R"({"events":[{"id":"x"}],"last":1})", {"list"}),
              HasSubstr("not as this eventctl expects"));
  EXPECT_THAT(saysWith("", {"list"}), HasSubstr("not as this eventctl expects"));
}

TEST_F(Daemon, IsToldOfAnUnknownDataSelectionInThisProgramsWords) {
  always(problem(404, "unknown-data-selection", "data selection 9 does not exist; PUT it"));
  const Outcome outcome = run({"list", "--dsid", "9"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "eventctl: data selection 9 does not exist in the dataselection table; add it with: "
            "eventctl dataselection add 9\n");
}

// The daemon stored the events and died before its answer was out.
TEST_F(DaemonImport, SettlesALostAnswerWithTheSameKey) {
  std::atomic<int> posts{0};
  const FakeDaemon& daemon = answer([&](const FakeRequest&) -> std::optional<FakeAnswer> {
    if (++posts < 3) return std::nullopt;
    return FakeAnswer{201, R"({"ids":[7,8]})"};
  });
  EXPECT_EQ(output({"import", "-"}, {.input = serverStatus("a") + "\n" + serverStatus("b") + "\n"}),
            "Imported 2, refused 0.\n");
  const auto requests = daemon.requests();
  ASSERT_THAT(requests, SizeIs(3));
  EXPECT_EQ(requests[0].line, "POST /v1/queues/0/events");
  EXPECT_EQ(requests[0].body, serverStatus("a") + "\n" + serverStatus("b") + "\n");
  EXPECT_THAT(requests[0].header("Idempotency-Key"), StartsWith("eventctl-"));
  for (const FakeRequest& request : requests) {
    EXPECT_EQ(request.header("Idempotency-Key"), requests[0].header("Idempotency-Key"));
    EXPECT_EQ(request.body, requests[0].body);
  }
}

TEST_F(DaemonImport, GivesEachBatchAKeyOfItsOwn) {
  const FakeDaemon& daemon = answer([](const FakeRequest& request) {
    std::string ids;
    for (const char c : request.body) {
      if (c == '\n') ids += ids.empty() ? "1" : ",1";
    }
    return FakeAnswer{201, R"({"ids":[)" + ids + "]}"};
  });
  std::string lines;
  for (int i = 0; i < 1200; ++i) lines += serverStatus("a") + "\n";
  EXPECT_EQ(output({"import", write("e", lines).string()}), "Imported 1,200, refused 0.\n");
  std::set<std::string> keys;
  std::size_t bytes = 0;
  for (const FakeRequest& request : daemon.requests()) {
    keys.insert(request.header("Idempotency-Key"));
    bytes += request.body.size();
  }
  EXPECT_EQ(keys.size(), daemon.requests().size());
  EXPECT_EQ(bytes, lines.size());
  EXPECT_LT(daemon.requests().size(), 20u);
  EXPECT_GT(daemon.requests().size(), 2u);
}

TEST_F(DaemonImport, WaitsWhenToldThatItIsTooMuch) {
  std::atomic<int> posts{0};
  answer([&](const FakeRequest&) {
    if (++posts < 3) return problem(429, "too-many-requests", "slower");
    return FakeAnswer{201, R"({"ids":[7]})"};
  });
  EXPECT_EQ(output({"import", "-"}, {.input = serverStatus("a") + "\n"}),
            "Imported 1, refused 0.\n");
  EXPECT_EQ(posts, 3);
}

TEST_F(DaemonImport, NamesTheLineThatTheDaemonDoesNotTakeAndStoresTheOthers) {
  const FakeDaemon& daemon = answer([](const FakeRequest& request) {
    const bool isWrong = request.body.find("server:b;") != std::string::npos;
    if (!isWrong) return FakeAnswer{201, R"({"ids":[7]})"};
    const bool isFirst = request.body.find("server:a;") == std::string::npos;
    return problem(422, "invalid-event", "no such server",
                   isFirst ? R"(,"index":0)" : R"(,"index":1)");
  });
  const Outcome outcome =
      run({"import", "-"}, {.input = "#\n" + serverStatus("a") + "\n" + serverStatus("b") + "\n" +
                                     serverStatus("c") + "\n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "eventctl: standard input:3: no such server\n");
  EXPECT_EQ(outcome.out, "Imported 2, refused 1.\n");
  std::string stored;
  for (const FakeRequest& request : daemon.requests()) {
    if (request.body.find("server:b;") == std::string::npos) stored += request.body;
  }
  EXPECT_EQ(stored, serverStatus("a") + "\n" + serverStatus("c") + "\n");
}

TEST_F(DaemonImport, CountsWhatFindsTheQueueFull) {
  answer([](const FakeRequest& request) {
    const bool isFirst = request.body.find("server:a;") != std::string::npos;
    return problem(507, "queue-full", "full", isFirst ? R"(,"ids":[5])" : R"(,"ids":[])");
  });
  const Outcome outcome = run(
      {"import", "-"},
      {.input = serverStatus("a") + "\n" + serverStatus("b") + "\n" + serverStatus("c") + "\n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "Imported 1, refused 2.\n");
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("standard input:2: the global queue is full"),
                                 HasSubstr("in all 2 events found the queue full")));
}

TEST_F(DaemonImport, SendsSmallerPiecesWhereABodyIsTooLarge) {
  answer([](const FakeRequest& request) {
    const auto lines = std::count(request.body.begin(), request.body.end(), '\n');
    if (lines > 1) return problem(413, "payload-too-large", "too large");
    return FakeAnswer{201, R"({"ids":[7]})"};
  });
  std::string lines;
  for (int i = 0; i < 5; ++i) lines += serverStatus("a") + "\n";
  EXPECT_EQ(output({"import", "-"}, {.input = lines}), "Imported 5, refused 0.\n");
}

TEST_F(DaemonImport, DoesWithoutKeysInClusterMode) {
  const FakeDaemon& daemon = answer([](const FakeRequest& request) {
    if (request.line == "GET /v1/cluster") return FakeAnswer{200, R"({"clustered":true})"};
    if (!request.header("Idempotency-Key").empty()) {
      return problem(400, "bad-request", "no keys in cluster mode");
    }
    return FakeAnswer{201, R"({"ids":[7]})"};
  });
  const Outcome outcome = run({"import", "-"}, {.input = serverStatus("a") + "\n"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(daemon.lines(), ElementsAre("POST /v1/queues/0/events", "GET /v1/cluster",
                                          "POST /v1/queues/0/events"));
}

TEST_F(DaemonImport, SaysThatAnEventMayBeStoredWhereNobodyCanTell) {
  answer([posts = 0](const FakeRequest& request) mutable -> std::optional<FakeAnswer> {
    if (request.line == "GET /v1/cluster") return FakeAnswer{200, R"({"clustered":true})"};
    if (++posts > 1) return std::nullopt;
    return problem(400, "bad-request", "no keys in cluster mode");
  });
  const Outcome outcome = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("whether the events were stored is not known"));
}

TEST_F(DaemonImport, SaysThatAnEventMayBeStoredWhereTheDaemonDoesNotKnow) {
  always(problem(500, "store-failed", "a flush failed"));
  const Outcome unknown = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(unknown.status, 1);
  EXPECT_EQ(unknown.err,
            "eventctl: a flush failed; whether the events were stored is not known: eventctl list "
            "shows them\n");
  m_daemon.reset();
  std::filesystem::remove(socket());
  always(problem(500, "store-failed", "the disk is full", R"(,"ids":[])"));
  const Outcome known = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(known.status, 1);
  EXPECT_EQ(known.err, "eventctl: the event was not stored by the daemon: the disk is full\n");
}

TEST_F(DaemonConsume, PrintsBeforeItDeletes) {
  const FakeDaemon& daemon = answer([](const FakeRequest& request) {
    return request.line.starts_with("DELETE") ? FakeAnswer{204, ""}
                                              : FakeAnswer{200, pageOf(3, "a")};
  });
  EXPECT_EQ(run({"consume"}, {.out = Surroundings::Out::kBrokenPipe}).status, 1);
  EXPECT_THAT(daemon.lines(), ElementsAre("GET /v1/queues/0/events?after=0&limit=1"));
  EXPECT_THAT(output({"consume", "--limit", "1", "--json"}), HasSubstr("server:a"));
  EXPECT_THAT(daemon.lines(), ElementsAre("GET /v1/queues/0/events?after=0&limit=1",
                                          "GET /v1/queues/0/events?after=0&limit=1",
                                          "DELETE /v1/queues/0/events/3"));
}

TEST_F(DaemonConsume, SettlesADeleteWhoseAnswerIsLost) {
  std::atomic<int> deletes{0};
  answer([&](const FakeRequest& request) -> std::optional<FakeAnswer> {
    if (!request.line.starts_with("DELETE")) {
      return FakeAnswer{200, deletes == 0 ? pageOf(3, "a") : kEmptyPage};
    }
    if (++deletes == 1) return std::nullopt;
    return problem(404, "not-found", "there is no event 3");
  });
  EXPECT_THAT(jsonLines(output({"consume", "--json"})), SizeIs(1));
  EXPECT_EQ(deletes, 2);
}

TEST_F(DaemonConsume, FollowsByWaitingAtTheDaemonAndOutlastsItsAbsence) {
  std::atomic<int> stage{0};
  answer([&](const FakeRequest& request) -> std::optional<FakeAnswer> {
    if (request.line.starts_with("DELETE")) return FakeAnswer{204, ""};
    if (request.line.find("&wait=") != std::string::npos) return FakeAnswer{200, kEmptyPage};
    switch (++stage) {
      case 1:
        return FakeAnswer{200, pageOf(1, "first")};
      case 3:
      case 4:
        return std::nullopt;
      case 6:
        return FakeAnswer{200, pageOf(2, "second")};
      default:
        return FakeAnswer{200, kEmptyPage};
    }
  });
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("second"));
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(2));
  const auto told = linesOf(outcome.err);
  ASSERT_THAT(told, SizeIs(2)) << outcome.err;
  EXPECT_THAT(told[0], HasSubstr("does not answer"));
  EXPECT_THAT(told[0], HasSubstr("; trying again"));
  EXPECT_EQ(told[1], "eventctl: the daemon answers again");
}

// The answer to a wait is not waited for when a signal comes.
TEST_F(DaemonConsume, EndsInTheMiddleOfAWait) {
  std::mutex held;
  std::unique_lock hold(held);
  FakeDaemon& daemon = answer([&](const FakeRequest& request) -> std::optional<FakeAnswer> {
    if (request.line.find("&wait=") != std::string::npos) std::lock_guard wait(held);
    return FakeAnswer{200, kEmptyPage};
  });
  Program follower(at({"consume", "--follow"}));
  while (daemon.requests().size() < 2) std::this_thread::yield();
  follower.signal(SIGINT);
  EXPECT_EQ(follower.wait().status, 0);
  hold.unlock();
}

// It takes the connection and the request, and then says nothing.
TEST_F(Daemon, IsNotWaitedForWhereItSaysNothing) {
  std::promise<void> over;
  answer([wait = over.get_future().share()](const FakeRequest&) {
    wait.wait();
    return std::nullopt;
  });
  std::vector<std::unique_ptr<Program>> programs;
  for (const Arguments& command : commandsOfADaemon()) {
    Arguments arguments = command;
    arguments.insert(arguments.end(), {"--timeout", "0.1"});
    programs.push_back(std::make_unique<Program>(at(arguments)));
  }
  for (const auto& program : programs) {
    const Outcome outcome = program->wait();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("nothing came from it within the time limit"));
  }
  over.set_value();
}

// Nobody takes the connections of a process that is stopped, until no more of them fit.
TEST_F(DaemonLookUp, EndsWhereNobodyTakesConnections) {
  std::filesystem::create_directories(home());
  const StoppedListener listener(socket());
  const Outcome outcome = run({"list", "--timeout", "0.1"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("does not answer"));
}

TEST_F(Daemon, IsWaitedForAsLongAsItLivesWhereTheWorkIsLong) {
  std::promise<void> asked;
  std::once_flag once;
  answer([&, wait = asked.get_future().share()](const FakeRequest& request) {
    if (request.line == "GET /healthz") {
      std::call_once(once, [&] { asked.set_value(); });
    } else {
      wait.wait();
    }
    return FakeAnswer{200, R"({"fix":false,"remaining":0,"findings":[]})"};
  });
  EXPECT_EQ(output({"check", "--timeout", "1"}), "No problems found.\n");
}

TEST_F(Daemon, DeletesManyEventsAtOnce) {
  const FakeDaemon& daemon = answer([](const FakeRequest& request) {
    if (request.line.starts_with("DELETE")) return FakeAnswer{200, R"({"deleted":1,"last":3})"};
    const bool isFirst = request.line.find("after=0&") != std::string::npos;
    return FakeAnswer{200, isFirst ? pageOf(3, "a") : kEmptyPage};
  });
  EXPECT_EQ(output({"purge", "--yes"}),
            "Deleted 1 event of the global queue, id 3: 1 serverstatus.\n");
  EXPECT_EQ(daemon.lines().back(), "DELETE /v1/queues/0/events?upto=3");
}

TEST_F(Daemon, ShowsBytesThatAreNoUtf8AsTheyAre) {
  std::string page = pageOf(3, "caf?");
  const std::string text =
      "EVENT{version:1;type:4;id:3;date:1700000000;SERVERSTATUSEVENT{state:1;server:caf\xe9;}}";
  std::string hex;
  for (const char c : text) {
    constexpr const char* kDigits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    hex.append({kDigits[byte >> 4], kDigits[byte & 15]});
  }
  page.insert(page.find(R"("eventString")"), R"("eventStringHex":")" + hex + R"(",)");
  answer([page](const FakeRequest& request) {
    const bool isFirst = request.line.find("after=0&") != std::string::npos;
    return FakeAnswer{200, isFirst ? page : kEmptyPage};
  });
  EXPECT_EQ(output({"export"}), "dsid=0 " + text + "\n");
}

}  // namespace
}  // namespace EventSystemTest
