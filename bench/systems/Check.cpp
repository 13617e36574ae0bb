#include "bench/systems/Check.h"

#include <sys/wait.h>

#include <cstdio>
#include <regex>

#include "bench/systems/ServerProcess.h"
#include "bench/systems/Statistics.h"
#include "bench/systems/Systems.h"
#include "bench/systems/Workload.h"

namespace EventSystemBench {
namespace {

constexpr std::size_t kTexts = 3;

void require(bool holds, const std::string& claim) {
  if (!holds) throw SystemError("not so: " + claim);
}

// This library's own texts come back with the id that they were given.
std::string withoutId(const std::string& text) {
  static const std::regex id("id:[0-9]+;");
  return std::regex_replace(text, id, "", std::regex_constants::format_first_only);
}

void checkQueue(Queue& queue) {
  std::vector<std::uint64_t> ids;
  for (std::size_t i = 0; i < kTexts; ++i) ids.push_back(queue.produce(eventText(150 + i)));
  require(ids[0] < ids[1] && ids[1] < ids[2], "ids grow");
  std::uint64_t after = 0;
  for (std::size_t i = 0; i < kTexts; ++i) {
    const auto event = queue.next(after);
    require(event.has_value(), "what was produced is there");
    require(event->id == ids[i], "texts come in the order they were produced in");
    require(withoutId(event->text) == withoutId(eventText(150 + i)), "texts come back unchanged");
    after = event->id;
  }
  require(!queue.next(after), "there is nothing after the last text");
  for (const std::uint64_t id : ids) queue.remove(id);
  require(!queue.next(0), "what was deleted is gone");
}

// Two queues of one system are two doors to the same texts.
void checkSharing(System& system) {
  const auto producer = system.connect();
  const auto consumer = system.connect();
  const std::uint64_t id = producer->produce(eventText(1500));
  const auto event = consumer->next(0);
  require(event && event->id == id, "another connection reads what was produced");
  consumer->remove(id);
  require(!producer->next(0), "another connection's delete counts");
}

void checkSystem(const SystemEntry& entry, const std::filesystem::path& directory) {
  const auto system = entry.start(directory);
  checkQueue(*system->connect());
  checkSharing(*system);
  const Timings timings = run(*system, {150, 2, std::chrono::milliseconds(1000), 6});
  require(timings[kProduce].latencies.size() == 6, "every produce is counted");
  require(timings[kRead].latencies.size() >= 6, "every event is read");
  require(timings[kDelete].latencies.size() == 6, "every event that was read is deleted once");
  require(!system->connect()->next(0), "a workload that had the time leaves nothing behind");
}

bool passes(const std::string& name, const std::function<void()>& check) {
  std::string verdict = "ok";
  bool good = true;
  try {
    check();
  } catch (const NotOffered& reason) {
    verdict = std::string("not offered: ") + reason.what();
  } catch (const std::exception& error) {
    verdict = std::string("FAILED: ") + error.what();
    good = false;
  }
  std::printf("%-26s %s\n", name.c_str(), verdict.c_str());
  std::fflush(stdout);
  return good;
}

void checkStatistics() {
  require(median({3, 1, 2}) == 2, "the median is in the middle");
  require(percentile({4, 3, 2, 1}, 0.99) == 4, "the 99th percentile of few is the largest");
  require(percentile({7}, 0.5) == 7, "one value is its own median");
  require(eventText(150).size() == 150 && eventText(1500).size() == 1500, "texts have their size");
}

void checkServerEnds(const std::filesystem::path& directory) {
  pid_t pid = 0;
  {
    const ServerProcess server({{"sleep", "600"}, directory, {}});
    pid = server.pid();
    require(kill(pid, 0) == 0, "a server that was started runs");
  }
  require(kill(pid, 0) != 0, "a server has ended when its object is gone");
}

}  // namespace

int checkAll(const std::filesystem::path& directory) {
  int failed = 0;
  const auto note = [&failed](bool good) { failed += good ? 0 : 1; };
  const std::filesystem::path place = directory / "check";
  note(passes("statistics", checkStatistics));
  for (const SystemEntry& entry : allSystems()) {
    std::filesystem::remove_all(place);
    std::filesystem::create_directory(place);
    note(passes(entry.name, [&] { checkSystem(entry, place); }));
  }
  note(passes("servers end", [&] { checkServerEnds(place); }));
  return failed;
}

}  // namespace EventSystemBench
