#include "apps/eventd/http/HeadCheck.h"

#include <string>
#include <string_view>
#include <vector>

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/RefusedRequest.h"

namespace EventApps::Http {
namespace {

[[noreturn]] void refuse(const std::string& detail, unsigned status = 400) {
  throw RefusedRequest(status, detail);
}

std::vector<std::string_view> valuesOf(const Request& head, std::string_view name) {
  std::vector<std::string_view> values;
  for (const auto& [given, value] : head.headers) {
    if (equalInAnyCase(given, name)) values.push_back(value);
  }
  return values;
}

bool isHost(std::string_view text) {
  constexpr std::string_view kForbidden = " \t,/?#@\\\"<>";
  return text.find_first_of(kForbidden) == std::string_view::npos;
}

void checkHost(const Request& head, unsigned version) {
  const std::vector<std::string_view> hosts = valuesOf(head, "Host");
  if (hosts.size() > 1) refuse("There is more than one Host header.");
  if (hosts.empty() && version >= 11) refuse("There is no Host header.");
  if (!hosts.empty() && !isHost(hosts[0])) refuse("The Host header names no host.");
}

// What stands before this server may look at one of two, and this server at the other.
void checkSingles(const Request& head) {
  for (const char* const name : {"Authorization", "Content-Type", "Last-Event-ID"}) {
    if (valuesOf(head, name).size() > 1) {
      refuse(std::string("There is more than one ") + name + " header.");
    }
  }
}

void checkLength(const Request& head, unsigned version) {
  const std::vector<std::string_view> lengths = valuesOf(head, "Content-Length");
  const std::vector<std::string_view> encodings = valuesOf(head, "Transfer-Encoding");
  if (lengths.size() > 1 || (!lengths.empty() && !encodings.empty()) || encodings.size() > 1) {
    refuse("Content-Length and Transfer-Encoding say more than once how long the body is.");
  }
  if (!lengths.empty() && (lengths[0].empty() ||
                           lengths[0].find_first_not_of("0123456789") != std::string_view::npos)) {
    refuse("The Content-Length is no number.");
  }
  if (encodings.empty()) return;
  if (version < 11) refuse("HTTP/1.0 has no Transfer-Encoding.");
  if (!equalInAnyCase(encodings[0], "chunked")) {
    refuse("The only Transfer-Encoding understood is \"chunked\".", 501);
  }
}

void checkExpectation(const Request& head) {
  for (const std::string_view expectation : valuesOf(head, "Expect")) {
    if (!equalInAnyCase(expectation, "100-continue")) {
      refuse("The only expectation understood is \"100-continue\".", 417);
    }
  }
}

}  // namespace

void checkHead(const Request& head, unsigned version) {
  if (version != 10 && version != 11) refuse("This server speaks HTTP/1.1.", 505);
  if (head.method == "CONNECT") refuse("This server is no proxy.", 501);
  checkHost(head, version);
  checkSingles(head);
  checkLength(head, version);
  checkExpectation(head);
}

}  // namespace EventApps::Http
