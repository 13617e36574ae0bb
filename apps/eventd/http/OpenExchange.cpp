#include "apps/eventd/http/OpenExchange.h"

#include <utility>

namespace EventApps::Http {

OpenExchange::OpenExchange(std::shared_ptr<Connection> connection, std::shared_ptr<Outlet> outlet,
                           Request request, BodyShare share)
    : m_connection(std::move(connection)),
      m_outlet(std::move(outlet)),
      m_request(std::move(request)),
      m_share(std::move(share)) {}

OpenExchange::~OpenExchange() {
  if (m_outlet->abandon()) m_connection->wake();
}

void OpenExchange::respond(Response response) {
  if (m_outlet->respond(std::move(response))) m_connection->wake();
}

void OpenExchange::startStream(Response head) {
  if (m_outlet->startStream(std::move(head))) m_connection->wake();
}

bool OpenExchange::send(std::string chunk) {
  const Outlet::Sent sent = m_outlet->send(chunk);
  if (sent.tell) m_connection->wake();
  return sent.accepted;
}

void OpenExchange::endStream() {
  if (m_outlet->endStream()) m_connection->wake();
}

void OpenExchange::onClose(std::function<void()> callback) {
  if (const auto due = m_outlet->onClose(std::move(callback))) due();
}

}  // namespace EventApps::Http
