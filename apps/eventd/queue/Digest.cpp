#include "apps/eventd/queue/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <cstddef>

#include "apps/common/Failure.h"

namespace EventApps {

std::string digestOf(std::string_view text) {
  constexpr std::size_t kBytes = 16;
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  if (EVP_Digest(text.data(), text.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw Failure("SHA-256 is not available; see the installation of OpenSSL");
  }
  std::string hex;
  for (std::size_t i = 0; i < kBytes; ++i) {
    hex += {kDigits[digest.at(i) >> 4U], kDigits[digest.at(i) & 15U]};
  }
  return hex;
}

}  // namespace EventApps
