// eventctl started again, as a process of its own.
//
// Thread safety: used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CHILDPROCESS_H
#define EVENTSYSTEM_APPS_EVENTCTL_CHILDPROCESS_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/etcd_nodes/Descriptor.h"
#include "apps/etcd_nodes/Subprocess.h"

namespace EventApps {

struct ChildOptions {
  std::filesystem::path directory = {};       // where it runs
  std::vector<std::string> environment = {};  // "NAME=value", beside this process's own
  bool takesInput = false;                    // standard input is a pipe, else it is empty
};

// A running eventctl. It is killed at the object's end.
class ChildProcess {
 public:
  using TakeLine = std::function<void(const std::string&)>;

  // Throws Failure when it cannot be started.
  ChildProcess(const std::vector<std::string>& arguments, const ChildOptions& options);

  // Becomes readable when the child has written to standard output or standard error, or ended.
  int output() const { return m_output.get(); }
  // Hands on the lines that are there now. False when there will be no more.
  bool readLines(const TakeLine& take);

  // Writable while the child takes more; -1 without input.
  int input() const { return m_input.get(); }
  // Hands over as much as the child takes now, in bytes. A child that takes no more closes it.
  std::size_t write(std::string_view text);
  void closeInput() { m_input.close(); }

  // Waits for its end: the exit status. Throws Failure when a signal ended it.
  int wait();

 private:
  EtcdNodes::Descriptor m_input;
  EtcdNodes::Descriptor m_output;
  EtcdNodes::Subprocess m_process;
  std::string m_pending;  // the start of a line
};

// Runs eventctl to its end, and hands every line that it writes to `take`. Returns its exit status.
// Throws Failure when it cannot be started, when a signal ends it, and, the child killed, when
// the descriptor `stop` becomes readable.
int runSelf(const std::vector<std::string>& arguments, const ChildOptions& options,
            const ChildProcess::TakeLine& take, int stop);

}  // namespace EventApps

#endif
