// One request and its answer, which is a whole response or a stream. Whoever holds it may answer
// at any time and from any thread; an exchange that is let go of without an answer is answered
// with 500.
//
// Thread safety: every operation may be called from any thread, and none of them blocks. No
// callback is made from inside one, but where onClose() says so.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_EXCHANGE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_EXCHANGE_H

#include <cstddef>
#include <functional>
#include <string>

#include "apps/eventd/http/Request.h"
#include "apps/eventd/http/Response.h"

namespace EventApps::Http {

class Exchange {
 public:
  Exchange() = default;
  virtual ~Exchange() = default;
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  // Lives as long as the exchange.
  virtual const Request& request() const = 0;

  // Sends the answer. Once: later calls, and calls after startStream(), do nothing. The client may
  // be gone meanwhile; that is no error.
  virtual void respond(Response response) = 0;

  // Instead of respond(): sends the head, whose body is left out; then send() as often as one
  // likes, and endStream().
  virtual void startStream(Response head) = 0;

  // Queues the next bytes of the stream. False when there is no stream any more: not started,
  // ended, asked for with HEAD, the client gone, the server stopping, or more than
  // Limits::streamBacklog bytes unsent, at which the connection is closed.
  virtual bool send(std::string chunk) = 0;

  // Bytes of the stream that the kernel has not taken yet, framing included.
  virtual std::size_t unsent() const = 0;

  // What was queued is still sent.
  virtual void endStream() = 0;

  // Calls `callback` once, on a network thread: when the client is gone while its request waits
  // for an answer (one that has only stopped sending counts as gone, but still gets an answer that
  // comes soon), when the stream has ended for whatever reason, or when the server stops while the
  // request waits. Not called after respond(). At once, on this thread, when any of that has
  // happened already. A second callback takes the place of the first. It must neither block nor
  // throw. What it holds is let go of after the call, or with the answer.
  virtual void onClose(std::function<void()> callback) = 0;
};

}  // namespace EventApps::Http

#endif
