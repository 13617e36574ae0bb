// A client that sends what it is told to, byte by byte, and reads what comes.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_EVENTD_HTTP_RAWCLIENT_H
#define EVENTSYSTEM_TESTS_EVENTD_HTTP_RAWCLIENT_H

#include <openssl/ssl.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "apps/etcd_nodes/Descriptor.h"

namespace EventSystemTest {

struct Reply {
  unsigned status = 0;                         // 0: the connection ended before there was one
  std::map<std::string, std::string> headers;  // names in lower case
  std::string body;                            // without its framing
  bool whole = false;                          // it came up to its end
};

class RawClient {
 public:
  enum class Connect { kNow, kLater };

  explicit RawClient(const std::filesystem::path& unixSocket, Connect when = Connect::kNow);
  explicit RawClient(std::uint16_t port, const std::string& address = "127.0.0.1");

  void connect();  // where that was left for later

  // Goes on inside TLS, trusting `authority`; `certificate` and `key` are shown when not empty.
  // False when the handshake fails.
  bool startTls(const std::filesystem::path& authority, const std::filesystem::path& certificate,
                const std::filesystem::path& key, int mostVersion = TLS1_3_VERSION);
  SSL* tls() const { return m_tls.get(); }

  // False when the server has ended the connection.
  bool send(std::string_view bytes);
  bool get(const std::string& path) {
    return send("GET " + path + " HTTP/1.1\r\nHost: test\r\n\r\n");
  }

  // Waits for the next reply that is not 1xx, or with `interim` for any.
  Reply reply(bool toHead = false, bool interim = false);
  Reply ask(const std::string& path) { return get(path) ? reply() : Reply(); }

  // Waits for that many bytes of a stream's body, or its end.
  std::string chunks(std::size_t bytes);

  // Waits until the server ends the connection; what came until then.
  std::string rest();

  void finishSending();
  void close() { m_socket.close(); }
  void reset();  // the server reads an error
  std::uint16_t localPort() const;
  int descriptor() const { return m_socket.get(); }

 private:
  bool receive();
  bool receiveUntil(std::string_view mark);
  bool receiveBytes(std::size_t count);
  std::string take(std::size_t count);
  bool readChunk(std::string& body);

  EtcdNodes::Descriptor m_socket;
  std::filesystem::path m_path;  // of a Unix socket
  std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> m_context{nullptr, &SSL_CTX_free};
  std::unique_ptr<SSL, decltype(&SSL_free)> m_tls{nullptr, &SSL_free};
  std::string m_received;  // and not taken
};

}  // namespace EventSystemTest

#endif
