// One connection of a client: reads its requests one after the other, hands each to the handler,
// and sends the answers in the same order. What the bytes travel over is a derived class's matter
// (StreamConnection.h).
//
// While a request is being answered the connection goes on reading, within bounds: that is how it
// notices that the client hangs up, and how pipelined requests come in.
//
// Thread safety: start(), refuseEntry(), wake(), stop() and cut() may be called from any thread;
// all else runs on the connection's strand.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_CONNECTION_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_CONNECTION_H

#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/strand.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/system/error_code.hpp>
#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "apps/eventd/http/BodyShare.h"
#include "apps/eventd/http/Core.h"
#include "apps/eventd/http/Outlet.h"
#include "apps/eventd/http/Peer.h"
#include "apps/eventd/http/RequestReader.h"
#include "apps/eventd/http/Watchdog.h"

namespace EventApps::Http {

using Strand = boost::asio::strand<boost::asio::io_context::executor_type>;
using Socket = boost::asio::basic_stream_socket<boost::asio::generic::stream_protocol, Strand>;

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(std::shared_ptr<Core> core, Strand strand, Peer peer);
  virtual ~Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Either of them once, after the connection has entered `core->connections`.
  void start();
  void refuseEntry();  // says 503 to whatever comes

  void wake() noexcept;  // there is something in the outlet
  void stop();           // soon, in good order
  void cut();            // at once

 protected:
  using Error = boost::system::error_code;

  // What the stream does; each ends in the on...() operation behind it.
  virtual void open() = 0;                                        // onOpen
  virtual void readSome(boost::asio::mutable_buffer buffer) = 0;  // onRead
  virtual void writeSome(boost::asio::const_buffer bytes) = 0;    // onWritten
  virtual void endSending() = 0;                                  // none
  virtual Socket& socket() = 0;

  void onOpen(const Error& error);
  void onRead(const Error& error, std::size_t bytes);
  void onWritten(const Error& error, std::size_t bytes);

  // Shared with what is waited for.
  template <typename Derived>
  std::shared_ptr<Derived> self() {
    return std::static_pointer_cast<Derived>(shared_from_this());
  }

  Peer m_peer;

 private:
  enum class Phase { kOpening, kReading, kAnswering, kLingering, kClosed };

  void post(void (Connection::*what)()) noexcept;
  template <typename Work>
  void guarded(Work&& work) noexcept;
  void call(const Outlet::Callback& callback) noexcept;
  void setDeadline(std::chrono::milliseconds time) { m_watchdog.set(time, shared_from_this()); }

  void onStart();
  void onWake();
  void onStop();
  void onDeadline();
  void onReadEnd(const Error& error);

  void beginRequest();
  void advance();
  bool takeStep();
  void acceptHead();
  bool isBodyGranted();
  bool isAnswerGranted(const Response& response);
  bool shareBacklog();
  void beginAnswer(bool keepAlive);
  void handle();
  void readMore();
  void clientGone();

  void refuse(unsigned status, const std::string& detail);
  void answerAtOnce(Response&& response, bool keepAlive);
  void sendHead(Response&& response, bool stream);
  void send(std::string&& bytes);
  void sendMore();
  void writeRest();
  void answered();
  void linger();
  void close() noexcept;

  const std::shared_ptr<Core> m_core;
  const Strand m_strand;
  Watchdog m_watchdog;
  Phase m_phase = Phase::kOpening;
  bool m_entryRefused = false;

  // A reading that is under way writes here: what has come may be consumed meanwhile.
  std::vector<char> m_incoming;
  boost::beast::flat_buffer m_input;
  RequestReader m_reader;
  std::optional<BodyShare> m_share;
  bool m_begun = false;      // some of the request is here
  bool m_bodyless = false;   // it asks for a head only
  bool m_looksOnly = false;  // it asks for what can be asked for again
  bool m_isReading = false;
  bool m_readEnded = false;  // the client sends no more

  std::optional<BodyShare> m_answerShare;
  std::shared_ptr<Outlet> m_outlet;   // of the request that the handler has
  std::deque<std::string> m_pending;  // to be sent after m_sending
  std::string m_sending;
  std::size_t m_sent = 0;        // of m_sending
  std::size_t m_sentInTime = 0;  // of it, when the deadline was set
  bool m_isSending = false;
  bool m_isStream = false;
  bool m_answerEnds = false;  // with what is pending
  bool m_keepAlive = false;

  std::mutex m_gate;  // nothing is posted once the connection has left the server
  bool m_hasLeft = false;
};

}  // namespace EventApps::Http

#endif
