// Why the queues cannot be used at the moment.
//
// Thread safety: any thread; nothing waits for a disk or for another server.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_HEALTH_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_HEALTH_H

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>

#include "apps/eventd/queue/ServiceRequests.h"
#include "host/Host.h"

namespace EventApps {

class Health {
 public:
  // Without a flush nothing new may be shown, and what cannot be read cannot be written to. The
  // others are in the way of events only: reading and deleting go on.
  enum class Matter { kFlush, kRead, kStore, kFullQueue };

  // `host` outlives it.
  explicit Health(const EventSystemHost::Host& host) : m_host(host) {}

  void failed(Matter matter, const std::string& why);
  void worked(Matter matter);
  bool isFailing(Matter matter) const { return m_failing.at(indexOf(matter)); }

  // Damage, or what failed last and has not worked since.
  Readiness readiness() const;

 private:
  static constexpr std::size_t kMatters = 4;
  static std::size_t indexOf(Matter matter) { return static_cast<std::size_t>(matter); }

  const EventSystemHost::Host& m_host;
  mutable std::mutex m_mutex;
  std::array<std::string, kMatters> m_failures;  // by Matter, the worst first
  std::array<std::atomic<bool>, kMatters> m_failing = {};
};

}  // namespace EventApps

#endif
