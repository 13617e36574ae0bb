// Short texts that stand for long ones.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_DIGEST_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_DIGEST_H

#include <string>
#include <string_view>

namespace EventApps {

// 128 bits of the text's SHA-256, in hex digits. Throws Failure when the library cannot make it.
std::string digestOf(std::string_view text);

}  // namespace EventApps

#endif
