// A client of eventd as a service would have one: a connection that is kept, over the Unix socket.
//
// Thread safety: one thread at a time; each thread has its own.

#ifndef EVENTSYSTEM_TESTS_EVENTD_LOAD_CLIENT_H
#define EVENTSYSTEM_TESTS_EVENTD_LOAD_CLIENT_H

#include <curl/curl.h>

#include <filesystem>
#include <memory>
#include <string>

namespace EventSystemTest {

struct Answer {
  long status = 0;  // 0: none came, and whether the request was carried out is not known
  std::string body;
};

class Client {
 public:
  explicit Client(std::filesystem::path socket);

  Answer get(const std::string& target) { return send("GET", target, nullptr, ""); }
  Answer remove(const std::string& target) { return send("DELETE", target, nullptr, ""); }

  // `key` is the idempotency key; empty: none.
  Answer post(const std::string& target, const std::string& json, const std::string& key) {
    return send("POST", target, &json, key);
  }
  Answer put(const std::string& target, const std::string& json) {
    return send("PUT", target, &json, "");
  }

 private:
  Answer send(const char* method, const std::string& target, const std::string* json,
              const std::string& key);

  struct Cleanup {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  std::filesystem::path m_socket;
  std::unique_ptr<CURL, Cleanup> m_handle;
};

}  // namespace EventSystemTest

#endif
