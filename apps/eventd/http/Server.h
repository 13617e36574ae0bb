// An HTTP/1.1 server on Unix sockets, TCP and TLS. A few threads serve thousands of connections;
// a request that waits for its answer, and a stream, cost a connection and no thread.
//
// It is strict in what it takes: a request that could be read in two ways is refused (RFC 9112).
//
// Thread safety: the on...() operations before the server is started; figures(), reloadTls() and
// stop() from any thread but the network threads; the others from one thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_SERVER_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_SERVER_H

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "apps/eventd/http/Exchange.h"
#include "apps/eventd/http/Figures.h"
#include "apps/eventd/http/Limits.h"
#include "apps/eventd/http/TlsFiles.h"

namespace EventApps::Http {

// Why a server cannot listen, in words for the operator: what is wrong, where, and what to do.
class ServerError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Server {
 public:
  // All of these are called on network threads, several at a time, and must not block.
  //
  // One for each request. What it throws is answered with 500 and told to the complaint.
  using Handler = std::function<void(std::shared_ptr<Exchange>)>;
  // The answer to a request that does not reach the handler (400, 408, 413, 417, 431, 501, 503,
  // 505), and to one whose handler has failed (500).
  using Refusal = std::function<Response(unsigned status, const std::string& detail)>;
  // Called when the head of a request is there and before its body is read; what it returns is the
  // answer, and the handler is not called. `head` has no body yet.
  using Admission = std::function<std::optional<Response>(const Request& head)>;
  // A line for the log.
  using Complaint = std::function<void(const std::string& message)>;

  Server(const Limits& limits, Handler handler, unsigned threads);
  ~Server();  // stop()
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void onRefusal(Refusal refusal);  // without one: plain text
  void onAdmission(Admission admission);
  void onComplaint(Complaint complaint);

  // Makes the socket file with this mode and, when one is named, this group, before anybody can
  // connect to it. A file on which nobody answers any more is replaced; one on which somebody does,
  // and what is no socket, is not: ServerError. stop() removes the file.
  void listenUnix(const std::filesystem::path& path, unsigned mode, const std::string& group = "");

  // Listen at every address that `host` has, a name or a number ("0.0.0.0", "::1"), and return the
  // port; port 0 takes any that is free. ServerError when there is none.
  std::uint16_t listenTcp(const std::string& host, std::uint16_t port);
  std::uint16_t listenTls(const std::string& host, std::uint16_t port, const TlsFiles& files);

  // Takes over a socket that listens already, Unix or TCP, and closes it in the end, also when it
  // throws ServerError because it is none. Its file is left alone.
  void adopt(int listeningDescriptor);

  // Reads the files of all TLS listeners again: new connections get what is in them now.
  // ServerError when one cannot be used; then all stay as they were.
  void reloadTls();

  void start();  // returns at once
  void run();    // start(), and returns when stop() was called by another thread

  // No new connections and no new requests; requests that are in work are answered, streams are
  // ended. What is not done after `grace` is cut off. Returns when no handler runs any more.
  // Exchanges that live on may be used: nothing comes of it. A server is not started again.
  void stop(std::chrono::milliseconds grace = std::chrono::seconds(10));

  Figures figures() const;

 private:
  class Parts;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace EventApps::Http

#endif
