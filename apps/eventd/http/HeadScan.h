// Finds the end of a request's head while it arrives, and refuses what other readers of HTTP could
// take for the end of a line, or of the head, elsewhere.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_HEADSCAN_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_HEADSCAN_H

#include <cstddef>
#include <optional>
#include <string_view>

namespace EventApps::Http {

class HeadScan {
 public:
  // `bytes` is all of the head that is there, which begins with what the last call was given.
  // The head's length, its empty line included, when all of it is there. Throws RefusedRequest.
  std::optional<std::size_t> find(std::string_view bytes);

 private:
  void check(char byte) const;

  std::size_t m_scanned = 0;
  std::size_t m_lineLength = 0;  // of the line so far
  char m_last = 0;
};

}  // namespace EventApps::Http

#endif
