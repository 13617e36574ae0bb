#include <gtest/gtest.h>

#include <stdexcept>

#include "host/cluster/Endpoint.h"

namespace EventSystemHost {
namespace {

TEST(Endpoint, IsHostAndPort) {
  for (const char* text : {"host:2379", "127.0.0.1:1", "[::1]:1", "etcd-1.example:2379"}) {
    EXPECT_NO_THROW(checkEndpoint(text)) << text;
  }
}

TEST(Endpoint, IsNothingElse) {
  for (const char* text :
       {"", "host", "host:", ":1", "host:port", "http://host:1", "::1:1", "a/b:1", "host:1/",
        "[]:1", "a b:1", "[::1:1", "a:0", "a:65536", "a:99999", "a:-1"}) {
    EXPECT_THROW(checkEndpoint(text), std::runtime_error) << text;
  }
}

}  // namespace
}  // namespace EventSystemHost
