#include "apps/eventd/http/TlsContext.h"

#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <algorithm>
#include <cstddef>
#include <memory>

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/Server.h"

namespace EventApps::Http {
namespace {

namespace ssl = boost::asio::ssl;
using Error = boost::system::error_code;

void check(const Error& error, const char* what, const std::filesystem::path& file) {
  if (!error) return;
  throw ServerError(std::string(what) + " cannot be read from " + file.string() + ": " +
                    error.message() +
                    ". It must be a PEM file that this process may read, and a key must be that "
                    "of its certificate.");
}

// The protocols that a client offers are texts with a byte of length before each.
int chooseProtocol(SSL*, const unsigned char** chosen, unsigned char* length,
                   const unsigned char* offered, unsigned offeredLength, void*) {
  static constexpr unsigned char kOurs[] = "\x08http/1.1";
  unsigned char* found = nullptr;
  if (SSL_select_next_proto(&found, length, kOurs, sizeof kOurs - 1, offered, offeredLength) !=
      OPENSSL_NPN_NEGOTIATED) {
    return SSL_TLSEXT_ERR_NOACK;
  }
  *chosen = found;
  return SSL_TLSEXT_ERR_OK;
}

void setProtocol(SSL_CTX* context) {
  SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
  SSL_CTX_set_cipher_list(context, "ECDHE+AESGCM:ECDHE+CHACHA20");
  // Every connection shows its certificate, so that one which is no longer trusted is of no use.
  SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
  SSL_CTX_set_num_tickets(context, 0);
  SSL_CTX_set_options(context, SSL_OP_NO_TICKET | SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION);
  SSL_CTX_set_mode(context, SSL_MODE_RELEASE_BUFFERS);
  SSL_CTX_set_alpn_select_cb(context, &chooseProtocol, nullptr);
}

void setFiles(ssl::context& context, const TlsFiles& files) {
  Error error;
  // Without this OpenSSL asks the terminal for the passphrase of a key.
  context.set_password_callback(
      [](std::size_t, ssl::context::password_purpose) { return std::string(); });
  context.use_certificate_chain_file(files.certificate.string(), error);
  check(error, "The certificate", files.certificate);
  context.use_private_key_file(files.key.string(), ssl::context::pem, error);
  check(error, "The certificate's key", files.key);
  if (files.clientAuthority.empty()) return;
  context.load_verify_file(files.clientAuthority.string(), error);
  check(error, "The clients' authority", files.clientAuthority);
  STACK_OF(X509_NAME)* names = SSL_load_client_CA_file(files.clientAuthority.c_str());
  SSL_CTX_set_client_CA_list(context.native_handle(), names);
  context.set_verify_mode(ssl::verify_peer);
}

}  // namespace

std::shared_ptr<ssl::context> loadTlsContext(const TlsFiles& files) {
  auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
  setProtocol(context->native_handle());
  setFiles(*context, files);
  return context;
}

std::string clientName(SSL* connection) {
  const std::unique_ptr<X509, decltype(&X509_free)> certificate(
      SSL_get1_peer_certificate(connection), &X509_free);
  if (!certificate || SSL_get_verify_result(connection) != X509_V_OK) return {};
  const X509_NAME* subject = X509_get_subject_name(certificate.get());
  const int at = X509_NAME_get_index_by_NID(subject, NID_commonName, -1);
  if (at < 0 || X509_NAME_get_index_by_NID(subject, NID_commonName, at) >= 0) return {};
  unsigned char* bytes = nullptr;
  const int length =
      ASN1_STRING_to_UTF8(&bytes, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, at)));
  if (length < 0) return {};
  const std::string name(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  OPENSSL_free(bytes);
  const bool isText = isUtf8(name) && std::none_of(name.begin(), name.end(), isControl);
  return isText ? name : std::string();
}

}  // namespace EventApps::Http
