// Prints the events of a queue of eventd as they arrive, and deletes each one after that.
//
//   c++ -std=c++17 consumer.cpp -lcurl -o consumer
//   ./consumer [SOCKET [DSID]]
//
// Debian has what it needs in libcurl4-openssl-dev and nlohmann-json3-dev.

#include <curl/curl.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

std::size_t append(const char* bytes, std::size_t, std::size_t count, void* body) {
  static_cast<std::string*>(body)->append(bytes, count);
  return count;
}

// Makes requests over one connection, which is opened again where it broke.
class Client {
 public:
  explicit Client(const std::string& socket) : m_curl(curl_easy_init(), curl_easy_cleanup) {
    if (m_curl == nullptr) throw std::runtime_error("no memory for a connection");
    curl_easy_setopt(m_curl.get(), CURLOPT_UNIX_SOCKET_PATH, socket.c_str());
    curl_easy_setopt(m_curl.get(), CURLOPT_TIMEOUT, 90L);
    curl_easy_setopt(m_curl.get(), CURLOPT_WRITEFUNCTION, append);
  }

  // The status; `body` gets the answer.
  long call(const char* method, const std::string& path, std::string& body) {
    body.clear();
    CURL* const curl = m_curl.get();
    curl_easy_setopt(curl, CURLOPT_URL, ("http://eventd" + path).c_str());
    curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, method);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    const CURLcode code = curl_easy_perform(curl);
    if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    return status;
  }

 private:
  std::unique_ptr<CURL, void (*)(CURL*)> m_curl;
};

void consumePage(Client& client, const std::string& queue) {
  std::string body;
  // Waits up to 50 seconds for the first event; what is handled is deleted, so that what comes
  // first is always what is to be done next.
  if (client.call("GET", queue + "?wait=50", body) != 200) throw std::runtime_error(body);
  const nlohmann::json page = nlohmann::json::parse(body);
  for (const nlohmann::json& event : page.at("events")) {
    const std::string id = std::to_string(event.at("id").get<unsigned long>());
    std::printf("%s %s\n", id.c_str(), event.at("eventString").get<std::string>().c_str());
    std::fflush(stdout);
    const long status = client.call("DELETE", queue + "/" + id, body);
    if (status != 204 && status != 404) throw std::runtime_error(body);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Client client(argc > 1 ? argv[1] : "/run/eventsystem/eventd.sock");
  const std::string queue = std::string("/v1/queues/") + (argc > 2 ? argv[2] : "0") + "/events";
  for (;;) {
    try {
      consumePage(client, queue);
    } catch (const std::exception& problem) {
      std::fprintf(stderr, "trying again: %s\n", problem.what());
      std::this_thread::sleep_for(std::chrono::seconds(1));
    }
  }
}
