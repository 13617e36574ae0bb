#include "apps/eventd/queue/Health.h"

namespace EventApps {

void Health::failed(Matter matter, const std::string& why) {
  const std::lock_guard lock(m_mutex);
  m_failures.at(indexOf(matter)) = why;
  m_failing.at(indexOf(matter)) = true;
}

void Health::worked(Matter matter) {
  if (!m_failing.at(indexOf(matter))) return;
  const std::lock_guard lock(m_mutex);
  m_failures.at(indexOf(matter)).clear();
  m_failing.at(indexOf(matter)) = false;
}

Readiness Health::readiness() const {
  const std::string damage = m_host.damage();
  if (!damage.empty()) return {.reads = false, .writes = false, .why = damage};
  const std::lock_guard lock(m_mutex);
  for (std::size_t matter = 0; matter < kMatters; ++matter) {
    const bool stopsReads = matter <= indexOf(Matter::kRead);
    if (m_failing.at(matter)) return {!stopsReads, false, m_failures.at(matter)};
  }
  return {.reads = true, .writes = true, .why = {}};
}

}  // namespace EventApps
