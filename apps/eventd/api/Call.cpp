#include "apps/eventd/api/Call.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "apps/common/EventView.h"

namespace EventApps::Api {
namespace {

bool hasHeader(const Http::Response& response, std::string_view name) {
  return std::any_of(response.headers.begin(), response.headers.end(),
                     [&](const auto& header) { return header.first == name; });
}

}  // namespace

Call::Call(std::shared_ptr<Http::Exchange> exchange, RequestLog& log,
           std::optional<Identity> identity, PathArguments arguments)
    : m_exchange(std::move(exchange)),
      m_log(log),
      m_identity(std::move(identity)),
      m_arguments(std::move(arguments)) {}

const std::string& Call::argument(std::string_view name) const {
  static const std::string none;
  const auto found = m_arguments.find(name);
  return found == m_arguments.end() ? none : found->second;
}

void Call::answer(Http::Response response) {
  if (isFirst(response.status, response.body.size())) {
    m_exchange->respond(finished(std::move(response)));
  }
}

void Call::answerJson(unsigned status, const nlohmann::ordered_json& object) {
  answer({status, "application/json", jsonLine(object) + "\n", {}});
}

void Call::fail(const Problem& problem) {
  answer(responseTo(problem, request().path));
}

void Call::startStream(Http::Response head) {
  if (isFirst(head.status, 0)) m_exchange->startStream(finished(std::move(head)));
}

bool Call::isFirst(unsigned status, std::size_t bytes) {
  if (m_answered.exchange(true)) return false;
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - m_start;
  m_log.write(request(), m_identity, {status, bytes, time.count()});
  return true;
}

Http::Response finished(Http::Response response) {
  response.headers.emplace_back("X-Content-Type-Options", "nosniff");
  if (!hasHeader(response, "Cache-Control")) {
    response.headers.emplace_back("Cache-Control", "no-store");
  }
  return response;
}

}  // namespace EventApps::Api
