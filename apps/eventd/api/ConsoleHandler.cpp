// The console's files.

#include <string>
#include <string_view>
#include <utility>

#include "apps/common/Display.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/console/Assets.h"

namespace EventApps::Api {
namespace {

constexpr const char* kContentSecurityPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

Http::Response page(std::string contentType, std::string body) {
  return {200,
          std::move(contentType),
          std::move(body),
          {{"Content-Security-Policy", kContentSecurityPolicy},
           {"Referrer-Policy", "no-referrer"},
           {"Cross-Origin-Opener-Policy", "same-origin"}}};
}

bool takesGzip(const Http::Request& request) {
  const std::string_view codings = request.header("Accept-Encoding");
  return codings.find("gzip") != std::string_view::npos &&
         codings.find("gzip;q=0") == std::string_view::npos;
}

void answerAsset(const CallPtr& call, const Asset& asset) {
  const bool isZipped = !asset.gzip.empty() && takesGzip(call->request());
  Http::Response response =
      page(std::string(asset.contentType), std::string(isZipped ? asset.gzip : asset.body));
  if (isZipped) response.headers.emplace_back("Content-Encoding", "gzip");
  if (!asset.gzip.empty()) response.headers.emplace_back("Vary", "Accept-Encoding");
  if (asset.immutable) {
    response.headers.emplace_back("Cache-Control", "public, max-age=31536000, immutable");
  }
  call->answer(std::move(response));
}

}  // namespace

void showAsset(const CallPtr& call) {
  const std::string& path = call->request().path;
  if (const Asset* const asset = findAsset(path)) return answerAsset(call, *asset);
  if (path == "/") {
    return call->answer(page("text/plain; charset=utf-8",
                             "This is eventd, built without its console. GET /openapi.json "
                             "describes the API.\n"));
  }
  call->fail(ProblemKind::kNotFound, "there is nothing at " + displayText(path) +
                                         "; /openapi.json describes what there is");
}

}  // namespace EventApps::Api
