// A server that is started for one measurement and ends with it: when the object goes, and when
// this process ends in whatever way.
//
// Thread safety: none. The thread that starts a server must live as long as the server: the kernel
// ends the server with that thread.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_SERVERPROCESS_H
#define EVENTSYSTEM_BENCH_SYSTEMS_SERVERPROCESS_H

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace EventSystemBench {

struct User {
  uid_t uid;
  gid_t gid;
};

// The user that servers run as which refuse to be root: postgres, else nobody. Nothing when this
// process is not root.
std::optional<User> unprivilegedUser();

struct ServerCommand {
  std::vector<std::string> arguments;  // the program first
  std::filesystem::path directory;     // where it runs, and writes what it says to server.log
  std::optional<User> user;            // nothing: as this process
  int stopSignal = SIGTERM;
  int orphanSignal = SIGKILL;  // sent by the kernel when this process ends
};

class ServerProcess {
 public:
  explicit ServerProcess(ServerCommand command);
  ~ServerProcess();
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;

  // Returns when `ready` says true. Throws SystemError, with what the server wrote last, when the
  // server has ended or it takes longer than half a minute.
  void waitUntil(const std::function<bool()>& ready);

  // Waits for its end; returns its wait status.
  int waitForEnd();

  pid_t pid() const { return m_pid; }

 private:
  [[noreturn]] void runChild(pid_t parent) const;
  bool hasEnded(int waitOptions);
  std::string lastWords() const;

  ServerCommand m_command;
  pid_t m_pid = -1;  // -1: has been waited for
  int m_status = 0;
};

}  // namespace EventSystemBench

#endif
