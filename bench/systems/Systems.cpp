#include "bench/systems/Systems.h"

#include <algorithm>
#include <iterator>

namespace EventSystemBench {

std::vector<SystemEntry> allSystems() {
  std::vector<SystemEntry> all;
  for (const auto& entries : {eventSystemEntries, sqliteEntries, postgresEntries, redisEntries,
                              beanstalkEntries, natsEntries}) {
    std::ranges::move(entries(), std::back_inserter(all));
  }
  std::ranges::stable_sort(all, {}, &SystemEntry::promise);
  return all;
}

}  // namespace EventSystemBench
