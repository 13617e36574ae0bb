// Calls back when a deadline passes that keeps being moved. Moving it away is free: the timer runs
// on, and looks again when it fires.
//
// Thread safety: none; all on its strand.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_WATCHDOG_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_WATCHDOG_H

#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/strand.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace EventApps::Http {

class Watchdog {
 public:
  using Strand = boost::asio::strand<boost::asio::io_context::executor_type>;

  Watchdog(const Strand& strand, std::function<void()> callback)
      : m_timer(strand), m_callback(std::move(callback)) {}

  // `owner` keeps the watchdog alive while it waits.
  void set(std::chrono::milliseconds time, const std::shared_ptr<void>& owner);
  void clear() { m_deadline = Clock::time_point::max(); }
  void cancel();  // lets go of the owner, too

 private:
  using Clock = std::chrono::steady_clock;

  void wait(const std::shared_ptr<void>& owner);

  boost::asio::basic_waitable_timer<Clock, boost::asio::wait_traits<Clock>, Strand> m_timer;
  const std::function<void()> m_callback;
  Clock::time_point m_deadline = Clock::time_point::max();
  Clock::time_point m_fires = Clock::time_point::max();  // max: no timer runs
  std::uint64_t m_round = 0;                             // of the timer that counts
};

}  // namespace EventApps::Http

#endif
