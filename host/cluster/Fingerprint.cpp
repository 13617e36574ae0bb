#include "host/cluster/Fingerprint.h"

#include <openssl/evp.h>

#include <array>
#include <stdexcept>

namespace EventSystemHost {

std::string fingerprint(std::string_view text) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int size = 0;
  if (EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("SHA-256 is not available");
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string hexadecimal;
  for (unsigned int i = 0; i < size; ++i) {
    hexadecimal += kDigits[digest[i] >> 4];
    hexadecimal += kDigits[digest[i] & 15];
  }
  return hexadecimal;
}

}  // namespace EventSystemHost
