#include "apps/eventd/http/Connection.h"

#include <boost/asio/error.hpp>
#include <boost/asio/post.hpp>
#include <ctime>
#include <exception>
#include <string_view>
#include <utility>

#include "apps/eventd/http/OpenExchange.h"
#include "apps/eventd/http/RefusedRequest.h"
#include "apps/eventd/http/ResponseHead.h"

namespace EventApps::Http {
namespace {

constexpr std::size_t kReadBytes = 4096;
constexpr std::size_t kReadBodyBytes = 65536;
constexpr std::size_t kMostReadAhead = 16384;  // of pipelined requests, while one is answered
constexpr std::size_t kSendBytes = 65536;      // small pieces go out together up to this

}  // namespace

Connection::Connection(std::shared_ptr<Core> core, Strand strand, Peer peer)
    : m_peer(std::move(peer)),
      m_core(std::move(core)),
      m_strand(std::move(strand)),
      m_watchdog(m_strand, [this] { guarded([this] { onDeadline(); }); }),
      m_reader(m_core->limits.headerBytes, m_core->limits.bodyBytes) {}

template <typename Work>
void Connection::guarded(Work&& work) noexcept try {
  if (m_phase != Phase::kClosed) work();
} catch (const std::exception& error) {
  m_core->complain("A connection from " + m_peer.address + " had to be closed: " + error.what());
  close();
}

void Connection::call(const Outlet::Callback& callback) noexcept try {
  if (callback) callback();
} catch (const std::exception& error) {
  m_core->complain(std::string("What was to be done at the end of a request failed: ") +
                   error.what());
}

void Connection::post(void (Connection::*what)()) noexcept try {
  const std::lock_guard lock(m_gate);
  if (m_hasLeft) return;
  boost::asio::post(m_strand,
                    [me = shared_from_this(), what] { me->guarded([&] { (me.get()->*what)(); }); });
} catch (const std::exception& error) {
  m_core->complain(std::string("A connection could not be told of its answer: ") + error.what());
}

void Connection::start() {
  post(&Connection::onStart);
}
void Connection::wake() noexcept {
  post(&Connection::onWake);
}
void Connection::stop() {
  post(&Connection::onStop);
}
void Connection::cut() {
  post(&Connection::close);
}

void Connection::refuseEntry() {
  m_entryRefused = true;
  start();
}

void Connection::onStart() {
  if (m_core->stopping) return close();
  setDeadline(m_core->limits.handshakeTime);
  open();
}

void Connection::onOpen(const Error& error) {
  guarded([&] {
    if (error) {
      ++m_core->handshakesFailed;
      return close();
    }
    if (m_entryRefused) return refuse(503, "There are too many connections; try again later.");
    beginRequest();
    setDeadline(m_core->limits.requestTime);
  });
}

void Connection::beginRequest() {
  m_phase = Phase::kReading;
  m_begun = m_bodyless = m_looksOnly = m_isStream = false;
  m_reader.reset();
  m_share.reset();
  setDeadline(m_core->limits.idle);
  advance();
}

void Connection::advance() {
  while (m_phase == Phase::kReading && takeStep()) {
  }
}

bool Connection::takeStep() {
  const auto input = m_input.data();
  std::size_t used = 0;
  RequestReader::Step step;
  try {
    step = m_reader.next({static_cast<const char*>(input.data()), input.size()}, used);
  } catch (const RefusedRequest& refused) {
    refuse(refused.status(), refused.what());
    return false;
  }
  if (!m_begun && input.size() > 0) {
    m_begun = true;
    setDeadline(m_core->limits.requestTime);
  }
  m_input.consume(used);
  if (!isBodyGranted()) {
    refuse(503, "The requests in work have too much to carry; try again later.");
  } else if (step == RequestReader::Step::kHead) {
    acceptHead();
    return true;
  } else if (step == RequestReader::Step::kDone) {
    handle();
  } else if (m_readEnded) {
    close();
  } else {
    readMore();
  }
  return false;
}

bool Connection::isBodyGranted() {
  if (!m_share) m_share.emplace(m_core->bodies);
  return m_share->grow(m_reader.bodySize()) <= m_core->limits.bodiesBytes;
}

void Connection::acceptHead() {
  Request& request = m_reader.request();
  request.peer = &m_peer;
  m_bodyless = request.method == "HEAD";
  m_looksOnly = request.method == "GET";
  if (m_core->admit) {
    std::optional<Response> answer;
    try {
      answer = m_core->admit(request);
    } catch (const std::exception& error) {
      m_core->complain("A request could not be admitted: " + request.path + ": " + error.what());
      answer = m_core->refusalFor(500, "The server failed to look at this request.");
    }
    if (answer) {
      ++m_core->requestsRefused;
      return answerAtOnce(std::move(*answer), m_reader.keepAlive() && !m_reader.hasBody());
    }
  }
  if (m_reader.expectsContinue() && m_reader.hasBody() && m_input.size() == 0) {
    send("HTTP/1.1 100 Continue\r\n\r\n");
    sendMore();
  }
}

// Whoever answers may take as long as it likes. A client may not, and it may have left unread what
// was sent before: a 100, for one, on which the answer then waits.
void Connection::beginAnswer(bool keepAlive) {
  m_phase = Phase::kAnswering;
  m_keepAlive = keepAlive;
  if (m_isSending) {
    setDeadline(m_core->limits.writeTime);
  } else {
    m_watchdog.clear();
  }
}

void Connection::handle() {
  beginAnswer(m_reader.keepAlive());
  m_outlet = std::make_shared<Outlet>(
      Outlet::Form{m_reader.chunkable(), m_bodyless, m_core->limits.streamBacklog});
  const auto exchange = std::make_shared<OpenExchange>(
      shared_from_this(), m_outlet, std::move(m_reader.request()), std::move(*m_share));
  ++m_core->requests;
  // What a long body took is not kept while one waits.
  if (m_incoming.capacity() > kMostReadAhead && !m_isReading) m_incoming = {};
  if (m_input.size() == 0) m_input.shrink_to_fit();
  readMore();
  try {
    m_core->handle(exchange);
  } catch (const std::exception& error) {
    m_core->complain(exchange->request().method + " " + exchange->request().path +
                     " failed: " + error.what());
    exchange->respond(m_core->refusalFor(500, "The server failed to answer this request."));
  }
  if (m_readEnded) clientGone();
}

void Connection::readMore() {
  if (m_isReading || m_readEnded) return;
  if (m_phase == Phase::kAnswering && m_input.size() >= kMostReadAhead) return;
  const bool muchComes =
      m_phase == Phase::kLingering || (m_phase == Phase::kReading && m_reader.isInBody());
  m_incoming.resize(muchComes ? kReadBodyBytes : kReadBytes);
  m_isReading = true;
  readSome(boost::asio::buffer(m_incoming));
}

void Connection::onRead(const Error& error, std::size_t bytes) {
  m_isReading = false;
  guarded([&] {
    m_core->bytesIn += bytes;
    m_input.commit(
        boost::asio::buffer_copy(m_input.prepare(bytes), boost::asio::buffer(m_incoming, bytes)));
    if (error) return onReadEnd(error);
    if (m_phase == Phase::kReading) return advance();
    if (m_phase == Phase::kLingering) m_input.consume(m_input.size());
    readMore();
  });
}

void Connection::onReadEnd(const Error& error) {
  m_readEnded = true;
  if (error == boost::asio::error::eof && m_phase == Phase::kAnswering) {
    clientGone();
  } else {
    close();
  }
}

// A client that has ended its own sending may still wait for an answer; a stream's end is told in
// no other way.
void Connection::clientGone() {
  if (!m_outlet) return;
  if (m_isStream) return close();
  call(m_outlet->clientGone());
}

void Connection::onWake() {
  if (!m_outlet || m_answerEnds) return;
  Outlet::Output output = m_outlet->take();
  if (output.overrun) return close();
  if (output.abandoned) {
    output.head = m_core->stopping ? m_core->refusalFor(503, "The server stops.")
                                   : m_core->refusalFor(500, "The server gave this request up.");
  }
  m_answerEnds = output.ended;
  if (output.head) sendHead(std::move(*output.head), output.stream);
  if (m_isStream && !m_bodyless) send(std::move(output.bytes));
  if (m_isStream && !shareBacklog()) return close();
  sendMore();
}

void Connection::refuse(unsigned status, const std::string& detail) {
  ++m_core->requestsRefused;
  answerAtOnce(m_core->refusalFor(status, detail), false);
}

void Connection::answerAtOnce(Response&& response, bool keepAlive) {
  beginAnswer(keepAlive);
  m_answerEnds = true;
  m_share.reset();
  sendHead(std::move(response), false);
  sendMore();
}

// However long a client may take to read them, answers do not fill the memory. Those that are no
// longer than any refusal always go, and so do those that tell what was changed.
bool Connection::isAnswerGranted(const Response& response) {
  if (m_bodyless || response.body.size() <= kSendBytes) return true;
  m_answerShare.emplace(m_core->answers);
  const bool fits = m_answerShare->grow(response.body.size()) <= m_core->limits.answersBytes;
  if (fits || !m_looksOnly) return true;
  m_answerShare.reset();
  return false;
}

// Counts what a stream has not sent yet in the same sum. False where that is too much: whoever is
// cut off comes back for it.
bool Connection::shareBacklog() {
  if (!m_answerShare) m_answerShare.emplace(m_core->answers);
  const std::size_t unsent = m_outlet->unsent();
  return m_answerShare->grow(unsent) <= m_core->limits.answersBytes || unsent <= kSendBytes;
}

void Connection::sendHead(Response&& response, bool stream) {
  if (!isSendable(response) || (stream && !mayHaveBody(response.status))) {
    m_core->complain("An answer had a status or a header that cannot be sent.");
    response = {500, {}, {}, {}};
    stream = false;
    m_answerEnds = true;
  }
  if (!stream && !isAnswerGranted(response)) {
    ++m_core->requestsRefused;
    response = m_core->refusalFor(
        503, "The answers that are being sent take all the memory for them; try again later.");
    response.headers.emplace_back("Retry-After", "5");
  }
  m_isStream = stream;
  const Framing framing = !stream                ? Framing::kLength
                          : m_reader.chunkable() ? Framing::kChunked
                                                 : Framing::kToTheEnd;
  if (framing == Framing::kToTheEnd || m_core->stopping) m_keepAlive = false;
  std::string head = headOf(response, framing, m_keepAlive, std::time(nullptr));
  if (stream) m_outlet->queued(head.size());
  send(std::move(head));
  if (!stream && !m_bodyless && mayHaveBody(response.status)) send(std::move(response.body));
}

void Connection::send(std::string&& bytes) {
  if (bytes.empty()) return;
  if (!m_pending.empty() && m_pending.back().size() + bytes.size() <= kSendBytes) {
    m_pending.back() += bytes;
  } else {
    m_pending.push_back(std::move(bytes));
  }
}

void Connection::sendMore() {
  if (m_isSending) return;
  if (!m_pending.empty()) {
    m_sending = std::move(m_pending.front());
    m_pending.pop_front();
    m_sent = m_sentInTime = 0;
    return writeRest();
  }
  if (m_phase != Phase::kAnswering) return;
  if (m_answerEnds) return answered();
  m_watchdog.clear();
}

void Connection::writeRest() {
  m_isSending = true;
  const bool isNextDue = m_sent == 0 || m_sent - m_sentInTime >= m_core->limits.takenInTime;
  if (m_phase == Phase::kAnswering && isNextDue) {
    m_sentInTime = m_sent;
    setDeadline(m_core->limits.writeTime);
  }
  writeSome(boost::asio::buffer(m_sending) + m_sent);
}

void Connection::onWritten(const Error& error, std::size_t bytes) {
  m_isSending = false;
  guarded([&] {
    if (error) return close();
    m_core->bytesOut += bytes;
    m_sent += bytes;
    if (m_outlet) m_outlet->sent(bytes);
    if (m_outlet && m_isStream) shareBacklog();
    if (m_sent < m_sending.size()) return writeRest();
    m_sending = {};
    sendMore();
  });
}

void Connection::answered() {
  m_answerEnds = false;
  m_answerShare.reset();
  if (const auto outlet = std::exchange(m_outlet, {})) call(outlet->end());
  if (m_keepAlive && !(m_core->stopping && m_input.size() == 0)) {
    beginRequest();
  } else {
    linger();
  }
}

void Connection::linger() {
  m_phase = Phase::kLingering;
  m_input.consume(m_input.size());
  m_reader.reset();
  endSending();
  if (m_readEnded) return close();
  setDeadline(m_core->limits.lingerTime);
  readMore();
}

void Connection::onDeadline() {
  if (m_phase == Phase::kReading && m_begun) {
    refuse(408, "The request did not arrive in time.");
  } else {
    close();
  }
}

void Connection::onStop() {
  if (m_phase == Phase::kAnswering) {
    m_keepAlive = false;
    if (m_outlet) call(m_outlet->stop());
    onWake();
  } else if (m_phase == Phase::kOpening || (m_phase == Phase::kReading && !m_begun)) {
    close();
  }
}

void Connection::close() noexcept {
  if (m_phase == Phase::kClosed) return;
  m_phase = Phase::kClosed;
  {
    const std::lock_guard lock(m_gate);
    m_hasLeft = true;
  }
  m_watchdog.cancel();
  Error ignored;
  socket().close(ignored);
  m_pending.clear();
  m_share.reset();
  m_answerShare.reset();
  if (const auto outlet = std::exchange(m_outlet, {})) call(outlet->end());
  m_core->connections.leave(this);
}

}  // namespace EventApps::Http
