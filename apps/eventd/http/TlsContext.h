// What TLS connections are made with, and what is known of their clients.
//
// Thread safety: loadTlsContext() reads files and blocks; the context is then not changed any more.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_TLSCONTEXT_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_TLSCONTEXT_H

#include <boost/asio/ssl/context.hpp>
#include <memory>
#include <string>

#include "apps/eventd/http/TlsFiles.h"

namespace EventApps::Http {

// TLS 1.2 and later, with forward secrecy; HTTP/1.1 by ALPN. Throws ServerError, which names the
// file.
std::shared_ptr<boost::asio::ssl::context> loadTlsContext(const TlsFiles& files);

// The common name of the client's certificate, which the handshake has verified; empty when it has
// shown none, or one without exactly one common name that is a text.
std::string clientName(SSL* connection);

}  // namespace EventApps::Http

#endif
