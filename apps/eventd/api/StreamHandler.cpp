// Events as they arrive.

#include <limits>
#include <string>

#include "EventSystem/platform/HostLog.h"
#include "apps/eventd/api/EventStream.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/Parameters.h"
#include "apps/eventd/api/Services.h"

namespace EventApps::Api {
namespace {

constexpr unsigned long kHighestId = std::numeric_limits<unsigned long>::max();

// Where a client goes on that was cut off counts more than where it began.
std::optional<unsigned long> startOf(const Call& call, const Parameters& parameters) {
  const auto after = parameters.number("after", 0, kHighestId);
  const std::string_view last = call.request().header("Last-Event-ID");
  if (last.empty()) return after;
  return requireNumber(last, kHighestId, "the header Last-Event-ID");
}

}  // namespace

void streamEvents(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  const Parameters parameters(call->request(), {"after", "type"});
  const auto after = startOf(*call, parameters);
  const std::set<int> types = parameters.kinds("type");
  // Half of what the server lets be unsent: an event that is added must still fit.
  const auto stream =
      std::make_shared<EventStream>(call, services.configuration.limits.streamBacklogBytes / 2);
  auto subscription = services.queues.subscribe(
      dsid, after, types, [stream](EventSpan events) { return stream->deliver(events); },
      [stream](const std::string& why) {
        InfoA(0, "eventd: a stream of events ends: %s", why.c_str());
        stream->end();
      });
  if (!subscription) {
    return call->fail({.kind = ProblemKind::kTooManyWaiting,
                       .detail = "too many streams are open already; try again later",
                       .headers = {{"Retry-After", "5"}}});
  }
  EventStreams& streams = services.streams;
  streams.add(stream);
  call->exchange().onClose([stream, &streams] {
    stream->close();
    streams.remove(stream);
  });
  stream->open(std::move(*subscription));
}

}  // namespace EventApps::Api
