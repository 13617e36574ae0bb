// A disk whose power fails: it is given the entries of a DiskLog one by one, and tells at any
// moment what may be found on it afterwards.
//
// What was flushed is there. Of what was not, a damage seed decides: it is not there, or all of
// it, or whole writes of it in any choice, or single sectors of 512 bytes, or halves of pages; a
// sector that was being written may hold anything where it was written. Within one sector what is
// there is as it was at one moment. A name is found as the directory had it at any moment since
// the directory was flushed.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_DISKMODEL_H
#define EVENTSYSTEM_TESTS_POWER_DISKMODEL_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/power/DiskLog.h"

namespace EventSystemTest {

// What is found after the power is back: content by path.
using DiskImage = std::map<std::filesystem::path, std::string>;

// Damages that are no random choice.
constexpr std::uint64_t kNothingUnflushed = 0;
constexpr std::uint64_t kEverything = 1;
constexpr std::uint64_t kInOrderAndTheNewestTorn = 2;

class DiskModel {
 public:
  // The log must outlive the model.
  explicit DiskModel(const std::vector<DiskEntry>& log) : m_log(log) {}

  // To the moment after so many entries; only forward.
  void advance(std::size_t position);

  // How much waits for a flush; with 0 every damage gives the same image.
  std::size_t unflushed() const;

  DiskImage crash(std::uint64_t damage) const;

 private:
  struct File {
    std::string flushed;
    std::vector<std::size_t> unflushed;  // entries, in order
  };
  // What a name stands for: a file, or nothing.
  using Target = std::optional<std::size_t>;
  struct Name {
    Target flushed;
    std::vector<std::pair<std::size_t, Target>> unflushed;  // entry, and what it made of the name
  };

  void apply(std::size_t position);
  void nameKnown(const DiskEntry& entry, std::size_t position);
  void flushFile(File& file, std::size_t covered) const;
  void flushDirectory(const DiskEntry& entry);
  std::string contentOf(const File& file, std::uint64_t seed, std::size_t newest) const;

  const std::vector<DiskEntry>& m_log;
  std::size_t m_position = 0;
  std::map<std::size_t, File> m_files;
  std::map<std::filesystem::path, Name> m_names;
  std::map<std::filesystem::path, std::set<std::string>> m_flushedNames;  // by directory
};

}  // namespace EventSystemTest

#endif
