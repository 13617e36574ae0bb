// What bytes of a message may be.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_CHARACTERS_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_CHARACTERS_H

#include <string_view>

namespace EventApps::Http {

// Well-formed UTF-8: no surrogates, nothing above U+10FFFF, no longer form than needed.
bool isUtf8(std::string_view bytes);

// A name as HTTP has it: a letter, digit or one of !#$%&'*+-.^_`|~, at least one.
bool isToken(std::string_view text);

bool isControl(char byte);

// ASCII only, whatever the locale.
bool equalInAnyCase(std::string_view one, std::string_view other);

}  // namespace EventApps::Http

#endif
