// A token bucket for each of many keys: so many at once, and so many a second for ever.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_ACCESS_RATELIMIT_H
#define EVENTSYSTEM_APPS_EVENTD_ACCESS_RATELIMIT_H

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>

namespace EventApps {

class RateLimit {
 public:
  using Clock = std::chrono::steady_clock;
  using Seconds = std::chrono::duration<double>;

  // `perSecond` 0: no limit. Of more than `mostKeys` keys those are forgotten whose buckets are the
  // fullest: memory is bounded, and whoever is over the limit stays so, however many others come.
  RateLimit(double perSecond, double burst, std::size_t mostKeys = 10000)
      : m_perSecond(perSecond), m_burst(burst), m_mostKeys(mostKeys) {}

  // Takes one from the key's bucket: 0, or how long to wait until there is one.
  Seconds take(const std::string& key, Clock::time_point now = Clock::now());

 private:
  struct Bucket {
    double left = 0;
    Clock::time_point at;
  };

  double filled(const Bucket& bucket, Clock::time_point now) const;
  void makeRoom(Clock::time_point now);
  void forgetFullest(Clock::time_point now);

  const double m_perSecond;
  const double m_burst;
  const std::size_t m_mostKeys;
  std::mutex m_mutex;
  std::unordered_map<std::string, Bucket> m_buckets;
};

}  // namespace EventApps

#endif
