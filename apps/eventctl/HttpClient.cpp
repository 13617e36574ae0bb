#include "apps/eventctl/HttpClient.h"

#include <curl/curl.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace EventApps {
namespace {

using Clock = std::chrono::steady_clock;

constexpr long kConnectMilliseconds = 10000;
constexpr int kLookMilliseconds = 200;  // between two looks whether to go on

struct HeaderListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, HeaderListDeleter>;

void append(HeaderList& list, const std::string& header) {
  curl_slist* const longer = curl_slist_append(list.get(), header.c_str());
  if (longer == nullptr) throw std::bad_alloc();
  static_cast<void>(list.release());
  list.reset(longer);
}

std::size_t takeBody(char* data, std::size_t, std::size_t bytes, void* body) {
  static_cast<std::string*>(body)->append(data, bytes);
  return bytes;
}

}  // namespace

class HttpClient::Handles {
 public:
  Handles() {
    if (!m_easy || !m_multi) throw std::bad_alloc();
  }

  CURL* easy() const { return m_easy.get(); }

  // The result of the transfer; nothing when it was given up.
  std::optional<CURLcode> perform(const Interruption& interruption,
                                  std::chrono::milliseconds timeout) {
    const Transfer transfer(m_multi.get(), easy());
    Silence silence(easy());
    while (true) {
      int running = 0;
      curl_multi_perform(m_multi.get(), &running);
      if (running == 0) return result();
      if (interruption.wanted && interruption.wanted()) return std::nullopt;
      if (silence.length() >= timeout) {
        if (!interruption.overdue) return CURLE_OPERATION_TIMEDOUT;
        interruption.overdue();
        silence.restart();
      }
      waitForBytes(interruption.descriptor);
    }
  }

 private:
  struct GlobalState {
    GlobalState() { curl_global_init(CURL_GLOBAL_DEFAULT); }
  };

  // Takes the handle back at its end, and with it the connection where no whole answer came.
  class Transfer {
   public:
    Transfer(CURLM* multi, CURL* easy) : m_multi(multi), m_easy(easy) {
      curl_multi_add_handle(m_multi, m_easy);
    }
    ~Transfer() { curl_multi_remove_handle(m_multi, m_easy); }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

   private:
    CURLM* m_multi;
    CURL* m_easy;
  };

  // For how long nothing has come or gone.
  class Silence {
   public:
    explicit Silence(CURL* easy) : m_easy(easy) {}

    Clock::duration length() {
      const curl_off_t bytes = bytesMoved();
      if (std::exchange(m_bytes, bytes) != bytes) restart();
      return Clock::now() - m_since;
    }

    void restart() { m_since = Clock::now(); }

   private:
    curl_off_t bytesMoved() const {
      curl_off_t received = 0;
      curl_off_t sent = 0;
      curl_easy_getinfo(m_easy, CURLINFO_SIZE_DOWNLOAD_T, &received);
      curl_easy_getinfo(m_easy, CURLINFO_SIZE_UPLOAD_T, &sent);
      return received + sent;
    }

    CURL* m_easy;
    curl_off_t m_bytes = 0;
    Clock::time_point m_since = Clock::now();
  };

  // Also returns after a while, and when `descriptor` is readable.
  void waitForBytes(int descriptor) {
    curl_waitfd wait{descriptor, CURL_WAIT_POLLIN, 0};
    const bool hasWait = descriptor >= 0;
    curl_multi_poll(m_multi.get(), hasWait ? &wait : nullptr, hasWait ? 1 : 0, kLookMilliseconds,
                    nullptr);
  }

  CURLcode result() const {
    int left = 0;
    while (const CURLMsg* const message = curl_multi_info_read(m_multi.get(), &left)) {
      if (message->msg == CURLMSG_DONE) return message->data.result;
    }
    return CURLE_RECV_ERROR;
  }

  struct EasyDeleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };
  struct MultiDeleter {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
  };

  GlobalState m_global;
  std::unique_ptr<CURLM, MultiDeleter> m_multi{curl_multi_init()};
  std::unique_ptr<CURL, EasyDeleter> m_easy{curl_easy_init()};
};

namespace {

// What every request to the daemon has. Nothing leads to another place: neither a proxy of the
// environment nor a redirection.
void address(CURL* easy, const DaemonAddress& daemon) {
  curl_easy_reset(easy);
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_PROXY, "");
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, kConnectMilliseconds);
  curl_easy_setopt(easy, CURLOPT_TCP_KEEPALIVE, 1L);
  curl_easy_setopt(easy, CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2);
  if (!daemon.socket.empty()) {
    curl_easy_setopt(easy, CURLOPT_UNIX_SOCKET_PATH, daemon.socket.c_str());
  }
  if (!daemon.authority.empty()) {
    curl_easy_setopt(easy, CURLOPT_CAINFO, daemon.authority.c_str());
  }
}

void setBody(CURL* easy, const HttpRequest& request) {
  curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
  if (request.method != "POST" && request.method != "PUT") return;
  curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
  curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.data());
}

HeaderList headersOf(const HttpRequest& request, const DaemonAddress& daemon) {
  HeaderList list;
  append(list, "Expect:");
  append(list, "Accept: application/json, application/problem+json");
  if (!daemon.token.empty()) append(list, "Authorization: Bearer " + daemon.token);
  for (const std::string& header : request.headers) append(list, header);
  return list;
}

bool wasReached(CURLcode result) {
  return result != CURLE_COULDNT_CONNECT && result != CURLE_COULDNT_RESOLVE_HOST &&
         result != CURLE_SSL_CONNECT_ERROR && result != CURLE_PEER_FAILED_VERIFICATION &&
         result != CURLE_SSL_CACERT_BADFILE && result != CURLE_URL_MALFORMAT;
}

std::string whyNot(CURLcode result, const char* reason) {
  if (reason[0] != '\0') return reason;
  if (result != CURLE_OPERATION_TIMEDOUT) return curl_easy_strerror(result);
  return "nothing came from it within the time limit; --timeout waits longer";
}

}  // namespace

HttpClient::HttpClient(const DaemonAddress& address)
    : m_address(address), m_handles(std::make_unique<Handles>()) {}

HttpClient::~HttpClient() = default;

std::optional<HttpAnswer> HttpClient::send(const HttpRequest& request,
                                           const Interruption& interruption) {
  CURL* const easy = m_handles->easy();
  HttpAnswer answer;
  std::array<char, CURL_ERROR_SIZE> reason{};
  const std::string url = m_address.url + request.target;
  const HeaderList headers = headersOf(request, m_address);
  address(easy, m_address);
  setBody(easy, request);
  curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, reason.data());
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, takeBody);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &answer.body);
  const auto result = m_handles->perform(interruption, m_address.timeout);
  if (!result) return std::nullopt;
  if (*result != CURLE_OK) {
    throw NoAnswer(
        "the daemon at " + m_address.name() + " does not answer: " + whyNot(*result, reason.data()),
        wasReached(*result));
  }
  curl_off_t pause = 0;
  curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &answer.status);
  curl_easy_getinfo(easy, CURLINFO_RETRY_AFTER, &pause);
  answer.retryAfter = std::chrono::seconds(pause);
  return answer;
}

HttpAnswer HttpClient::send(const HttpRequest& request) {
  return *send(request, {});
}

}  // namespace EventApps
