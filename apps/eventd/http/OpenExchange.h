// The exchange of a request that came over a connection.
//
// Thread safety: as Exchange.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_OPENEXCHANGE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_OPENEXCHANGE_H

#include <memory>

#include "apps/eventd/http/BodyShare.h"
#include "apps/eventd/http/Connection.h"
#include "apps/eventd/http/Exchange.h"
#include "apps/eventd/http/Outlet.h"

namespace EventApps::Http {

class OpenExchange final : public Exchange {
 public:
  OpenExchange(std::shared_ptr<Connection> connection, std::shared_ptr<Outlet> outlet,
               Request request, BodyShare share);
  ~OpenExchange() override;

  const Request& request() const override { return m_request; }
  void respond(Response response) override;
  void startStream(Response head) override;
  bool send(std::string chunk) override;
  std::size_t unsent() const override { return m_outlet->unsent(); }
  void endStream() override;
  void onClose(std::function<void()> callback) override;

 private:
  const std::shared_ptr<Connection> m_connection;
  const std::shared_ptr<Outlet> m_outlet;
  const Request m_request;
  const BodyShare m_share;
};

}  // namespace EventApps::Http

#endif
