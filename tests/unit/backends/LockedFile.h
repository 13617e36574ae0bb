// A database file on which another process has a transaction open.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_UNIT_BACKENDS_LOCKEDFILE_H
#define EVENTSYSTEM_TESTS_UNIT_BACKENDS_LOCKEDFILE_H

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace EventSystemTest {

class LockedFile {
 public:
  // `begin`: the statement that opens the transaction.
  LockedFile(const std::string& path, const char* begin) {
    if (pipe(m_ready.data()) != 0 || pipe(m_end.data()) != 0) throw std::runtime_error("pipe");
    m_child = fork();
    if (m_child == 0) hold(path, begin);
    close(m_ready[1]);
    close(m_end[0]);
    char said = 'n';
    if (m_child < 0 || read(m_ready[0], &said, 1) != 1 || said != 'y') {
      throw std::runtime_error("the file cannot be locked");
    }
  }
  // The process ends when its end of the pipe does, also when this process dies.
  ~LockedFile() {
    close(m_end[1]);
    close(m_ready[0]);
    waitpid(m_child, nullptr, 0);
  }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;

 private:
  [[noreturn]] void hold(const std::string& path, const char* begin) const {
    close(m_end[1]);
    sqlite3* database = nullptr;
    bool held = sqlite3_open(path.c_str(), &database) == SQLITE_OK;
    held = held && sqlite3_exec(database, begin, nullptr, nullptr, nullptr) == SQLITE_OK;
    char byte = held ? 'y' : 'n';
    if (write(m_ready[1], &byte, 1) == 1 && read(m_end[0], &byte, 1) < 0) _exit(1);
    _exit(0);
  }

  std::array<int, 2> m_ready{};
  std::array<int, 2> m_end{};
  pid_t m_child = -1;
};

}  // namespace EventSystemTest

#endif
