#include "tests/eventd/load/Client.h"

#include <stdexcept>
#include <utility>

namespace EventSystemTest {
namespace {

constexpr long kSecondsForAnAnswer = 90;  // more than the longest wait that eventd grants

std::size_t append(char* data, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

}  // namespace

Client::Client(std::filesystem::path socket)
    : m_socket(std::move(socket)), m_handle(curl_easy_init()) {
  if (!m_handle) throw std::runtime_error("libcurl cannot be used");
}

Answer Client::send(const char* method, const std::string& target, const std::string* json,
                    const std::string& key) {
  CURL* const handle = m_handle.get();
  curl_easy_reset(handle);  // the connection stays
  Answer answer;
  std::unique_ptr<curl_slist, Cleanup> headers(
      curl_slist_append(nullptr, "Content-Type: application/json"));
  if (!key.empty()) {
    curl_slist_append(headers.get(), ("Idempotency-Key: " + key).c_str());
  }
  curl_easy_setopt(handle, CURLOPT_UNIX_SOCKET_PATH, m_socket.c_str());
  curl_easy_setopt(handle, CURLOPT_URL, ("http://eventd" + target).c_str());
  curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, method);
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle, CURLOPT_TIMEOUT, kSecondsForAnAnswer);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &answer.body);
  if (json != nullptr) {
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE, static_cast<long>(json->size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, json->c_str());
  }
  if (curl_easy_perform(handle) != CURLE_OK) return {};
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &answer.status);
  return answer;
}

}  // namespace EventSystemTest
