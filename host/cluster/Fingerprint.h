// A hash by which a text is known again for certain (SHA-256, hexadecimal).
//
// Thread safety: a pure function.

#ifndef EVENTSYSTEM_HOST_CLUSTER_FINGERPRINT_H
#define EVENTSYSTEM_HOST_CLUSTER_FINGERPRINT_H

#include <string>
#include <string_view>

namespace EventSystemHost {

// Throws std::runtime_error when the hash is not available.
std::string fingerprint(std::string_view text);

}  // namespace EventSystemHost

#endif
