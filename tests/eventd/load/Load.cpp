#include "tests/eventd/load/Load.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

#include "tests/eventd/load/Client.h"

namespace EventSystemTest {
namespace {

using Clock = std::chrono::steady_clock;
using nlohmann::json;

constexpr char kEvents[] = "/v1/queues/0/events";

std::uint32_t microsecondsSince(Clock::time_point start) {
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count());
}

std::string describe(const std::string& request, const Answer& answer) {
  return request + " was answered with " + std::to_string(answer.status) + ": " + answer.body;
}

// Whether it says only that eventd cannot at the moment.
bool comesAgain(const Answer& answer) {
  return answer.status == 0 || answer.status == 429 || answer.status == 503;
}

}  // namespace

Load::Load(DaemonProcess& daemon, LoadPlan plan) : m_daemon(daemon), m_plan(std::move(plan)) {}

LoadResult Load::run() {
  const auto start = Clock::now();
  std::vector<std::jthread> consumers;
  for (unsigned int i = 0; i < m_plan.consumers; ++i)
    consumers.emplace_back(&Load::consume, this, i);
  LoadResult result;
  {
    std::vector<std::jthread> producers;
    for (unsigned int i = 0; i < m_plan.producers; ++i) {
      producers.emplace_back(&Load::produce, this, i);
    }
    killInTime();
    std::this_thread::sleep_until(start + m_plan.time);
    m_producing = false;
  }
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  m_consuming = false;
  consumers.clear();
  result.balance = m_books.balance();
  result.full = m_full;
  result.retried = m_retried;
  const Answer left = Client(m_daemon.socket()).get(std::string(kEvents) + "?limit=1000");
  result.left = left.status == 200 ? json::parse(left.body)["events"].size() : 0;
  result.latencies = std::move(m_latencies);
  std::sort(result.latencies.begin(), result.latencies.end());
  return result;
}

void Load::killInTime() {
  const auto start = Clock::now();
  for (const auto after : m_plan.kills) {
    std::this_thread::sleep_until(start + after);
    m_daemon.kill();
    m_daemon.start();
  }
}

void Load::produce(unsigned int number) {
  Client client(m_daemon.socket());
  std::vector<std::uint32_t> latencies;
  for (unsigned long event = 0; m_producing; ++event) {
    postUntilAcknowledged(client, number, event, latencies);
  }
  const std::lock_guard lock(m_mutex);
  m_latencies.insert(m_latencies.end(), latencies.begin(), latencies.end());
}

void Load::postUntilAcknowledged(Client& client, unsigned int producer, unsigned long number,
                                 std::vector<std::uint32_t>& latencies) {
  const std::string text =
      m_plan.name + "-" + std::to_string(producer) + "-" + std::to_string(number);
  const std::string body =
      json{{"kind", "activity"}, {"fields", {{"action", 1}, {"severity", 1}, {"msg", text}}}}
          .dump();
  for (unsigned int tries = 1;; ++tries) {
    const auto start = Clock::now();
    const Answer answer = client.post(kEvents, body, text);
    if (answer.status == 201) {
      if (tries == 1) latencies.push_back(microsecondsSince(start));
      return m_books.acknowledged(text, json::parse(answer.body).at("ids").at(0));
    }
    if (answer.status == 507) {
      ++m_full;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    } else if (comesAgain(answer)) {
      ++m_retried;
      m_daemon.waitUntilReady();
    } else {
      return m_books.wrong(describe("POST " + text, answer));
    }
  }
}

void Load::consume(unsigned int number) {
  Client client(m_daemon.socket());
  unsigned long after = 0;
  while (true) {
    const bool last = !m_consuming;
    const Answer answer =
        client.get(std::string(kEvents) + "?limit=200&after=" + std::to_string(after) +
                   (last ? "" : "&wait=0.2"));
    if (comesAgain(answer)) {
      m_daemon.waitUntilReady();
      continue;
    }
    if (answer.status != 200) return m_books.wrong(describe("GET", answer));
    const json read = json::parse(answer.body);
    for (const json& event : read.at("events")) {
      const unsigned long id = event.at("id");
      if (id <= after) m_books.wrong("event " + std::to_string(id) + " came after a higher id");
      after = id;
      if (id % m_plan.consumers != number) continue;
      m_books.consumed(event.at("fields").at("msg"), id);
      removeUntilGone(client, id);
    }
    if (last && read.at("events").empty()) return;
  }
}

void Load::removeUntilGone(Client& client, unsigned long id) {
  const std::string target = std::string(kEvents) + "/" + std::to_string(id);
  for (unsigned int tries = 1;; ++tries) {
    const Answer answer = client.remove(target);
    if (answer.status == 204 || (answer.status == 404 && tries > 1)) return;
    if (!comesAgain(answer)) return m_books.wrong(describe("DELETE " + target, answer));
    m_daemon.waitUntilReady();
  }
}

}  // namespace EventSystemTest
