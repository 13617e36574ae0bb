// cluster_latency: what the calls of the library cost in cluster mode beside the bare etcd requests
// that they are made of, measured in one run, in turns, on etcd servers that it starts itself.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "bench/cluster/Contention.h"
#include "bench/cluster/LibraryQueue.h"
#include "bench/cluster/Machine.h"
#include "bench/cluster/Measurements.h"
#include "bench/cluster/Table.h"

namespace {

struct Arguments {
  Bench::Extent extent;
  Bench::Writer writer;
  bool writes = false;
};

void declare(CLI::App& app, Arguments& arguments) {
  app.add_option("--directory", arguments.extent.directory,
                 "where etcd keeps its data; the temporary directory if not set");
  app.add_option("--rounds", arguments.extent.rounds, "of each measurement");
  app.add_option("--events", arguments.extent.events, "in each round");
  app.add_option("--held", arguments.extent.held, "by the long queue")
      ->check(CLI::Range(100, 1000000));
  // How this program starts the writers that compete.
  app.add_flag("--write", arguments.writes)->group("");
  app.add_flag("--write-bare", arguments.writer.bare)->group("");
  app.add_option("--endpoint", arguments.writer.endpoints)->group("");
  app.add_option("--result", arguments.writer.result)->group("");
}

void measureAll(const Bench::Extent& extent) {
  std::printf("%s%d rounds of %d events, event string of %zu bytes\n\n",
              Bench::describeMachine(extent.directory).c_str(), extent.rounds, extent.events,
              Bench::sampleText().size());
  Bench::printHead();
  for (const int nodes : {1, 3}) Bench::measureCalls(extent, nodes);
  for (const int nodes : {1, 3}) Bench::measureWriters(extent, nodes);
  Bench::measureLengths(extent);
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  arguments.extent.directory = std::filesystem::temp_directory_path();
  CLI::App app("Measures the cluster mode of EventSystem against bare etcd requests.");
  declare(app, arguments);
  CLI11_PARSE(app, argc, argv);
  try {
    arguments.writer.events = arguments.extent.events;
    if (arguments.writes || arguments.writer.bare) {
      Bench::runWriter(arguments.writer);
    } else {
      measureAll(arguments.extent);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "cluster_latency: %s\n", failure.what());
    return 1;
  }
  return 0;
}
