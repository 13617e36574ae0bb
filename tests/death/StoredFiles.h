// What the files of a home hold, read from copies: nothing of what the next process will find is
// touched. For homes that no process has open.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_TESTS_DEATH_STOREDFILES_H
#define EVENTSYSTEM_TESTS_DEATH_STOREDFILES_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace EventSystemTest {

// Events by the order of their ids.
using StoredEvents = std::vector<std::pair<std::uint64_t, std::string>>;

struct StoredFiles {
  std::map<std::uint32_t, StoredEvents> queues{};
  std::map<std::string, std::uint64_t> maxIds{};  // by name: "maxid", "maxid_5"
  std::set<std::string> auditContents{};
  std::vector<std::string> damage{};  // what is wrong with the files themselves
};

StoredFiles readStoredFiles(const std::filesystem::path& home);

}  // namespace EventSystemTest

#endif
