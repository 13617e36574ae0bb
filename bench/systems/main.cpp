// queue_systems: what this library's queue costs beside what a programmer would use instead.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/systems/Check.h"
#include "bench/systems/Comparison.h"
#include "bench/systems/JsonReport.h"
#include "bench/systems/Machine.h"

namespace {

using namespace EventSystemBench;

// Everything that a run writes is below it; open to the servers' users, removed at the end.
class DataDirectory {
 public:
  explicit DataDirectory(const std::filesystem::path& parent) {
    if (isInMemory(parent)) throw SystemError(parent.string() + " is no disk; see --data");
    std::string name = (parent / "eventsystem-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw SystemError("cannot write in " + parent.string());
    m_path = name;
    std::filesystem::permissions(m_path, std::filesystem::perms(0711));
  }
  ~DataDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  DataDirectory(const DataDirectory&) = delete;
  DataDirectory& operator=(const DataDirectory&) = delete;

  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

struct Options {
  std::filesystem::path data = "/var/tmp";
  std::filesystem::path json;
  bool check = false;
  std::string only;
  int rounds = 5;
  int milliseconds = 400;
  int seconds = 24 * 60 * 60;
};

void define(CLI::App& app, Options& options) {
  app.add_option("--data", options.data, "keep all queues below this directory, on a disk")
      ->capture_default_str();
  app.add_flag("--check", options.check, "only see that every system does what is measured");
  app.add_option("--json", options.json, "write the figures to this file");
  app.add_option("--only", options.only, "measure only systems whose name has this text in it");
  app.add_option("--rounds", options.rounds, "how often everything is measured")
      ->capture_default_str()
      ->check(CLI::Range(1, 100));
  app.add_option("--milliseconds", options.milliseconds, "how long one operation is measured")
      ->capture_default_str()
      ->check(CLI::Range(10, 60000));
  app.add_option("--seconds", options.seconds, "begin nothing more after this time")
      ->capture_default_str()
      ->check(CLI::Range(1, 24 * 60 * 60));
}

int run(const Options& options) {
  const DataDirectory data(options.data);
  if (options.check) return checkAll(data.path()) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  const Machine machine = thisMachine(data.path());
  const ComparisonPlan plan{data.path(), options.rounds,
                            std::chrono::milliseconds(options.milliseconds),
                            std::chrono::seconds(options.seconds), options.only};
  const std::string json = toJson(compare(plan), plan, machine) + "\n";
  if (options.json.empty()) {
    std::fputs(json.c_str(), stdout);
  } else if (!(std::ofstream(options.json) << json).flush()) {
    throw SystemError("cannot write " + options.json.string());
  }
  return EXIT_SUCCESS;
}

}  // namespace

// Running out of memory here ends the program before anything has been started.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
  CLI::App app("What the event queue costs, beside what one would use instead.");
  Options options;
  define(app, options);
  CLI11_PARSE(app, argc, argv);
  try {
    return run(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "queue_systems: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
