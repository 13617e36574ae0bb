// A daemon that answers as a test tells it to, on a Unix socket: for what the real one does only
// when something goes wrong.
//
// Thread safety: the answers are made on a thread for each connection; the accessors are for any
// thread.

#ifndef EVENTSYSTEM_TESTS_E2E_FAKEDAEMON_H
#define EVENTSYSTEM_TESTS_E2E_FAKEDAEMON_H

#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace EventSystemTest {

struct FakeRequest {
  std::string line;  // "GET /v1/queues"
  std::string head;  // with the first line
  std::string body;

  // The value of a header, or the empty text.
  std::string header(const std::string& name) const;
};

struct FakeAnswer {
  int status = 200;
  std::string body = "{}";
  std::string headers = "";  // lines that end in \r\n
};

// An answer with a problem document.
FakeAnswer problem(int status, const std::string& kind, const std::string& detail,
                   const std::string& moreMembers = "");

class FakeDaemon {
 public:
  // Nothing: the connection is closed without an answer.
  using Answer = std::function<std::optional<FakeAnswer>(const FakeRequest&)>;

  FakeDaemon(const std::filesystem::path& socket, Answer answer);
  ~FakeDaemon();

  FakeDaemon(const FakeDaemon&) = delete;
  FakeDaemon& operator=(const FakeDaemon&) = delete;

  // What was asked for so far, in order.
  std::vector<FakeRequest> requests() const;
  std::vector<std::string> lines() const;

 private:
  void serve();  // connections until the test is over
  void serveConnection(int connection);
  bool answerOne(int connection, std::string& received);
  bool isReadable(int descriptor) const;

  Answer m_answer;
  int m_listening;
  int m_stopReading;
  int m_stopWriting;
  mutable std::mutex m_mutex;
  std::vector<FakeRequest> m_requests;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventSystemTest

#endif
