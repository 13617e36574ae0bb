// TLS: what is spoken, whose certificates are taken, and what a connection may cost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/eventd/http/Certificates.h"
#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;

class Tls : public ::testing::Test {
 protected:
  Tls() {
    certificates.sign("server", "server one", "serverAuth");
    certificates.sign("client", "dashboard", "clientAuth");
  }

  Http::TlsFiles files(bool withClients) const {
    return {certificates.file("server.crt"), certificates.file("server.key"),
            withClients ? certificates.authority() : std::filesystem::path()};
  }

  void start(bool withClients = false, const Http::Limits& limits = {}) {
    server.emplace(limits, [&](Http::Server& one) {
      port = one.listenTls("127.0.0.1", 0, files(withClients));
    });
  }

  // With the client certificate of that name, or none.
  RawClient client(const std::string& name = "", int mostVersion = TLS1_3_VERSION) {
    RawClient made(port);
    handshaken = made.startTls(certificates.authority(),
                               name.empty() ? "" : certificates.file(name + ".crt"),
                               certificates.file(name + ".key"), mostVersion);
    return made;
  }

  // What the server takes the client for: "/wait", and then its peer.
  std::string nameOf(const std::string& certificate) {
    RawClient one = client(certificate);
    one.get("/wait");
    const auto exchange = server->keptOne();
    EXPECT_EQ(Http::Peer::Via::kTls, exchange->request().peer->via);
    exchange->respond({});
    EXPECT_EQ(200u, one.reply().status);
    return exchange->request().peer->certificate;
  }

  Certificates certificates;
  std::optional<TestServer> server;
  std::uint16_t port = 0;
  bool handshaken = false;
};

std::string subjectOf(const RawClient& client) {
  const std::unique_ptr<X509, decltype(&X509_free)> certificate(
      SSL_get1_peer_certificate(client.tls()), &X509_free);
  std::array<char, 256> text{};
  X509_NAME_oneline(X509_get_subject_name(certificate.get()), text.data(), text.size());
  return text.data();
}

TEST_F(Tls, CarriesRequests) {
  start();
  for (const int version : {TLS1_2_VERSION, TLS1_3_VERSION}) {
    RawClient one = client("", version);
    ASSERT_TRUE(handshaken);
    EXPECT_EQ(version, SSL_version(one.tls()));
    EXPECT_EQ("hello", one.ask("/hello").body);
    EXPECT_EQ("hello", one.ask("/hello").body);
  }
  EXPECT_EQ("", nameOf(""));
}

TEST_F(Tls, CarriesLongBodiesBothWays) {
  start();
  RawClient one = client();
  std::string body(1u << 20, 'x');
  body += "end";
  one.send("POST /e HTTP/1.1\r\nHost: h\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body);
  EXPECT_EQ("POST /e\n" + body, one.reply().body);
}

TEST_F(Tls, CarriesStreams) {
  start();
  RawClient one = client();
  one.get("/stream");
  const auto exchange = server->keptOne();
  one.reply(true);
  exchange->send("one");
  EXPECT_EQ("one", one.chunks(3));
  exchange->endStream();
  EXPECT_EQ("", one.chunks(1));
  EXPECT_EQ("hello", one.ask("/hello").body);
}

TEST_F(Tls, NoticesAHangUp) {
  start();
  for (const char* path : {"/wait", "/stream"}) {
    RawClient one = client();
    one.get(path);
    const auto exchange = server->keptOne();
    one.close();
    EXPECT_TRUE(eventually([&] { return server->closed == 1; })) << path;
    server->closed = 0;
  }
}

TEST_F(Tls, SpeaksNoOldVersion) {
  start();
  RawClient one(port);
  EXPECT_FALSE(one.startTls(certificates.authority(), "", "", TLS1_1_VERSION));
  EXPECT_TRUE(eventually([&] { return server->server().figures().handshakesFailed == 1; }));
}

TEST_F(Tls, EndsWithANotice) {
  start();
  RawClient one = client();
  one.send("GET /hello HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  EXPECT_EQ("hello", one.reply().body);
  EXPECT_EQ("", one.rest());
  EXPECT_EQ(SSL_RECEIVED_SHUTDOWN, SSL_get_shutdown(one.tls()) & SSL_RECEIVED_SHUTDOWN);
}

TEST_F(Tls, AnswersARefusedRequest) {
  start();
  RawClient one = client();
  one.send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(400u, one.reply().status);
}

TEST_F(Tls, KnowsClientsByTheirCertificates) {
  start(true);
  EXPECT_EQ("dashboard", nameOf("client"));
  EXPECT_EQ("", nameOf("")) << "a client without one is served, too";
}

TEST_F(Tls, AsksForNoCertificateWithoutAnAuthority) {
  start(false);
  EXPECT_EQ("", nameOf("client"));
}

// With TLS 1.3 a client learns only afterwards that its certificate was refused.
TEST_F(Tls, RefusesCertificatesOfOthers) {
  const Certificates others;
  others.sign("client", "dashboard", "clientAuth");
  std::filesystem::copy(others.file("client.crt"), certificates.file("stranger.crt"));
  std::filesystem::copy(others.file("client.key"), certificates.file("stranger.key"));
  certificates.sign("expired", "dashboard", "clientAuth", -1);
  certificates.sign("misused", "dashboard", "serverAuth");
  start(true);
  for (const char* name : {"stranger", "expired", "misused"}) {
    RawClient one = client(name);
    EXPECT_EQ(0u, one.ask("/hello").status) << name;
  }
  EXPECT_TRUE(eventually([&] { return server->server().figures().handshakesFailed == 3; }));
  EXPECT_EQ(0u, server->server().figures().requests);
}

TEST_F(Tls, TakesNewCertificatesForNewConnections) {
  start();
  RawClient old = client();
  EXPECT_THAT(subjectOf(old), HasSubstr("server one"));
  certificates.sign("server", "server two", "serverAuth");
  server->server().reloadTls();
  EXPECT_THAT(subjectOf(client()), HasSubstr("server two"));
  EXPECT_EQ("hello", old.ask("/hello").body);
}

TEST_F(Tls, KeepsItsCertificateWhenTheNewOneIsNoGood) {
  start();
  std::ofstream(certificates.file("server.key")) << "no key";
  EXPECT_THROW(server->server().reloadTls(), Http::ServerError);
  EXPECT_EQ("hello", client().ask("/hello").body);
}

TEST_F(Tls, NamesTheFileThatIsNoGood) {
  certificates.sign("other", "other", "serverAuth");
  std::ofstream(certificates.file("empty")).flush();
  Http::Server one(
      {}, [](const auto&) {}, 1);
  const auto messageFor = [&](const Http::TlsFiles& given) -> std::string {
    try {
      one.listenTls("127.0.0.1", 0, given);
      return "taken";
    } catch (const Http::ServerError& error) {
      return error.what();
    }
  };
  Http::TlsFiles bad = files(true);
  bad.certificate = certificates.file("empty");
  EXPECT_THAT(messageFor(bad), HasSubstr("/empty"));
  bad = files(true);
  bad.key = certificates.file("missing");
  EXPECT_THAT(messageFor(bad), HasSubstr("/missing"));
  bad = files(true);
  bad.key = certificates.file("other.key");
  EXPECT_THAT(messageFor(bad), HasSubstr("mismatch"));
  bad = files(true);
  bad.clientAuthority = certificates.file("empty");
  EXPECT_THAT(messageFor(bad), HasSubstr("/empty"));
}

TEST_F(Tls, HandshakeIsBoundedInTime) {
  Http::Limits limits;
  limits.handshakeTime = std::chrono::milliseconds(30);
  start(false, limits);
  RawClient silent(port);
  EXPECT_EQ("", silent.rest());
  RawClient begun(port);
  begun.send("\x16\x03\x01\x02");
  EXPECT_EQ("", begun.rest());
}

TEST_F(Tls, ClosesOnWhatIsNoTls) {
  start();
  RawClient plain(port);
  plain.get("/hello");
  EXPECT_THAT(plain.rest(), ::testing::Not(HasSubstr("hello")));
  EXPECT_TRUE(eventually([&] { return server->server().figures().connectionsOpen == 0; }));
}

TEST_F(Tls, CountsAmongTheConnections) {
  Http::Limits limits;
  limits.connections = 1;
  start(false, limits);
  RawClient one = client();
  EXPECT_EQ("hello", one.ask("/hello").body);
  client();
  EXPECT_FALSE(handshaken);
}

TEST_F(Tls, OffersHttpByAlpn) {
  start();
  const std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context(SSL_CTX_new(TLS_client_method()),
                                                                  &SSL_CTX_free);
  static constexpr unsigned char kOffered[] = "\x02h2\x08http/1.1";
  SSL_CTX_set_alpn_protos(context.get(), kOffered, sizeof kOffered - 1);
  const std::unique_ptr<SSL, decltype(&SSL_free)> tls(SSL_new(context.get()), &SSL_free);
  const RawClient socket(port);
  SSL_set_fd(tls.get(), socket.descriptor());
  ASSERT_EQ(1, SSL_connect(tls.get()));
  const unsigned char* chosen = nullptr;
  unsigned length = 0;
  SSL_get0_alpn_selected(tls.get(), &chosen, &length);
  EXPECT_EQ("http/1.1", std::string(reinterpret_cast<const char*>(chosen), length));
}

}  // namespace
}  // namespace EventSystemTest
