// The entries that an ini file may have, each with a reader that takes its value or says what would
// be allowed. Everything else in the file is refused by name.
//
// Thread safety: readEntries() is called by one thread at a time for one set of targets.

#ifndef EVENTSYSTEM_HOST_CONFIG_ENTRYREADER_H
#define EVENTSYSTEM_HOST_CONFIG_ENTRYREADER_H

#include <array>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "EventSystem/Export.h"

namespace EventSystemHost {

// Says what is allowed by throwing it as text.
struct NotAllowed {
  std::string allowed;
};

// Takes a value, or throws NotAllowed.
using EntryReader = std::function<void(const std::string& value)>;

struct KnownEntry {
  std::string section;
  std::string name;
  EntryReader read;
};

// Reads a file, which may be missing, into the targets of the readers. Throws HostError, naming
// file, section and entry, for an entry that is unknown or has a value that is not allowed.
EVENTSYSTEM_HOST_API void readEntries(const std::filesystem::path& file,
                                      const std::vector<KnownEntry>& known);

// Readers into `target`, which outlives them.

template <typename Number>
EntryReader numberEntry(Number& target, Number low, Number high) {
  return [&target, low, high](const std::string& value) {
    Number parsed{};
    const char* end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, parsed);
    if (error != std::errc() || stop != end || parsed < low || parsed > high) {
      throw NotAllowed{"a number from " + std::to_string(low) + " to " + std::to_string(high)};
    }
    target = parsed;
  };
}

template <typename Choice, std::size_t N>
EntryReader choiceEntry(Choice& target, std::array<std::pair<const char*, Choice>, N> choices) {
  return [&target, choices](const std::string& value) {
    std::string allowed = "one of";
    for (const auto& [name, meaning] : choices) {
      if (value == name) {
        target = meaning;
        return;
      }
      allowed.append(" ").append(name);
    }
    throw NotAllowed{allowed};
  };
}

template <typename Duration>
EntryReader durationEntry(Duration& target, long low, long high) {
  return [&target, low, high](const std::string& value) {
    long count = 0;
    numberEntry(count, low, high)(value);
    target = Duration(count);
  };
}

// "0" or "1".
EVENTSYSTEM_HOST_API EntryReader switchEntry(bool& target);

EVENTSYSTEM_HOST_API EntryReader textEntry(std::string& target, std::size_t maxLength);

// A relative path is relative to `home`, wherever the program was started.
EVENTSYSTEM_HOST_API EntryReader pathEntry(std::filesystem::path& target,
                                           const std::filesystem::path& home);

}  // namespace EventSystemHost

#endif
