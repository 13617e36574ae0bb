#include "host/logging/LogObserver.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <utility>
#include <vector>

#include "host/logging/Observers.h"

namespace EventSystemHost {
namespace {

struct Observers {
  std::shared_mutex mutex;
  std::vector<const LogObserver*> all;
  std::atomic<bool> any = false;
};

// Never destroyed: lines may come at exit, too.
Observers& observers() {
  static auto* const instance = std::make_unique<Observers>().release();
  return *instance;
}

thread_local bool observing = false;

// While it lives, what this thread logs is not observed.
class Observing {
 public:
  Observing() { observing = true; }
  ~Observing() { observing = false; }
  Observing(const Observing&) = delete;
  Observing& operator=(const Observing&) = delete;
};

// The line is for the others and for the log, too.
void tell(const LogObserver& observer, LogLevel level, int code, std::string_view message) {
  try {
    observer(level, code, message);
  } catch (...) {
  }
}

}  // namespace

LogObserver::LogObserver(Observe observe) : m_observe(std::move(observe)) {
  const std::unique_lock lock(observers().mutex);
  observers().all.push_back(this);
  observers().any = true;
}

LogObserver::~LogObserver() {
  const std::unique_lock lock(observers().mutex);
  std::erase(observers().all, this);
  observers().any = !observers().all.empty();
}

bool isObserved(LogLevel level) {
  return (level == LogLevel::kError || level == LogLevel::kWarning) &&
         observers().any.load(std::memory_order_relaxed) && !observing;
}

void tellObservers(LogLevel level, int code, std::string_view message) {
  if (!isObserved(level)) return;
  const Observing self;
  const std::shared_lock lock(observers().mutex);
  for (const LogObserver* const each : observers().all) tell(*each, level, code, message);
}

}  // namespace EventSystemHost
