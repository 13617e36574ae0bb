// What was written to a file since its last flush, and how to take it back: a kernel may drop the
// pages that it could not write.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_UNFLUSHEDWRITES_H
#define EVENTSYSTEM_TESTS_SUPPORT_UNFLUSHEDWRITES_H

#include <sqlite3.h>

#include <vector>

namespace EventSystemTest {

class UnflushedWrites {
 public:
  // To be called before a write of `size` bytes.
  void note(sqlite3_file* file, int size, sqlite3_int64 offset) {
    Overwritten old{offset, std::vector<char>(static_cast<std::size_t>(size))};
    file->pMethods->xRead(file, old.bytes.data(), size, offset);
    m_overwritten.push_back(std::move(old));
  }

  void flushed(sqlite3_file* file) {
    m_overwritten.clear();
    file->pMethods->xFileSize(file, &m_flushedSize);
  }

  void lose(sqlite3_file* file) {
    for (auto write = m_overwritten.rbegin(); write != m_overwritten.rend(); ++write) {
      file->pMethods->xWrite(file, write->bytes.data(), static_cast<int>(write->bytes.size()),
                             write->offset);
    }
    file->pMethods->xTruncate(file, m_flushedSize);
    m_overwritten.clear();
  }

 private:
  struct Overwritten {
    sqlite3_int64 offset;
    std::vector<char> bytes;
  };
  std::vector<Overwritten> m_overwritten;
  sqlite3_int64 m_flushedSize = 0;
};

}  // namespace EventSystemTest

#endif
