#include "bench/cluster/Contention.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <stdexcept>

#include "apps/etcd_nodes/Descriptor.h"
#include "apps/etcd_nodes/Subprocess.h"
#include "bench/cluster/Pair.h"

namespace Bench {
namespace {

using EtcdNodes::Descriptor;

struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
  }
  Descriptor reader;
  Descriptor writer;
};

std::unique_ptr<Queue> connect(const Writer& writer) {
  if (!writer.bare) return std::make_unique<LibraryQueue>(writer.endpoints, kLibraryQueue);
  return std::make_unique<BareQueue>(writer.endpoints, kBareQueue, sampleText());
}

std::vector<std::string> commandOf(const Writer& writer, const std::filesystem::path& result) {
  std::vector<std::string> command{std::filesystem::read_symlink("/proc/self/exe").string(),
                                   writer.bare ? "--write-bare" : "--write",
                                   "--events=" + std::to_string(writer.events),
                                   "--result=" + result.string()};
  for (const std::string& each : writer.endpoints) command.push_back("--endpoint=" + each);
  return command;
}

void awaitReady(const Descriptor& from) {
  char ready = 0;
  if (read(from.get(), &ready, 1) != 1) throw std::runtime_error("a writer has ended");
}

}  // namespace

void runWriter(const Writer& writer) {
  const auto queue = connect(writer);
  queue->add();
  char byte = '.';
  if (write(STDOUT_FILENO, &byte, 1) != 1) throw std::runtime_error("nobody waits for this writer");
  while (read(STDIN_FILENO, &byte, 1) > 0) {
  }
  Samples samples;
  for (int i = 0; i < writer.events; ++i) samples.time([&] { queue->add(); });
  samples.save(writer.result);
}

Samples timeWriters(int processes, const Writer& writer) {
  Pipe start;
  Pipe ready;
  std::vector<std::filesystem::path> results;
  std::vector<EtcdNodes::Subprocess> running;
  for (int i = 0; i < processes; ++i) {
    results.push_back(writer.result / ("writer" + std::to_string(i)));
    EtcdNodes::Surroundings surroundings;
    surroundings.input = start.reader.get();
    surroundings.output = ready.writer.get();
    running.emplace_back(commandOf(writer, results.back()), surroundings);
  }
  ready.writer.close();
  for (int i = 0; i < processes; ++i) awaitReady(ready.reader);
  start.writer.close();
  Samples all;
  for (std::size_t i = 0; i < running.size(); ++i) {
    if (running[i].wait() != 0) throw std::runtime_error("a writer has failed");
    all.append(Samples::load(results[i]));
  }
  return all;
}

}  // namespace Bench
