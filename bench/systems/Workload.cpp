#include "bench/systems/Workload.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace EventSystemBench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmUpRounds = 2;

struct Worker {
  std::unique_ptr<Queue> queue;
  std::vector<std::uint64_t> produced;
  std::vector<std::uint64_t> positions;  // after which the events of its part are
  std::size_t reads = 0;
  std::vector<std::uint64_t> read;  // each event once
};

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// One worker's share of one operation: returns false when there is nothing left to do.
using Step = std::function<bool(Worker&)>;

void repeat(Worker& worker, const Step& step, Clock::time_point end,
            std::vector<double>& latencies) {
  // Once at least, also where a worker gets a processor only when the time is up.
  for (auto start = Clock::now(); step(worker); start = Clock::now()) {
    latencies.push_back(secondsSince(start));
    if (Clock::now() >= end) return;
  }
}

// All workers repeat their step, from the same moment on and until the time is over.
class Phase {
 public:
  Phase(std::vector<Worker>& workers, std::chrono::milliseconds time)
      : m_workers(workers),
        m_time(time),
        m_latencies(workers.size()),
        m_ends(workers.size()),
        m_ready(static_cast<std::ptrdiff_t>(workers.size()), Begin{this}) {}

  Timing run(const Step& step) {
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < m_workers.size(); ++i) {
      threads.emplace_back([this, i, &step] { work(i, step); });
    }
    for (std::thread& thread : threads) thread.join();
    if (m_failure != nullptr) std::rethrow_exception(m_failure);
    const auto end = std::ranges::max(m_ends);
    Timing timing{std::chrono::duration<double>(end - m_start).count(), {}};
    for (const auto& each : m_latencies) {
      timing.latencies.insert(timing.latencies.end(), each.begin(), each.end());
    }
    return timing;
  }

 private:
  // What the last worker to get ready does before any of them goes on.
  struct Begin {
    Phase* phase;
    void operator()() const noexcept { phase->m_start = Clock::now(); }
  };

  void work(std::size_t number, const Step& step) {
    m_ready.arrive_and_wait();
    try {
      repeat(m_workers[number], step, m_start + m_time, m_latencies[number]);
    } catch (...) {
      const std::lock_guard lock(m_mutex);
      m_failure = std::current_exception();
    }
    m_ends[number] = Clock::now();
  }

  std::vector<Worker>& m_workers;
  std::chrono::milliseconds m_time;
  std::vector<std::vector<double>> m_latencies;
  Clock::time_point m_start;
  std::vector<Clock::time_point> m_ends;
  std::barrier<Begin> m_ready;
  std::mutex m_mutex;
  std::exception_ptr m_failure;
};

// The first calls of a connection prepare what the later ones use.
void warmUp(Worker& worker, const std::string& text) {
  for (int i = 0; i < kWarmUpRounds; ++i) {
    worker.queue->produce(text);
    const auto event = worker.queue->next(0);
    if (!event) throw SystemError("the queue has lost an event");
    worker.queue->remove(event->id);
  }
}

Timing produce(std::vector<Worker>& workers, const Workload& workload, const std::string& text) {
  std::atomic<std::size_t> begun = 0;
  return Phase(workers, workload.time).run([&](Worker& worker) {
    if (begun.fetch_add(1) >= workload.events) return false;
    worker.produced.push_back(worker.queue->produce(text));
    return true;
  });
}

// Gives each worker a part of the queue, in one piece, to walk through.
void shareOut(std::vector<Worker>& workers) {
  std::vector<std::uint64_t> starts;
  for (const Worker& worker : workers) {
    starts.insert(starts.end(), worker.produced.begin(), worker.produced.end());
  }
  std::ranges::sort(starts);
  if (starts.empty()) throw SystemError("nothing was produced");
  starts.insert(starts.begin(), 0);
  starts.pop_back();
  for (std::size_t i = 0; i < workers.size(); ++i) {
    const auto from = starts.size() * i / workers.size();
    const auto to = starts.size() * (i + 1) / workers.size();
    workers[i].positions.assign(starts.begin() + static_cast<std::ptrdiff_t>(from),
                                starts.begin() + static_cast<std::ptrdiff_t>(to));
  }
}

bool readOne(Worker& worker) {
  const std::size_t count = worker.positions.size();
  const bool again = worker.reads >= count;
  if (count == 0 || (again && !worker.queue->walks())) return false;
  const auto event = worker.queue->next(worker.positions[worker.reads % count]);
  if (!event) throw SystemError("the queue has lost an event");
  ++worker.reads;
  if (!again) worker.read.push_back(event->id);
  return true;
}

Timing remove(std::vector<Worker>& workers, const Workload& workload) {
  for (Worker& worker : workers) std::ranges::reverse(worker.read);
  return Phase(workers, workload.time).run([](Worker& worker) {
    if (worker.read.empty()) return false;
    worker.queue->remove(worker.read.back());
    worker.read.pop_back();
    return true;
  });
}

}  // namespace

std::string eventText(std::size_t bytes) {
  const std::string head =
      "EVENT{version:1;type:8;id:0;date:1700000000;AUDITEVENT{version:1;action:4;time:1699999990;"
      "loadSize:0;AUditMSg:";
  const std::string end = ";}}";
  std::string text = head;
  while (text.size() + end.size() < bytes) {
    text += static_cast<char>('a' + text.size() % 26);
  }
  return text + end;
}

Timings run(System& system, const Workload& workload) {
  const std::string text = eventText(workload.textBytes);
  std::vector<Worker> workers(workload.workers);
  for (Worker& worker : workers) {
    worker.queue = system.connect();
    warmUp(worker, text);
  }
  Timings timings;
  timings[kProduce] = produce(workers, workload, text);
  shareOut(workers);
  timings[kRead] = Phase(workers, workload.time).run(readOne);
  timings[kDelete] = remove(workers, workload);
  return timings;
}

}  // namespace EventSystemBench
