// A process beside the test's own that opens a Host; see HostProcess.cpp for what it can do.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_HOST_OTHERPROCESS_H
#define EVENTSYSTEM_TESTS_HOST_OTHERPROCESS_H

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace EventSystemTest {

class OtherProcess {
 public:
  OtherProcess(const std::string& task, const std::filesystem::path& home);
  // Kills it when it still runs.
  ~OtherProcess();

  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  pid_t pid() const { return m_pid; }

  // The next line it writes, without its end; empty when there is no further one.
  std::string readLine();

  // Lets it go on to its next step, or to its end after the last one.
  void goOn();

  void kill();

  // Its exit status; -1 when a signal ended it.
  int wait();

 private:
  pid_t m_pid = -1;
  int m_input = -1;
  int m_output = -1;
};

}  // namespace EventSystemTest

#endif
