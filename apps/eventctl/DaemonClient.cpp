#include "apps/eventctl/DaemonClient.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

#include "apps/common/QueueNames.h"

namespace EventApps {
namespace {

using nlohmann::json;

constexpr std::chrono::milliseconds kFirstPause(50);
constexpr std::chrono::milliseconds kLongestPause(1000);

std::string textOf(const json& object, const char* member) {
  const auto found = object.find(member);
  return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string kindOfProblem(const json& problem) {
  constexpr std::string_view kPrefix = "/problems/";
  const std::string type = textOf(problem, "type");
  return type.starts_with(kPrefix) ? type.substr(kPrefix.size()) : "";
}

// What the person at the terminal can do about it.
const char* adviceFor(long status) {
  switch (status) {
    case 401:
      return "; show a token with --token-file or EVENTD_TOKEN: eventctl token add makes one";
    case 403:
      return "; a token of a higher role may do it: eventctl token add makes one";
    default:
      return "";
  }
}

}  // namespace

DaemonProblem::DaemonProblem(const std::string& message, const HttpAnswer& answer,
                             const json& problem)
    : Failure(message),
      m_members(std::make_shared<const json>(problem)),
      m_kind(kindOfProblem(problem)),
      m_passing(answer.status == 429 || answer.status == 503),
      m_pause(answer.retryAfter) {}

json DaemonClient::call(const HttpRequest& request) {
  return read(m_http.send(request));
}

std::optional<json> DaemonClient::callAtLength(const HttpRequest& request,
                                               HttpClient::Interruption interruption) {
  interruption.overdue = [this] { requireAlive(); };
  const auto answer = m_http.send(request, interruption);
  if (!answer) return std::nullopt;
  return read(*answer);
}

// On a connection of its own: the other one waits.
void DaemonClient::requireAlive() const {
  HttpClient(m_address).send({.target = "/healthz"});
}

json DaemonClient::settle(const HttpRequest& request) {
  const auto end = std::chrono::steady_clock::now() + m_address.timeout;
  std::chrono::milliseconds pause = kFirstPause;
  while (true) {
    try {
      return call(request);
    } catch (const NoAnswer& problem) {
      m_reached |= problem.reached();
      if (!m_reached || std::chrono::steady_clock::now() >= end) throw;
    } catch (const DaemonProblem& problem) {
      if (!problem.isPassing() || std::chrono::steady_clock::now() >= end) throw;
      pause = std::clamp(problem.pause(), pause, kLongestPause);
    }
    std::this_thread::sleep_for(pause);
    pause = std::min(pause * 2, kLongestPause);
  }
}

json DaemonClient::read(const HttpAnswer& answer) {
  m_reached = true;
  json body = answer.body.empty() ? json() : json::parse(answer.body, nullptr, false);
  if (answer.status < 200 || answer.status >= 300)
    refuse(answer, body.is_object() ? body : json::object());
  if (body.is_discarded()) {
    throw Failure("what answers at " + m_address.name() +
                  " is no daemon of the queues: its answer is not JSON");
  }
  return body;
}

void DaemonClient::refuse(const HttpAnswer& answer, const json& problem) const {
  const std::string detail = textOf(problem, "detail");
  const std::string said = detail.empty()
                               ? "the daemon at " + m_address.name() + " answered with status " +
                                     std::to_string(answer.status)
                               : detail;
  throw DaemonProblem(said + adviceFor(answer.status), answer, problem);
}

}  // namespace EventApps
