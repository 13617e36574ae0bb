#include "apps/eventd/http/Listener.h"

#include <netinet/in.h>
#include <netinet/tcp.h>

#include <boost/asio/post.hpp>
#include <cerrno>
#include <chrono>
#include <exception>
#include <string>
#include <utility>

#include "apps/eventd/http/PeerOf.h"
#include "apps/eventd/http/StreamConnection.h"

namespace EventApps::Http {
namespace {

constexpr int kMostAtOnce = 64;
// What the system cannot give now it may give soon; asking again at once would only heat it.
constexpr std::chrono::milliseconds kPause(50);

void set(int descriptor, int level, int option, int value) {
  setsockopt(descriptor, level, option, &value, sizeof value);
}

// Answers leave at once; a client whose machine has died is noticed after two minutes.
void prepareTcp(int descriptor) {
  set(descriptor, IPPROTO_TCP, TCP_NODELAY, 1);
  set(descriptor, SOL_SOCKET, SO_KEEPALIVE, 1);
  set(descriptor, IPPROTO_TCP, TCP_KEEPIDLE, 60);
  set(descriptor, IPPROTO_TCP, TCP_KEEPINTVL, 15);
  set(descriptor, IPPROTO_TCP, TCP_KEEPCNT, 4);
}

}  // namespace

Listener::Listener(std::shared_ptr<Core> core, EtcdNodes::Descriptor socket, Tls tls)
    : m_core(std::move(core)),
      m_strand(boost::asio::make_strand(m_core->context)),
      m_socket(m_strand),
      m_pause(m_strand, [this] { acceptAll(); }),
      m_tls(std::move(tls)) {
  m_socket.assign(socket.get());
  socket.release();
}

void Listener::start() {
  boost::asio::post(m_strand, [me = shared_from_this()] { me->wait(); });
}

void Listener::stop() {
  boost::asio::post(m_strand, [me = shared_from_this()] {
    boost::system::error_code ignored;
    me->m_socket.close(ignored);
    me->m_pause.cancel();
  });
}

void Listener::setTls(Tls tls) {
  const std::lock_guard lock(m_mutex);
  m_tls.swap(tls);
}

Listener::Tls Listener::tls() const {
  const std::lock_guard lock(m_mutex);
  return m_tls;
}

void Listener::wait() {
  if (!m_socket.is_open()) return;
  m_socket.async_wait(boost::asio::posix::descriptor_base::wait_read,
                      [me = shared_from_this()](const boost::system::error_code& error) {
                        if (!error) me->acceptAll();
                      });
}

void Listener::pause() {
  ++m_core->acceptFailures;
  m_pause.set(kPause, shared_from_this());
}

void Listener::acceptAll() {
  Next next = Next::kAccept;
  for (int i = 0; i < kMostAtOnce && next == Next::kAccept; ++i) {
    if (!m_socket.is_open()) return;
    try {
      next = acceptOne();
    } catch (const std::exception& error) {
      m_core->complain(std::string("A connection could not be taken: ") + error.what());
      next = Next::kPause;
    }
  }
  if (next == Next::kPause) {
    pause();
  } else {
    wait();
  }
}

Listener::Next Listener::acceptOne() {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  EtcdNodes::Descriptor accepted(accept4(m_socket.native_handle(),
                                         reinterpret_cast<sockaddr*>(&address), &length,
                                         SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (accepted.get() >= 0) {
    serve(std::move(accepted), address);
    return Next::kAccept;
  }
  switch (errno) {
    case EAGAIN:
      return Next::kWait;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
    case EBADF:
    case EINVAL:
      return Next::kPause;
    default:  // this one connection is lost
      return Next::kAccept;
  }
}

void Listener::serve(EtcdNodes::Descriptor accepted, const sockaddr_storage& address) {
  const bool encrypted = tls() != nullptr;
  const std::string network = networkOf(address);
  const std::shared_ptr<Connection> connection = makeConnection(std::move(accepted), address);
  switch (m_core->connections.enter(connection, network)) {
    case Connections::Entry::kAdmitted:
      return connection->start();
    case Connections::Entry::kToBeRefused:
      // To tell it inside TLS would cost more than to serve it.
      return encrypted ? connection->cut() : connection->refuseEntry();
    case Connections::Entry::kNone:
      return;
  }
}

std::shared_ptr<Connection> Listener::makeConnection(EtcdNodes::Descriptor accepted,
                                                     const sockaddr_storage& address) {
  const bool isTcp = address.ss_family != AF_UNIX;
  if (isTcp) prepareTcp(accepted.get());
  Peer peer = peerOf(accepted.get(), address);
  const Strand strand = boost::asio::make_strand(m_core->context);
  Socket socket(strand);
  const boost::asio::generic::stream_protocol protocol(address.ss_family, isTcp ? IPPROTO_TCP : 0);
  socket.assign(protocol, accepted.get());
  accepted.release();
  if (Tls context = tls()) {
    peer.via = Peer::Via::kTls;
    return std::make_shared<TlsConnection>(m_core, strand, std::move(peer), std::move(socket),
                                           std::move(context));
  }
  return std::make_shared<PlainConnection>(m_core, strand, std::move(peer), std::move(socket));
}

}  // namespace EventApps::Http
