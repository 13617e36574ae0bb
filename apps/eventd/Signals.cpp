#include "apps/eventd/Signals.h"

#include <pthread.h>

#include <ctime>

namespace EventApps {

Signals::Signals() {
  sigemptyset(&m_signals);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&m_signals, number);
  pthread_sigmask(SIG_BLOCK, &m_signals, nullptr);
}

std::optional<int> Signals::wait(std::chrono::milliseconds time) const {
  constexpr long kNanoseconds = 1000000;
  const timespec patience{time.count() / 1000, time.count() % 1000 * kNanoseconds};
  const int number = ::sigtimedwait(&m_signals, nullptr, &patience);
  return number > 0 ? std::optional(number) : std::nullopt;
}

}  // namespace EventApps
