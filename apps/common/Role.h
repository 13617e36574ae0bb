// What somebody may do with the queues: each role may do all that the ones before it may.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_ROLE_H
#define EVENTSYSTEM_APPS_COMMON_ROLE_H

#include <array>
#include <cstddef>
#include <utility>

namespace EventApps {

enum class Role {
  kRead,   // looks at events and figures
  kWrite,  // stores and removes single events
  kAdmin   // removes many events, checks and repairs, adds and removes data selections
};

constexpr std::array<std::pair<const char*, Role>, 3> kRoles = {
    {{"read", Role::kRead}, {"write", Role::kWrite}, {"admin", Role::kAdmin}}};

constexpr const char* nameOf(Role role) {
  return kRoles[static_cast<std::size_t>(role)].first;
}

}  // namespace EventApps

#endif
