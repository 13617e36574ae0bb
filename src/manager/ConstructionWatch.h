// Notices, in builds without NDEBUG, a host that breaks the one rule on threads that no lock
// upholds: the first EventManager::getInstance() returns before other threads use the library. Such
// a host gets a second manager with id counters of its own, and sooner or later one id twice; here
// it ends with a message instead. In builds with NDEBUG the watch does nothing.
//
// Thread safety: made to be used by several threads at once.

#ifndef EVENTSYSTEM_SRC_MANAGER_CONSTRUCTIONWATCH_H
#define EVENTSYSTEM_SRC_MANAGER_CONSTRUCTIONWATCH_H

#ifndef NDEBUG
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#endif

namespace EventSystem {

#ifdef NDEBUG

class ConstructionWatch {
 public:
  ConstructionWatch() {}
  static void expectNone(const void*) {}
};

#else

// Lives while a thread builds a manager.
class ConstructionWatch {
 public:
  ConstructionWatch() {
    const std::thread::id self = std::this_thread::get_id();
    std::thread::id other;
    m_outermost = s_builder.compare_exchange_strong(other, self);
    if (!m_outermost && other != self) end("two threads build the EventManager at once");
  }
  ~ConstructionWatch() {
    if (m_outermost) s_builder.store(std::thread::id());
  }
  ConstructionWatch(const ConstructionWatch&) = delete;
  ConstructionWatch& operator=(const ConstructionWatch&) = delete;

  // Before the manager that was built becomes the process's: somebody else's must not be there.
  static void expectNone(const void* instance) {
    if (instance != nullptr) end("the EventManager was built twice");
  }

 private:
  // Not through the host's log, which the thread that builds may hold.
  [[noreturn]] static void end(const char* what) {
    std::fprintf(stderr,
                 "EventSystem: %s. The first EventManager::getInstance() must return before other "
                 "threads use the library, and no platform call may call back into it.\n",
                 what);
    std::abort();
  }

  static inline std::atomic<std::thread::id> s_builder;
  bool m_outermost;
};

#endif

}  // namespace EventSystem

#endif
