#include "host/cluster/EtcdQuota.h"

#include <openssl/bio.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace EventSystemHost {
namespace {

constexpr int kPatience = 2;            // seconds
constexpr int kNap = 10;                // milliseconds between two looks at the connection
constexpr std::size_t kMost = 4 << 20;  // bytes of an answer

using Bio = std::unique_ptr<BIO, decltype(&BIO_free_all)>;
using Context = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;

// A write to a connection that the other side has closed must fail, not end the process.
class NoBrokenPipeSignal {
 public:
  NoBrokenPipeSignal() {
    sigemptyset(&m_pipe);
    sigaddset(&m_pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
  }
  ~NoBrokenPipeSignal() {
    const timespec atOnce{0, 0};
    if (sigismember(&m_before, SIGPIPE) == 0) sigtimedwait(&m_pipe, nullptr, &atOnce);
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
  }

  NoBrokenPipeSignal(const NoBrokenPipeSignal&) = delete;
  NoBrokenPipeSignal& operator=(const NoBrokenPipeSignal&) = delete;

 private:
  sigset_t m_pipe{};
  sigset_t m_before{};
};

Context makeContext(const ClusterConfiguration& configuration) {
  Context context(SSL_CTX_new(TLS_client_method()), &SSL_CTX_free);
  if (!context) return context;
  SSL_CTX_set_verify(context.get(), SSL_VERIFY_PEER, nullptr);
  SSL_CTX_load_verify_locations(context.get(), configuration.trustedCertificatesFile.c_str(),
                                nullptr);
  if (!configuration.certificateFile.empty()) {
    SSL_CTX_use_certificate_chain_file(context.get(), configuration.certificateFile.c_str());
    SSL_CTX_use_PrivateKey_file(context.get(), configuration.keyFile.c_str(), SSL_FILETYPE_PEM);
  }
  return context;
}

// The certificate must be for this name or address.
void expectName(BIO* bio, const std::string& name) {
  SSL* ssl = nullptr;
  BIO_get_ssl(bio, &ssl);
  if (ssl == nullptr) return;
  X509_VERIFY_PARAM* const expected = SSL_get0_param(ssl);
  if (X509_VERIFY_PARAM_set1_ip_asc(expected, name.c_str()) == 1) return;
  X509_VERIFY_PARAM_set1_host(expected, name.c_str(), name.size());
  SSL_set_tlsext_host_name(ssl, name.c_str());
}

std::string hostOf(const std::string& endpoint) {
  const std::string host = endpoint.substr(0, endpoint.rfind(':'));
  return host.front() == '[' ? host.substr(1, host.size() - 2) : host;
}

Bio makeConnection(const ClusterConfiguration& configuration, SSL_CTX* context,
                   const std::string& endpoint) {
  if (context == nullptr) return Bio(BIO_new_connect(endpoint.c_str()), &BIO_free_all);
  Bio bio(BIO_new_ssl_connect(context), &BIO_free_all);
  if (!bio) return bio;
  BIO_set_conn_hostname(bio.get(), endpoint.c_str());
  expectName(bio.get(),
             configuration.serverName.empty() ? hostOf(endpoint) : configuration.serverName);
  return bio;
}

std::string exchange(BIO* bio, const std::string& request) {
  std::string answer;
  const std::time_t end = std::time(nullptr) + kPatience;
  BIO_set_nbio(bio, 1);
  if (BIO_do_connect_retry(bio, kPatience, kNap) != 1) return answer;
  if (BIO_write(bio, request.data(), static_cast<int>(request.size())) <= 0) return answer;
  std::array<char, 16384> buffer{};
  while (answer.size() < kMost && std::time(nullptr) <= end) {
    const int size = BIO_read(bio, buffer.data(), static_cast<int>(buffer.size()));
    if (size > 0) {
      answer.append(buffer.data(), static_cast<std::size_t>(size));
    } else if (!BIO_should_retry(bio) || BIO_wait(bio, end, kNap) != 1) {
      break;
    }
  }
  return answer;
}

}  // namespace

std::int64_t quotaIn(const std::string& metrics) {
  const std::string name = "\netcd_server_quota_backend_bytes ";
  const auto at = metrics.find(name);
  return at == std::string::npos
             ? 0
             : static_cast<std::int64_t>(std::strtod(metrics.c_str() + at + name.size(), nullptr));
}

std::int64_t readQuota(const ClusterConfiguration& configuration, const std::string& endpoint) {
  const bool tls = !configuration.trustedCertificatesFile.empty();
  const Context context = tls ? makeContext(configuration) : Context(nullptr, &SSL_CTX_free);
  if (tls && !context) return 0;
  const NoBrokenPipeSignal noSignal;
  const Bio bio = makeConnection(configuration, context.get(), endpoint);
  if (!bio) return 0;
  // HTTP/1.0: the answer comes in one piece and ends with the connection.
  return quotaIn(exchange(bio.get(), "GET /metrics HTTP/1.0\r\nHost: " + endpoint + "\r\n\r\n"));
}

}  // namespace EventSystemHost
