#include "apps/eventd/queue/Digest.h"

#include "apps/common/Sha256.h"

namespace EventApps {

std::string digestOf(std::string_view text) {
  constexpr std::size_t kHexDigits = 32;
  return sha256Of(text).substr(0, kHexDigits);
}

}  // namespace EventApps
