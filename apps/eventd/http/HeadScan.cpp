#include "apps/eventd/http/HeadScan.h"

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/RefusedRequest.h"

namespace EventApps::Http {

void HeadScan::check(char byte) const {
  if ((byte == '\n') != (m_last == '\r')) {
    throw RefusedRequest(400, "A line of the head does not end in CR LF.");
  }
  if (isControl(byte) && byte != '\r' && byte != '\n' && byte != '\t') {
    throw RefusedRequest(400, "The head has a control character.");
  }
  if (m_lineLength == 0 && (byte == ' ' || byte == '\t')) {
    throw RefusedRequest(400, "A line of the head begins with a blank.");
  }
}

std::optional<std::size_t> HeadScan::find(std::string_view bytes) {
  for (; m_scanned < bytes.size(); ++m_scanned) {
    const char byte = bytes[m_scanned];
    check(byte);
    m_last = byte;
    if (byte == '\n') {
      const bool empty = m_lineLength == 0;
      m_lineLength = 0;
      if (empty) return ++m_scanned;
    } else if (byte != '\r') {
      ++m_lineLength;
    }
  }
  return std::nullopt;
}

}  // namespace EventApps::Http
