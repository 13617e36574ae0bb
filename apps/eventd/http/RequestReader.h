// Reads requests from the bytes of one connection, piece by piece as they arrive, and refuses what
// is not HTTP/1.x, too long, or could be read in two ways.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_REQUESTREADER_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_REQUESTREADER_H

#include <cstddef>
#include <memory>
#include <string_view>

#include "apps/eventd/http/Request.h"

namespace EventApps::Http {

class RequestReader {
 public:
  enum class Step {
    kNeedMore,  // of the request's bytes
    kHead,      // request() has all but the body; go on with what is left of the bytes
    kDone       // request() is whole
  };

  RequestReader(std::size_t headerBytes, std::size_t bodyBytes);
  ~RequestReader();

  // `bytes` are those that have not been used yet; `used` is how many of them were now. Throws
  // RefusedRequest; then nothing but reset() is left to be done.
  Step next(std::string_view bytes, std::size_t& used);

  bool isInBody() const;

  // From kHead on.
  Request& request();
  bool hasBody() const;
  bool expectsContinue() const;
  bool keepAlive() const;        // as far as the client is concerned
  bool chunkable() const;        // whether the client understands a chunked answer
  std::size_t bodySize() const;  // bytes that are here

  // The next request.
  void reset();

 private:
  class Parser;

  Step readHead(std::string_view bytes, std::size_t& used);
  Step readBody(std::string_view bytes, std::size_t& used);

  std::size_t m_headerBytes;
  std::size_t m_bodyBytes;
  std::unique_ptr<Parser> m_parser;
};

}  // namespace EventApps::Http

#endif
