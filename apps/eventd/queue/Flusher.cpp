#include "apps/eventd/queue/Flusher.h"

#include <chrono>
#include <utility>

namespace EventApps {

Flusher::Flusher(Flush flush, Flushed flushed, Worker& answers)
    : m_flush(std::move(flush)),
      m_flushed(std::move(flushed)),
      m_answers(answers),
      m_thread([this] { run(); }) {}

Flusher::~Flusher() {
  finish();
}

void Flusher::whenDurable(Answer answer) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_written <= m_durable && m_waiting.empty()) {
      m_answers.post([answer = std::move(answer)] { answer(0); });
      return;
    }
    m_waiting.push_back(std::move(answer));
  }
  m_changed.notify_one();
}

void Flusher::finish() {
  {
    const std::lock_guard lock(m_mutex);
    m_finish = true;
  }
  m_changed.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void Flusher::run() {
  while (true) {
    std::vector<Answer> taken;
    {
      std::unique_lock lock(m_mutex);
      m_changed.wait(lock, [this] { return m_finish || !m_waiting.empty(); });
      if (m_waiting.empty()) return;
      taken.swap(m_waiting);
    }
    flushFor(std::move(taken));
  }
}

// What is written while the flush runs may miss it.
void Flusher::flushFor(std::vector<Answer> answers) {
  const std::uint64_t covered = m_written;
  const auto begin = std::chrono::steady_clock::now();
  m_progress.begin();
  const int status = m_flush();
  m_progress.end();
  m_flushed(status,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  const std::lock_guard lock(m_mutex);
  m_answers.post([answers = std::move(answers), status] {
    for (const Answer& answer : answers) answer(status);
  });
  if (status == 0) m_durable = covered;
}

}  // namespace EventApps
