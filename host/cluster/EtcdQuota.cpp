#include "host/cluster/EtcdQuota.h"

#include <curl/curl.h>

#include <cstdlib>
#include <memory>
#include <new>

namespace EventSystemHost {
namespace {

constexpr long kPatience = 2000;        // milliseconds
constexpr std::size_t kMost = 4 << 20;  // bytes of an answer

using Transfer = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using Texts = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

Transfer makeTransfer() {
  static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
  return {initialized == CURLE_OK ? curl_easy_init() : nullptr, &curl_easy_cleanup};
}

// Called by C code, through which nothing can be thrown.
std::size_t append(const char* data, std::size_t size, std::size_t count, void* answer) noexcept {
  constexpr std::size_t kEndsTheTransfer = 0;
  std::string& text = *static_cast<std::string*>(answer);
  if (text.size() + size * count > kMost) return kEndsTheTransfer;
  try {
    text.append(data, size * count);
  } catch (const std::bad_alloc&) {
    return kEndsTheTransfer;
  }
  return size * count;
}

void trust(CURL* transfer, const ClusterConfiguration& configuration) {
  curl_easy_setopt(transfer, CURLOPT_CAINFO, configuration.trustedCertificatesFile.c_str());
  curl_easy_setopt(transfer, CURLOPT_CAPATH, nullptr);
  if (configuration.certificateFile.empty()) return;
  curl_easy_setopt(transfer, CURLOPT_SSLCERT, configuration.certificateFile.c_str());
  curl_easy_setopt(transfer, CURLOPT_SSLKEY, configuration.keyFile.c_str());
}

// The name that the member's certificate must carry, with the endpoint's port.
std::string authority(const ClusterConfiguration& configuration, const std::string& endpoint) {
  if (configuration.serverName.empty()) return endpoint;
  return configuration.serverName + endpoint.substr(endpoint.rfind(':'));
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
  const Transfer transfer = makeTransfer();
  if (!transfer) return 0;
  const bool tls = !configuration.trustedCertificatesFile.empty();
  const std::string url =
      (tls ? "https://" + authority(configuration, endpoint) : "http://" + endpoint) + "/metrics";
  // Whatever the URL calls the member, the endpoint is where it is.
  const Texts place(curl_slist_append(nullptr, ("::" + endpoint).c_str()), &curl_slist_free_all);
  std::string answer;
  curl_easy_setopt(transfer.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(transfer.get(), CURLOPT_CONNECT_TO, place.get());
  curl_easy_setopt(transfer.get(), CURLOPT_PROXY, "");
  curl_easy_setopt(transfer.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(transfer.get(), CURLOPT_TIMEOUT_MS, kPatience);
  curl_easy_setopt(transfer.get(), CURLOPT_WRITEFUNCTION, &append);
  curl_easy_setopt(transfer.get(), CURLOPT_WRITEDATA, &answer);
  if (tls) trust(transfer.get(), configuration);
  if (curl_easy_perform(transfer.get()) != CURLE_OK) return 0;
  return quotaIn(answer);
}

}  // namespace EventSystemHost
