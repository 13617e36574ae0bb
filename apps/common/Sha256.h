// The digest that stands for a text where the text itself must not be kept, or is too long.
//
// Thread safety: a pure function of its argument.

#ifndef EVENTSYSTEM_APPS_COMMON_SHA256_H
#define EVENTSYSTEM_APPS_COMMON_SHA256_H

#include <string>
#include <string_view>

namespace EventApps {

// The text's SHA-256 in 64 lower-case hex digits. Throws Failure when OpenSSL cannot make it.
std::string sha256Of(std::string_view text);

}  // namespace EventApps

#endif
