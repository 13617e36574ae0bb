// Small matters that event classes share: their text copies, the server name and the state.
//
// Thread safety: everything works on its arguments only.

#ifndef EVENTSYSTEM_SRC_EVENTS_EVENTTEXT_H
#define EVENTSYSTEM_SRC_EVENTS_EVENTTEXT_H

#include <cstring>
#include <string_view>

namespace EventSystem {

// A copy of `text` to be released with free(); NULL for NULL.
char* duplicateText(const char* text);

// Copies a text, cut to `bound` bytes with its terminator; NULL is the empty text. Never reads more
// than it copies.
void copyText(std::string_view text, char* value, unsigned long bound);
void copyText(const char* text, char* value, unsigned long bound);

// The server name as two of the classes write it, "(NULL)" for NULL, and its way back: NULL for a
// text that begins with "(NULL)".
inline constexpr char kNullName[] = "(NULL)";
inline const char* nameOrNull(const char* server) {
  return server == nullptr ? kNullName : server;
}
inline char* nameFromText(char* server) {
  const bool isNull =
      *server == *kNullName && strncmp(server, kNullName, sizeof kNullName - 1) == 0;
  return isNull ? nullptr : server;
}

// What the server status classes store: states above 2 become 1.
unsigned int validState(unsigned int state);

// The room of a server name in an event string, its closing ";}}" and terminator included.
constexpr unsigned long kServerNameBound = 128;

}  // namespace EventSystem

#endif
