// Takes the connections of one listening socket.
//
// Thread safety: start(), stop() and setTls() may be called from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_LISTENER_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_LISTENER_H

#include <sys/socket.h>

#include <boost/asio/posix/basic_stream_descriptor.hpp>
#include <boost/asio/ssl/context.hpp>
#include <memory>
#include <mutex>

#include "apps/etcd_nodes/Descriptor.h"
#include "apps/eventd/http/Connection.h"

namespace EventApps::Http {

class Listener : public std::enable_shared_from_this<Listener> {
 public:
  using Tls = std::shared_ptr<boost::asio::ssl::context>;

  // `tls` is null for connections in the clear.
  Listener(std::shared_ptr<Core> core, EtcdNodes::Descriptor socket, Tls tls);

  void start();
  void stop();
  void setTls(Tls tls);  // for new connections

 private:
  enum class Next { kAccept, kWait, kPause };

  void wait();
  void pause();
  void acceptAll();
  Next acceptOne();
  void serve(EtcdNodes::Descriptor accepted, const sockaddr_storage& address);
  std::shared_ptr<Connection> makeConnection(EtcdNodes::Descriptor accepted,
                                             const sockaddr_storage& address);
  Tls tls() const;

  const std::shared_ptr<Core> m_core;
  const Strand m_strand;
  boost::asio::posix::basic_stream_descriptor<Strand> m_socket;
  Watchdog m_pause;
  mutable std::mutex m_mutex;
  Tls m_tls;
};

}  // namespace EventApps::Http

#endif
