// A client that is sent events as they arrive, without a network.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "apps/eventd/api/EventStream.h"
#include "apps/eventd/metrics/Metrics.h"

namespace EventSystemTest {
namespace {

using namespace EventApps;
using namespace EventApps::Api;

// What a connection would be told.
class Heard : public Http::Exchange {
 public:
  const Http::Request& request() const override { return m_request; }
  void respond(Http::Response) override {}
  void startStream(Http::Response) override { m_open = true; }
  bool send(std::string chunk) override {
    if (m_open) sent += chunk;
    return m_open;
  }
  std::size_t unsent() const override { return 0; }
  void endStream() override { ended = ended || std::exchange(m_open, false); }
  void onClose(std::function<void()>) override {}

  std::string sent;
  bool ended = false;

 private:
  Http::Request m_request;
  bool m_open = false;
};

class EventStreamOfOne : public ::testing::Test {
 protected:
  Metrics metrics;
  RequestLog log{metrics};
  std::shared_ptr<Heard> heard = std::make_shared<Heard>();
  EventStream stream{std::make_shared<Call>(heard, log, std::nullopt, PathArguments()), 1000};
};

TEST_F(EventStreamOfOne, Ends) {
  stream.open(Subscription([] {}, [] {}));
  EXPECT_EQ(heard->sent, ": \n\n");
  EXPECT_FALSE(heard->ended);
  stream.end();
  EXPECT_TRUE(heard->ended);
}

// The queue may have no more to say before its client has been sent the head. Who was left with a
// stream that never ends would wait in vain.
TEST_F(EventStreamOfOne, EndsAlsoWhenTheQueueEndsItFirst) {
  stream.end();
  stream.open(Subscription([] {}, [] {}));
  EXPECT_TRUE(heard->ended);
}

}  // namespace
}  // namespace EventSystemTest
