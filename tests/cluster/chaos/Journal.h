// What one host did and was told, line by line in a file: it outlives the SIGKILL of its host, and
// what began and has no end is of unknown outcome.
//
// Times are of the monotonic clock, which all processes of a machine share.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_JOURNAL_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_JOURNAL_H

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "apps/etcd_nodes/Descriptor.h"

namespace EventSystemTest {

struct JournalEntry {
  using Time = std::chrono::steady_clock::time_point;

  enum Kind : char {
    kStarted = 's',
    kEnded = 'e',     // because it was told to
    kRow = 'k',       // a row of its database that is to be copied
    kWriting = 'w',   // the first try of an event
    kWritten = 'W',   // the answer
    kRefused = 'x',   // given up, and each try was told to have stored nothing
    kRead = 'r',      // id 0: the end of the queue
    kDeleting = 'd',  // before the first try
    kDeleted = 'D',
    kFailed = 'f'  // any call
  };

  Kind kind = kStarted;
  Time begin{};  // of the call
  Time end{};    // the same where no call has ended
  unsigned int dsid = 0;
  unsigned long id = 0;
  unsigned long afterId = 0;
  std::string text = {};  // without blanks
};

std::string toLine(const JournalEntry& entry);
// Nothing when the line is no entry: the end of a life may be in the middle of a line.
std::optional<JournalEntry> parseLine(const std::string& line);

// Of one life of a host. Throws std::runtime_error.
class JournalWriter {
 public:
  explicit JournalWriter(const std::filesystem::path& file);
  void write(const JournalEntry& entry);

 private:
  void append(const std::string& text);

  EtcdNodes::Descriptor m_file;
};

// Of all lives of a host, while they go on.
class JournalReader {
 public:
  explicit JournalReader(std::filesystem::path file) : m_file(std::move(file)) {}

  // What was added since the last call.
  std::vector<JournalEntry> more();

 private:
  const std::filesystem::path m_file;
  std::streamoff m_offset = 0;
};

}  // namespace EventSystemTest

#endif
