// A program that ends with its object, and with its owner's process, however that ends. It is in a
// process group of its own: an interrupt at the terminal is its owner's to deal with.
//
// Thread safety: none; start it from the main thread, whose end it shares.

#ifndef EVENTSYSTEM_APPS_ETCD_NODES_SUBPROCESS_H
#define EVENTSYSTEM_APPS_ETCD_NODES_SUBPROCESS_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace EtcdNodes {

// What a program finds when it starts. Streams that are -1 lead to /dev/null.
struct Surroundings {
  std::filesystem::path directory = {};       // empty: the caller's own
  std::vector<std::string> environment = {};  // "NAME=value", before the caller's own
  int input = -1;
  int output = -1;  // standard output and standard error
};

class Subprocess {
 public:
  Subprocess() = default;  // holds nothing

  // Throws std::runtime_error when there can be no process. A command that cannot be run ends with
  // status 127.
  Subprocess(const std::vector<std::string>& command, const Surroundings& surroundings);
  // What the program prints goes to `output`, after what is there.
  Subprocess(const std::vector<std::string>& command, const std::filesystem::path& output);
  ~Subprocess() { kill(); }

  Subprocess(Subprocess&& other) noexcept { *this = std::move(other); }
  Subprocess& operator=(Subprocess&& other) noexcept {
    std::swap(m_pid, other.m_pid);
    std::swap(m_status, other.m_status);
    return *this;
  }

  // Whether it has not ended.
  bool running();
  void signal(int number) const;  // SIGSTOP: returns when it has stopped

  // SIGKILL, and waits.
  void kill();

  // Waits for its end: its exit status, or minus the number of the signal that ended it.
  int wait();

 private:
  void reap(int flags);

  pid_t m_pid = 0;
  int m_status = 0;  // once it has ended
};

// Runs a program to its end: what it printed, by way of the file `output`. Throws
// std::runtime_error with what it printed when it fails.
std::string runProgram(const std::vector<std::string>& command,
                       const std::filesystem::path& output);

}  // namespace EtcdNodes

#endif
