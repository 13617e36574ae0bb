#include "apps/eventd/http/ResponseHead.h"

#include <algorithm>
#include <array>
#include <boost/beast/http/status.hpp>
#include <cstdio>
#include <string_view>

#include "apps/eventd/http/Characters.h"

namespace EventApps::Http {
namespace {

// "Sun, 06 Nov 1994 08:49:37 GMT", whatever the locale.
std::string dateOf(std::time_t now) {
  static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm time{};
  if (gmtime_r(&now, &time) == nullptr) return "Thu, 01 Jan 1970 00:00:00 GMT";
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
                kDays[time.tm_wday], time.tm_mday, kMonths[time.tm_mon], time.tm_year + 1900,
                time.tm_hour, time.tm_min, time.tm_sec);
  return text.data();
}

bool isTheServers(std::string_view name) {
  static constexpr std::string_view kNames[] = {"Connection", "Content-Length", "Date",
                                                "Keep-Alive", "Transfer-Encoding"};
  return std::any_of(std::begin(kNames), std::end(kNames),
                     [&](std::string_view one) { return equalInAnyCase(one, name); });
}

bool isValue(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return c != '\t' && isControl(c); });
}

void add(std::string& head, std::string_view name, std::string_view value) {
  head.append(name).append(": ").append(value).append("\r\n");
}

void addFraming(std::string& head, const Response& response, Framing framing, bool keepAlive) {
  if (framing == Framing::kChunked) {
    add(head, "Transfer-Encoding", "chunked");
  } else if (framing == Framing::kLength && mayHaveBody(response.status)) {
    add(head, "Content-Length", std::to_string(response.body.size()));
  }
  add(head, "Connection", keepAlive ? "keep-alive" : "close");
}

}  // namespace

bool mayHaveBody(unsigned status) {
  return status >= 200 && status != 204 && status != 304;
}

bool isSendable(const Response& response) {
  return response.status >= 200 && response.status <= 599 && isValue(response.contentType) &&
         std::all_of(response.headers.begin(), response.headers.end(), [](const auto& header) {
           return isToken(header.first) && isValue(header.second);
         });
}

std::string headOf(const Response& response, Framing framing, bool keepAlive, std::time_t now) {
  const auto reason =
      boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(response.status));
  std::string head;
  head.reserve(512);
  head.append("HTTP/1.1 ").append(std::to_string(response.status)).append(" ");
  head.append(reason.data(), reason.size()).append("\r\n");
  add(head, "Date", dateOf(now));
  if (!response.contentType.empty()) add(head, "Content-Type", response.contentType);
  for (const auto& [name, value] : response.headers) {
    if (!isTheServers(name)) add(head, name, value);
  }
  addFraming(head, response, framing, keepAlive);
  return head.append("\r\n");
}

}  // namespace EventApps::Http
