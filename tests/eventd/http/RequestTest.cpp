// Requests over real sockets: what is answered, in which order, and what is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>

#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(Request, IsAnswered) {
  TestServer server;
  RawClient client = server.client();
  const Reply reply = client.ask("/hello");
  EXPECT_EQ(200u, reply.status);
  EXPECT_EQ("hello", reply.body);
  EXPECT_EQ("text/plain", reply.headers.at("content-type"));
  EXPECT_EQ("keep-alive", reply.headers.at("connection"));
  EXPECT_EQ(29u, reply.headers.at("date").size());
}

TEST(Request, ReachesTheHandlerDecoded) {
  TestServer server;
  RawClient client(server.port());
  client.send("PUT /a%20b?x=1&y=%26 HTTP/1.1\r\nHost: h\r\nContent-Length: 4\r\n\r\nbody");
  EXPECT_EQ("PUT /a b [x=1] [y=&]\nbody", client.reply().body);
}

TEST(Request, MayNameTheServerInItsTarget) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET http://example:80/a?b=c HTTP/1.1\r\nHost: example:80\r\n\r\n");
  EXPECT_EQ("GET /a [b=c]\n", client.reply().body);
}

TEST(Request, FollowsAnotherOnTheSameConnection) {
  TestServer server;
  RawClient client = server.client();
  for (int i = 0; i < 3; ++i) EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_EQ(1u, server.server().figures().connectionsOpened);
  EXPECT_EQ(3u, server.server().figures().requests);
}

TEST(Request, EndsTheConnectionWhenItSaysSo) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /hello HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  const Reply reply = client.reply();
  EXPECT_EQ("hello", reply.body);
  EXPECT_EQ("close", reply.headers.at("connection"));
  EXPECT_EQ("", client.rest());
}

TEST(Request, OfTheOldVersionEndsTheConnectionUnlessItSaysOtherwise) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /hello HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
  EXPECT_EQ("hello", client.reply().body);
  client.send("GET /hello HTTP/1.0\r\n\r\n");
  EXPECT_EQ("hello", client.reply().body);
  EXPECT_EQ("", client.rest());
}

TEST(PipelinedRequests, AreAnsweredInOrder) {
  TestServer server;
  RawClient client = server.client();
  std::string requests;
  for (int i = 0; i < 2000; ++i) {
    requests += "GET /" + std::to_string(i) + " HTTP/1.1\r\nHost: h\r\n\r\n";
  }
  ASSERT_TRUE(client.send(requests));
  for (int i = 0; i < 2000; ++i) {
    ASSERT_EQ("GET /" + std::to_string(i) + "\n", client.reply().body);
  }
}

TEST(PipelinedRequests, WaitForTheOneBeforeThem) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /wait HTTP/1.1\r\nHost: h\r\n\r\nGET /hello HTTP/1.1\r\nHost: h\r\n\r\n");
  const auto exchange = server.keptOne();
  EXPECT_EQ(1u, server.server().figures().requests);
  exchange->respond({200, "text/plain", "first", {}});
  EXPECT_EQ("first", client.reply().body);
  EXPECT_EQ("hello", client.reply().body);
}

// One that is read while the one before it is answered is followed by a read of the one after it.
TEST(PipelinedRequests, AreReadWholeWhenTheyArriveDuringAnAnswer) {
  TestServer server;
  RawClient client = server.client();
  const std::string second = "POST /echo HTTP/1.1\r\nHost: h\r\nContent-Length: 6\r\n\r\nsecond";
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(client.get("/wait"));
    const auto exchange = server.keptOne();
    const auto before = server.server().figures().bytesIn;
    ASSERT_TRUE(client.send(second));
    ASSERT_TRUE(
        eventually([&] { return server.server().figures().bytesIn == before + second.size(); }));
    exchange->respond({200, "text/plain", "first", {}});
    EXPECT_EQ("first", client.reply().body);
    EXPECT_EQ("POST /echo\nsecond", client.reply().body);
    EXPECT_EQ("GET /third\n", client.ask("/third").body);
  }
}

TEST(PipelinedRequests, AreAnsweredToAClientThatSendsNoMore) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /hello HTTP/1.1\r\nHost: h\r\n\r\nGET /1 HTTP/1.1\r\nHost: h\r\n\r\n");
  client.finishSending();
  EXPECT_EQ("hello", client.reply().body);
  EXPECT_EQ("GET /1\n", client.reply().body);
  EXPECT_EQ("", client.rest());
}

TEST(HeadRequest, IsAnsweredWithoutABody) {
  TestServer server;
  RawClient client = server.client();
  client.send("HEAD /hello HTTP/1.1\r\nHost: h\r\n\r\n");
  const Reply reply = client.reply(true);
  EXPECT_EQ("5", reply.headers.at("content-length"));
  EXPECT_EQ("hello", client.ask("/hello").body);
}

TEST(ChunkedBody, IsPutTogether) {
  TestServer server;
  RawClient client = server.client();
  client.send("POST /echo HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n");
  client.send("3\r\nabc\r\n");
  client.send("2\r\nde\r\n0\r\n\r\n");
  EXPECT_EQ("POST /echo\nabcde", client.reply().body);
  EXPECT_EQ("hello", client.ask("/hello").body);
}

TEST(Body, MayBeAsLongAsGranted) {
  Http::Limits limits;
  limits.bodyBytes = 1u << 20;
  TestServer server(limits);
  RawClient client = server.client();
  std::string body(limits.bodyBytes, 'x');
  body.back() = 'y';
  const std::string head = "POST /e HTTP/1.1\r\nHost: h\r\nContent-Length: ";
  ASSERT_TRUE(client.send(head + std::to_string(body.size()) + "\r\n\r\n" + body));
  EXPECT_EQ("POST /e\n" + body, client.reply().body);
}

TEST(Expectation, IsMetBeforeTheBodyComes) {
  TestServer server;
  RawClient client = server.client();
  client.send("POST /e HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 1\r\n\r\n");
  EXPECT_EQ(100u, client.reply(false, true).status);
  client.send("x");
  EXPECT_EQ("POST /e\nx", client.reply(false, true).body);
}

TEST(Expectation, IsPassedOverWhereTheBodyIsThere) {
  TestServer server;
  RawClient client = server.client();
  client.send("POST /e HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 1\r\n\r\nx");
  EXPECT_EQ(200u, client.reply(false, true).status);
}

TEST(Expectation, OfTooMuchIsNotMet) {
  Http::Limits limits;
  limits.bodyBytes = 10;
  TestServer server(limits);
  RawClient client = server.client();
  client.send("POST /e HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 11\r\n\r\n");
  EXPECT_EQ(413u, client.reply(false, true).status);
}

struct RefusedCase {
  const char* name;
  std::string request;
  unsigned status;
};

void PrintTo(const RefusedCase& one, std::ostream* out) {
  *out << one.name;
}

struct UnsendableCase {
  const char* name;
  Http::Response response;
};

void PrintTo(const UnsendableCase& one, std::ostream* out) {
  *out << one.name;
}

constexpr auto kNameOf = [](const auto& instance) { return std::string(instance.param.name); };

class RefusedRequest : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedRequest, IsAnsweredAndEndsTheConnection) {
  Http::Limits limits;
  limits.bodyBytes = 1000;
  TestServer server(limits);
  RawClient client = server.client();
  client.send(GetParam().request);
  const Reply reply = client.reply();
  EXPECT_EQ(GetParam().status, reply.status);
  EXPECT_EQ("close", reply.headers.at("connection"));
  EXPECT_EQ("", client.rest());
  EXPECT_EQ(0u, server.server().figures().requests);
  EXPECT_EQ(1u, server.server().figures().requestsRefused);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RefusedRequest,
    ::testing::Values(
        RefusedCase{"BadEscape", "GET /%zz HTTP/1.1\r\nHost: h\r\n\r\n", 400},
        RefusedCase{"SecondHost", "GET / HTTP/1.1\r\nHost: h\r\nHost: g\r\n\r\n", 400},
        RefusedCase{"SecondAuthorization",
                    "GET / HTTP/1.1\r\nHost: h\r\nAuthorization: Bearer a\r\n"
                    "authorization: Bearer b\r\n\r\n",
                    400},
        RefusedCase{"LengthAndChunked",
                    "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 5\r\n"
                    "Transfer-Encoding: chunked\r\n\r\n0\r\n\r\nGET /hello HTTP/1.1\r\n\r\n",
                    400},
        RefusedCase{"LongHead",
                    "GET / HTTP/1.1\r\nHost: h\r\nX: " + std::string(20000, 'x') + "\r\n\r\n", 431},
        RefusedCase{"LongBody", "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 1001\r\n\r\n", 413},
        RefusedCase{"OtherEncoding",
                    "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: gzip\r\n\r\n", 501},
        RefusedCase{"OtherVersion", "GET / HTTP/3.0\r\nHost: h\r\n\r\n", 505}),
    kNameOf);

// Whoever sends a body that is too long is still sending when the answer comes.
TEST(RefusedBody, IsReadOnUntilItsClientHangsUp) {
  Http::Limits limits;
  limits.bodyBytes = 1000;
  limits.lingerTime = std::chrono::hours(1);
  TestServer server(limits);
  RawClient client(server.port());
  client.send("POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 1000000\r\n\r\n");
  EXPECT_EQ(413u, client.reply().status);
  EXPECT_EQ("", client.rest());
  EXPECT_TRUE(client.send(std::string(1000000, 'x')));
  EXPECT_TRUE(eventually([&] { return server.server().figures().bytesIn > 1000000; }));
  EXPECT_EQ(1u, server.server().figures().connectionsOpen);
  client.close();
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
}

TEST(RefusedBody, IsNotReadForEver) {
  Http::Limits limits;
  limits.bodyBytes = 1000;
  limits.lingerTime = std::chrono::milliseconds(20);
  TestServer server(limits);
  RawClient client(server.port());
  client.send("POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 1000000\r\n\r\n");
  EXPECT_EQ(413u, client.reply().status);
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
}

TEST(Refusal, IsWordedByWhoeverIsAsked) {
  TestServer server({}, [](Http::Server& one) {
    one.onRefusal([](unsigned status, const std::string& detail) {
      return Http::Response{status, "application/problem+json", "{" + detail + "}", {}};
    });
  });
  RawClient client = server.client();
  const Reply reply = client.ask("/%zz");
  EXPECT_EQ(400u, reply.status);
  EXPECT_EQ("application/problem+json", reply.headers.at("content-type"));
  EXPECT_THAT(reply.body, HasSubstr("hexadecimal"));
}

TEST(Bodies, AreBoundedTogether) {
  Http::Limits limits;
  limits.bodiesBytes = 1500;
  TestServer server(limits);
  const std::string request =
      "POST /wait HTTP/1.1\r\nHost: h\r\nContent-Length: 1000\r\n\r\n" + std::string(1000, 'x');
  RawClient first = server.client();
  first.send(request);
  auto exchange = server.keptOne();
  RawClient second = server.client();
  second.send(request);
  EXPECT_EQ(503u, second.reply().status);
  exchange->respond({});
  EXPECT_EQ(200u, first.reply().status);
  exchange.reset();
  RawClient third = server.client();
  third.send(request);
  server.keptOne()->respond({});
  EXPECT_EQ(200u, third.reply().status);
}

TEST(Admission, AnswersBeforeTheBodyComes) {
  TestServer server({}, [](Http::Server& one) {
    one.onAdmission([](const Http::Request& head) -> std::optional<Http::Response> {
      if (head.header("Authorization") == "yes") return std::nullopt;
      return Http::Response{401, "", "", {{"WWW-Authenticate", "Bearer"}}};
    });
  });
  RawClient client = server.client();
  EXPECT_EQ(401u, client.ask("/hello").status);
  client.send("GET /hello HTTP/1.1\r\nHost: h\r\nAuthorization: yes\r\n\r\n");
  EXPECT_EQ(200u, client.reply().status) << "the connection goes on after a request without a body";
  client.send("POST /e HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\n");
  const Reply refused = client.reply();
  EXPECT_EQ(401u, refused.status);
  EXPECT_EQ("Bearer", refused.headers.at("www-authenticate"));
  EXPECT_EQ("close", refused.headers.at("connection"));
  EXPECT_EQ("", client.rest());
  EXPECT_EQ(1u, server.server().figures().requests);
}

TEST(Admission, ThatFailsAdmitsNobody) {
  TestServer server({}, [](Http::Server& one) {
    one.onAdmission([](const Http::Request&) -> std::optional<Http::Response> {
      throw std::runtime_error("no list of tokens");
    });
  });
  EXPECT_EQ(500u, server.client().ask("/hello").status);
  EXPECT_THAT(server.complaints(), ElementsAre(HasSubstr("no list of tokens")));
}

TEST(Handler, ThatThrowsIsAnsweredFor) {
  TestServer server;
  RawClient client = server.client();
  EXPECT_EQ(500u, client.ask("/throw").status);
  EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_THAT(server.complaints(), ElementsAre("GET /throw failed: a handler's error"));
}

TEST(Handler, ThatLetsGoOfARequestIsAnsweredFor) {
  TestServer server;
  RawClient client = server.client();
  EXPECT_EQ(500u, client.ask("/drop").status);
  EXPECT_EQ("hello", client.ask("/hello").body);
}

TEST(Answer, ComesOnce) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  exchange->respond({200, "", "first", {}});
  exchange->respond({200, "", "second", {}});
  exchange->startStream({});
  EXPECT_FALSE(exchange->send("third"));
  EXPECT_EQ("first", client.reply().body);
  exchange->respond({200, "", "fourth", {}});
  EXPECT_EQ("hello", client.ask("/hello").body);
}

TEST(Answer, MayHaveHeadersButNotTheServers) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond({201, "a/b", "x", {{"Location", "/1"}, {"content-length", "7"}}});
  const Reply reply = client.reply();
  EXPECT_EQ(201u, reply.status);
  EXPECT_EQ("/1", reply.headers.at("location"));
  EXPECT_EQ("1", reply.headers.at("content-length"));
  EXPECT_EQ("x", reply.body);
}

TEST(Answer, WithoutContentHasNone) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond({204, "", "left out", {}});
  const Reply reply = client.reply();
  EXPECT_EQ(204u, reply.status);
  EXPECT_EQ(0u, reply.headers.count("content-length"));
  EXPECT_EQ("hello", client.ask("/hello").body);
}

class UnsendableAnswer : public ::testing::TestWithParam<UnsendableCase> {};

TEST_P(UnsendableAnswer, IsNotSent) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond(GetParam().response);
  EXPECT_EQ(500u, client.reply().status);
  client.get("/wait");
  const auto exchange = server.keptOne();
  exchange->startStream(GetParam().response);
  EXPECT_EQ(500u, client.reply().status);
  EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_EQ(2u, server.complaints().size());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UnsendableAnswer,
    ::testing::Values(UnsendableCase{"SplitByAValue", {200, "", "", {{"X", "a\r\nSet-Cookie: b"}}}},
                      UnsendableCase{"SplitByAName", {200, "", "", {{"X: y\r\nZ", "a"}}}},
                      UnsendableCase{"NoName", {200, "", "", {{"", "a"}}}},
                      UnsendableCase{"SplitByItsType", {200, "a\nb", "", {}}},
                      UnsendableCase{"Interim", {100, "", "", {}}},
                      UnsendableCase{"NoStatus", {1000, "", "", {}}}),
    kNameOf);

}  // namespace
}  // namespace EventSystemTest
