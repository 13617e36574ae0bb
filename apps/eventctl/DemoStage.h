// What the tours print: numbered headings, commands with what they print, and checks with their
// outcome; and the commands that they run, each a process of its own.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOSTAGE_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOSTAGE_H

#include <chrono>
#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/eventctl/ChildProcess.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {

class DemoStage {
 public:
  using Arguments = std::vector<std::string>;

  // Commands run in `directory`.
  DemoStage(const StopSignals& stop, const std::filesystem::path& directory)
      : m_stop(stop), m_directory(directory) {}

  Output& output() { return m_output; }

  void heading(const std::string& text);
  void say(const std::string& text);
  void note(bool good, const std::string& text);
  // A line of a command, folded where it is too long.
  void echo(const std::string& line);
  // A command as a person would call it.
  void echoCommand(const Arguments& arguments);

  // Runs eventctl in sight. Returns the lines it printed. Another exit status than `status` is a
  // check that failed; -1: 0 and 1 are both fine.
  Arguments show(const Arguments& arguments, int status = kDone);

  // Runs eventctl out of sight: its exit status.
  int run(const Arguments& arguments, const ChildProcess::TakeLine& take);
  // What it printed, as one JSON value; discarded when it is none.
  nlohmann::json ask(const Arguments& arguments);

  // How a command finds its environment, to print as wide and as coloured as this process.
  ChildOptions childOptions() const;

  // Throws Failure once SIGINT or SIGTERM has arrived.
  void endWhenInterrupted() const;
  int stopDescriptor() const { return m_stop.descriptor(); }

  // How many checks passed; the exit status that this means.
  int finish();

 private:
  Output& m_output = standardOutput();
  const StopSignals& m_stop;
  std::filesystem::path m_directory;
  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  unsigned int m_steps = 0;
  unsigned int m_good = 0;
  unsigned int m_bad = 0;
};

}  // namespace EventApps

#endif
