// Where the answer to one request waits for its connection: whoever answers puts it in, the
// connection takes it out.
//
// Thread safety: every operation may be called from any thread; callbacks that they return are
// called by the caller, without a lock.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_OUTLET_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_OUTLET_H

#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "apps/eventd/http/Response.h"

namespace EventApps::Http {

class Outlet {
 public:
  using Callback = std::function<void()>;

  struct Form {
    bool chunked = true;      // a stream is sent in chunks, not up to the connection's end
    bool bodyless = false;    // the answer to HEAD
    std::size_t backlog = 0;  // unsent bytes that end a stream
  };

  // What is there to be sent now.
  struct Output {
    std::optional<Response> head;
    bool stream = false;     // the head is one of a stream
    std::string bytes;       // of the stream, framed
    bool ended = false;      // nothing will follow
    bool overrun = false;    // the client is too slow: nothing more is to be sent
    bool abandoned = false;  // nobody will answer
  };

  explicit Outlet(const Form& form) : m_form(form) {}

  // Of whoever answers. True when the connection must be told to take() again.
  bool respond(Response&& response);
  bool startStream(Response&& head);
  bool endStream();
  bool abandon();

  struct Sent {
    bool accepted;
    bool tell;
  };
  Sent send(const std::string& chunk);
  std::size_t unsent() const;

  // Keeps the callback, or returns it because it is to be called now.
  Callback onClose(Callback&& callback);

  // Of the connection. Each callback is to be called at once, and may be empty.
  Output take();
  void queued(std::size_t bytes);  // of a stream's head
  void sent(std::size_t bytes);
  Callback clientGone();  // it sends no more; an answer may still reach it
  Callback stop();        // ends a stream; one that waits for an answer is told
  Callback end();         // nothing more is taken out

 private:
  enum class State { kWaiting, kStreaming, kEnded };

  bool tell();
  Callback close();

  const Form m_form;
  mutable std::mutex m_mutex;
  State m_state = State::kWaiting;
  Output m_output;
  std::size_t m_unsent = 0;
  bool m_told = false;      // the connection will take() what is there
  bool m_closed = false;    // the callback was due
  bool m_answered = false;  // by respond()
  Callback m_callback;
};

}  // namespace EventApps::Http

#endif
