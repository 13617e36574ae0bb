// Any bytes as the inside of a JSON string.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_HOST_LOGGING_JSONTEXT_H
#define EVENTSYSTEM_HOST_LOGGING_JSONTEXT_H

#include <string>
#include <string_view>

namespace EventSystemHost {

// Appends `text` escaped, without the quotes. Bytes that are no UTF-8 become U+FFFD.
void appendJsonText(std::string& line, std::string_view text);

}  // namespace EventSystemHost

#endif
