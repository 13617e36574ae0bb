#include "apps/eventd/metrics/Rates.h"

namespace EventApps {
namespace {

constexpr std::chrono::seconds kSpan(60);

}  // namespace

void Rates::sample(const ServiceCounters& counters, Clock::time_point now) {
  const std::lock_guard lock(m_mutex);
  m_samples.push_back({now, counters.deleted, counters.written});
  while (now - m_samples.front().at > kSpan) m_samples.pop_front();
}

Rates::Values Rates::values() const {
  const std::lock_guard lock(m_mutex);
  Values values;
  if (m_samples.size() < 2) return values;
  const Sample& first = m_samples.front();
  const Sample& last = m_samples.back();
  const double seconds = std::chrono::duration<double>(last.at - first.at).count();
  if (seconds <= 0) return values;
  values.deleted = static_cast<double>(last.deleted - first.deleted) / seconds;
  for (const auto& [type, count] : last.written) {
    const auto before = first.written.find(type);
    const std::uint64_t base = before == first.written.end() ? 0 : before->second;
    values.writtenByType[type] = static_cast<double>(count - base) / seconds;
    values.written += values.writtenByType[type];
  }
  return values;
}

}  // namespace EventApps
