// What names this machine knows: a bare one knows not even localhost.
//
// Thread safety: a plain function.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_NAMELOOKUP_H
#define EVENTSYSTEM_TESTS_SUPPORT_NAMELOOKUP_H

#include <netdb.h>

#include <string>

namespace EventSystemTest {

inline bool isKnownName(const std::string& name) {
  addrinfo* found = nullptr;
  if (getaddrinfo(name.c_str(), nullptr, nullptr, &found) != 0) return false;
  freeaddrinfo(found);
  return true;
}

}  // namespace EventSystemTest

#endif
