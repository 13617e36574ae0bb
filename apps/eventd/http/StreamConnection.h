// The connections there are: in the clear, and with TLS.
//
// Thread safety: as Connection.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_STREAMCONNECTION_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_STREAMCONNECTION_H

#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <memory>
#include <utility>

#include "apps/eventd/http/Connection.h"
#include "apps/eventd/http/TlsContext.h"

namespace EventApps::Http {

template <typename Stream>
class StreamConnection : public Connection {
 public:
  template <typename... Arguments>
  StreamConnection(std::shared_ptr<Core> core, const Strand& strand, Peer peer,
                   Arguments&&... stream)
      : Connection(std::move(core), strand, std::move(peer)),
        m_stream(std::forward<Arguments>(stream)...) {}

 protected:
  void readSome(boost::asio::mutable_buffer buffer) override {
    m_stream.async_read_some(buffer,
                             [me = self<StreamConnection>()](const Error& error, std::size_t n) {
                               me->onRead(error, n);
                             });
  }

  void writeSome(boost::asio::const_buffer bytes) override {
    m_stream.async_write_some(bytes,
                              [me = self<StreamConnection>()](const Error& error, std::size_t n) {
                                me->onWritten(error, n);
                              });
  }

  Stream m_stream;
};

class PlainConnection final : public StreamConnection<Socket> {
 public:
  using StreamConnection::StreamConnection;

 private:
  void open() override { onOpen({}); }
  void endSending() override {
    Error ignored;
    m_stream.shutdown(Socket::shutdown_send, ignored);
  }
  Socket& socket() override { return m_stream; }
};

class TlsConnection final : public StreamConnection<boost::asio::ssl::stream<Socket>> {
 public:
  TlsConnection(std::shared_ptr<Core> core, const Strand& strand, Peer peer, Socket socket,
                std::shared_ptr<boost::asio::ssl::context> context)
      : StreamConnection(std::move(core), strand, std::move(peer), std::move(socket), *context),
        m_context(std::move(context)) {}

 private:
  void open() override {
    m_stream.async_handshake(boost::asio::ssl::stream_base::server,
                             [me = self<TlsConnection>()](const Error& error) {
                               if (!error) me->m_peer.certificate = clientNameOf(me->m_stream);
                               me->onOpen(error);
                             });
  }

  void endSending() override {
    m_stream.async_shutdown([me = self<TlsConnection>()](const Error&) {
      Error ignored;
      me->socket().shutdown(Socket::shutdown_send, ignored);
    });
  }

  Socket& socket() override { return m_stream.next_layer(); }

  static std::string clientNameOf(boost::asio::ssl::stream<Socket>& stream) {
    return clientName(stream.native_handle());
  }

  std::shared_ptr<boost::asio::ssl::context> m_context;
};

}  // namespace EventApps::Http

#endif
