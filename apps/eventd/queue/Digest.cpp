#include "apps/eventd/queue/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <cstddef>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"

namespace EventApps {

std::string digestOf(std::string_view text) {
  constexpr std::size_t kBytes = 16;
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  if (EVP_Digest(text.data(), text.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw Failure("SHA-256 is not available; see the installation of OpenSSL");
  }
  return hexOfBytes({reinterpret_cast<const char*>(digest.data()), kBytes});
}

}  // namespace EventApps
