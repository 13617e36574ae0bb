#include "apps/eventd/http/RequestReader.h"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/HeadCheck.h"
#include "apps/eventd/http/HeadScan.h"
#include "apps/eventd/http/RefusedRequest.h"
#include "apps/eventd/http/Target.h"

namespace EventApps::Http {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;

// However a chunked body goes on, "0 CR LF CR LF" is still to come. The parser takes for granted
// that it is not called with less of that once it has seen the zero.
constexpr std::size_t kLeastOfChunks = 5;

std::string textOf(beast::string_view view) {
  return {view.data(), view.size()};
}

[[noreturn]] void refuse(const beast::error_code& error, std::size_t bodyBytes) {
  if (error == http::error::body_limit) {
    throw RefusedRequest(413, "The body is longer than " + std::to_string(bodyBytes) + " bytes.");
  }
  if (error == http::error::bad_version) throw RefusedRequest(505, "This server speaks HTTP/1.1.");
  throw RefusedRequest(400, "This is no HTTP request: " + error.message() + ".");
}

}  // namespace

class RequestReader::Parser {
 public:
  Parser(std::size_t headerBytes, std::size_t bodyBytes) {
    constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
    parser.header_limit(static_cast<std::uint32_t>(std::min(headerBytes, most - 1) + 1));
    parser.body_limit(bodyBytes);
    parser.eager(true);
  }

  HeadScan scan;
  http::request_parser<http::string_body> parser;
  Request request;
  bool hasHead = false;
  bool chunkable = false;
};

RequestReader::RequestReader(std::size_t headerBytes, std::size_t bodyBytes)
    : m_headerBytes(headerBytes), m_bodyBytes(bodyBytes) {
  reset();
}

RequestReader::~RequestReader() = default;

void RequestReader::reset() {
  m_parser = std::make_unique<Parser>(m_headerBytes, m_bodyBytes);
}

Request& RequestReader::request() {
  return m_parser->request;
}
bool RequestReader::keepAlive() const {
  return m_parser->parser.keep_alive();
}
bool RequestReader::chunkable() const {
  return m_parser->chunkable;
}

std::size_t RequestReader::bodySize() const {
  return m_parser->parser.get().body().size() + m_parser->request.body.size();
}

bool RequestReader::isInBody() const {
  return m_parser->hasHead;
}
bool RequestReader::hasBody() const {
  return !m_parser->parser.is_done();
}

bool RequestReader::expectsContinue() const {
  return m_parser->chunkable && !m_parser->request.header("Expect").empty();
}

RequestReader::Step RequestReader::next(std::string_view bytes, std::size_t& used) {
  used = 0;
  return m_parser->hasHead ? readBody(bytes, used) : readHead(bytes, used);
}

RequestReader::Step RequestReader::readHead(std::string_view bytes, std::size_t& used) {
  // Old clients end a body with an empty line that belongs to nothing.
  while (bytes.substr(used, 2) == "\r\n") used += 2;
  bytes.remove_prefix(used);
  if (bytes == "\r") return Step::kNeedMore;
  const std::optional<std::size_t> length = m_parser->scan.find(bytes);
  if (length.value_or(bytes.size()) > m_headerBytes) {
    throw RefusedRequest(431, "Request line and headers are longer than " +
                                  std::to_string(m_headerBytes) + " bytes.");
  }
  if (!length) return Step::kNeedMore;

  beast::error_code error;
  auto& parser = m_parser->parser;
  used += parser.put(boost::asio::buffer(bytes.data(), *length), error);
  if (error && error != http::error::need_more) refuse(error, m_bodyBytes);
  if (!parser.is_header_done()) throw RefusedRequest(400, "This is no HTTP request.");

  Request& request = m_parser->request;
  const auto& message = parser.get();
  request.method = textOf(message.method_string());
  for (const auto& field : message) {
    request.headers.emplace_back(textOf(field.name_string()), textOf(field.value()));
  }
  m_parser->chunkable = message.version() >= 11;
  checkHead(request, message.version());
  readTarget({message.target().data(), message.target().size()}, request);
  m_parser->hasHead = true;
  return Step::kHead;
}

RequestReader::Step RequestReader::readBody(std::string_view bytes, std::size_t& used) {
  auto& parser = m_parser->parser;
  if (!parser.is_done()) {
    const std::size_t least = parser.chunked() ? kLeastOfChunks : 1;
    if (bytes.size() < least) return Step::kNeedMore;
    beast::error_code error;
    used = parser.put(boost::asio::buffer(bytes.data(), bytes.size()), error);
    if (error && error != http::error::need_more) refuse(error, m_bodyBytes);
  }
  if (parser.is_done()) {
    m_parser->request.body = std::move(parser.get().body());
    return Step::kDone;
  }
  // What the parser keeps is the head of a chunk, or what follows the last one.
  if (bytes.size() - used > m_headerBytes) {
    throw RefusedRequest(431, "The lines around a chunk are longer than " +
                                  std::to_string(m_headerBytes) + " bytes.");
  }
  return Step::kNeedMore;
}

}  // namespace EventApps::Http
