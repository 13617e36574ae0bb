// Where the server's certificate is.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_TLSFILES_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_TLSFILES_H

#include <filesystem>

namespace EventApps::Http {

struct TlsFiles {
  std::filesystem::path certificate;  // PEM, the chain up to but without its root
  std::filesystem::path key;          // PEM, without a passphrase
  // PEM; whose client certificates are taken. Empty: clients are not asked for one.
  std::filesystem::path clientAuthority;
};

}  // namespace EventApps::Http

#endif
