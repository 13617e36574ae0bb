#include "apps/eventd/http/Core.h"

#include <boost/beast/http/status.hpp>
#include <exception>
#include <utility>

namespace EventApps::Http {
namespace {

Response plainRefusal(unsigned status, const std::string& detail) {
  const auto reason =
      boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(status));
  std::string body(reason.data(), reason.size());
  body.append(". ").append(detail).append("\n");
  return {status, "text/plain; charset=utf-8", std::move(body), {}};
}

}  // namespace

Core::Core(const Limits& given, Server::Handler handler, int threads)
    : limits(given), handle(std::move(handler)), context(threads), connections(given) {}

Response Core::refusalFor(unsigned status, const std::string& detail) const noexcept try {
  return refuse ? refuse(status, detail) : plainRefusal(status, detail);
} catch (const std::exception& error) {
  complain(std::string("An error response could not be made: ") + error.what());
  return {500, {}, {}, {}};
} catch (...) {
  return {500, {}, {}, {}};
}

void Core::complain(const std::string& message) const noexcept try {
  if (complaint) complaint(message);
} catch (...) {
  // Whoever is told has failed; there is nobody else to tell.
}

}  // namespace EventApps::Http
