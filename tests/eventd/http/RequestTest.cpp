// What requests may look like, and what becomes of those that may not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;

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

TEST(Request, ComesOverTcpToo) {
  TestServer server;
  EXPECT_EQ("hello", RawClient(server.port()).ask("/hello").body);
}

}  // namespace
}  // namespace EventSystemTest
