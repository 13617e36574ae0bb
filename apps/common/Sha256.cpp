#include "apps/common/Sha256.h"

#include <openssl/evp.h>

#include <array>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"

namespace EventApps {

std::string sha256Of(std::string_view text) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int size = 0;
  if (EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1) {
    throw Failure("SHA-256 is not available; see the installation of OpenSSL");
  }
  return hexOfBytes({reinterpret_cast<const char*>(digest.data()), size});
}

}  // namespace EventApps
