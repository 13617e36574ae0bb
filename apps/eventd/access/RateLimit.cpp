#include "apps/eventd/access/RateLimit.h"

#include <algorithm>
#include <vector>

namespace EventApps {

RateLimit::Seconds RateLimit::take(const std::string& key, Clock::time_point now) {
  if (m_perSecond <= 0) return Seconds(0);
  const std::lock_guard lock(m_mutex);
  auto found = m_buckets.find(key);
  if (found == m_buckets.end()) {
    if (m_buckets.size() >= m_mostKeys) makeRoom(now);
    found = m_buckets.emplace(key, Bucket{m_burst, now}).first;
  }
  Bucket& bucket = found->second;
  bucket = {filled(bucket, now), std::max(bucket.at, now)};
  if (bucket.left < 1) return Seconds((1 - bucket.left) / m_perSecond);
  bucket.left -= 1;
  return Seconds(0);
}

double RateLimit::filled(const Bucket& bucket, Clock::time_point now) const {
  const double seconds = std::max(0.0, Seconds(now - bucket.at).count());
  return std::min(m_burst, bucket.left + seconds * m_perSecond);
}

void RateLimit::makeRoom(Clock::time_point now) {
  std::erase_if(m_buckets, [&](const auto& entry) { return filled(entry.second, now) >= m_burst; });
  if (m_buckets.size() >= m_mostKeys) forgetFullest(now);
}

// A tenth, so that this is rare.
void RateLimit::forgetFullest(Clock::time_point now) {
  std::vector<double> levels;
  levels.reserve(m_buckets.size());
  for (const auto& [key, bucket] : m_buckets) levels.push_back(filled(bucket, now));
  std::size_t many = levels.size() / 10 + 1;
  const auto least = levels.end() - static_cast<std::ptrdiff_t>(many);
  std::nth_element(levels.begin(), least, levels.end());
  std::erase_if(m_buckets, [&](const auto& entry) {
    return many > 0 && filled(entry.second, now) >= *least && many-- > 0;
  });
}

}  // namespace EventApps
