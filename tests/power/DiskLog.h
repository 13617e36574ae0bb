// What a program did to its files, in order: the truth from which the disk after a power loss at
// any moment is made.
//
// It sees the files that SQLite opens, and which directories were flushed by whomever: the program
// around it is built with DirectorySync.cpp. Other files are not in it.
//
// Thread safety: any thread; entry() and the like only while nothing is recorded.

#ifndef EVENTSYSTEM_TESTS_POWER_DISKLOG_H
#define EVENTSYSTEM_TESTS_POWER_DISKLOG_H

#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/WatchedDisk.h"

namespace EventSystemTest {

struct DiskEntry {
  enum class Kind {
    kKnown,      // a file that was there before, with `data`
    kCreated,    // a name and an empty file
    kRemoved,    // a name
    kWritten,    // `data` at `offset`
    kTruncated,  // to `offset` bytes
    kFlushed,    // the file, as it was after `covered` entries
    kDirectoryFlushed
  };
  Kind kind;
  std::size_t file = 0;          // a number for each file, also when a name is used again
  std::filesystem::path path{};  // kKnown, kCreated, kRemoved, kDirectoryFlushed
  std::string data{};
  sqlite3_int64 offset = 0;
  std::size_t covered = 0;        // kFlushed, kDirectoryFlushed
  std::set<std::string> names{};  // kDirectoryFlushed: what was in it
};

std::set<std::string> namesIn(const std::filesystem::path& directory);

class DiskLog : public DiskWatcher {
 public:
  // Records until it ends, one at a time. What is in `root` and below is on the disk already.
  explicit DiskLog(const std::filesystem::path& root);
  ~DiskLog() override;
  DiskLog(const DiskLog&) = delete;
  DiskLog& operator=(const DiskLog&) = delete;

  // How many entries there are: a moment of the day.
  std::size_t position() const;

  const std::vector<DiskEntry>& entries() const { return m_entries; }

  // Waits until a WAL that has grown to so many pages since it started over has been copied into
  // its file and flushed there: what another thread does is then at the same place every time.
  void waitUntilCopied(std::size_t walPages);

  int before(const DiskRequest& request) override;
  void after(const DiskRequest& request) override;

  // The one that records; NULL when none does.
  static DiskLog* recording();
  std::size_t beginDirectoryFlush() const { return position(); }
  void directoryFlushed(const std::filesystem::path& directory, std::size_t covered,
                        std::set<std::string> names);

 private:
  void opened(const DiskRequest& request);
  void noteKnown(const std::filesystem::path& path, std::string content);
  void noteProgress(const DiskRequest& request);
  DiskEntry entryOf(DiskEntry::Kind kind, const DiskRequest& request) const;

  mutable std::mutex m_mutex;
  std::vector<DiskEntry> m_entries;
  std::map<sqlite3_file*, std::size_t> m_open;             // the numbers of open files
  std::map<std::filesystem::path, std::size_t> m_numbers;  // of files that have a name
  std::map<sqlite3_file*, std::size_t> m_flushes;          // under way, with what they cover
  std::set<std::filesystem::path> m_creating;
  std::size_t m_files = 0;
  std::condition_variable m_copied;
  sqlite3_int64 m_walBytes = 0;  // written since the database file was flushed
};

}  // namespace EventSystemTest

#endif
