// Why the queues cannot be used at the moment.
//
// Thread safety: any thread.

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
  enum class Matter { kFlush, kStore, kRead };

  // `host` outlives it.
  explicit Health(const EventSystemHost::Host& host) : m_host(host) {}

  void failed(Matter matter, const std::string& why);
  void worked(Matter matter);

  // Damage, a full disk, or the latest failure of what has not worked since.
  Readiness readiness() const;

 private:
  static std::size_t indexOf(Matter matter) { return static_cast<std::size_t>(matter); }
  std::string whyNot() const;

  const EventSystemHost::Host& m_host;
  mutable std::mutex m_mutex;
  std::array<std::string, 3> m_failures;
  std::array<std::atomic<bool>, 3> m_failing = {};
};

}  // namespace EventApps

#endif
