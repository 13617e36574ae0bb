#include "apps/eventd/api/RequestLog.h"

#include <string>

#include "EventSystem/platform/HostLog.h"
#include "apps/common/Display.h"

namespace EventApps::Api {
namespace {

// In one word, without what a terminal would obey: what others choose cannot pass for the rest of
// the line.
std::string wordOf(const std::string& text) {
  std::string word;
  for (const char c : displayText(text)) word.append(c == ' ' ? "%20" : std::string(1, c));
  return word;
}

}  // namespace

void RequestLog::write(const Http::Request& request, const std::optional<Identity>& who,
                       const Outcome& outcome) {
  constexpr double kMilliseconds = 1000;
  m_metrics.onRequest(request.method, outcome.status);
  InfoA(0, "eventd: %s %s %s %s %u %zu bytes %.1f ms",
        request.peer == nullptr ? "-" : request.peer->address.c_str(),
        who ? wordOf(who->key()).c_str() : "-", request.method.c_str(),
        wordOf(request.path).c_str(), outcome.status, outcome.bytes,
        outcome.seconds * kMilliseconds);
}

void RequestLog::writeRefusal(unsigned status, const std::string& detail) {
  m_metrics.onRequest("", status);
  InfoA(0, "eventd: refused a request (%u): %s", status, detail.c_str());
}

}  // namespace EventApps::Api
