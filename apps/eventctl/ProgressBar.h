// A progress bar on standard error, where that is a terminal and the work takes a while.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_PROGRESSBAR_H
#define EVENTSYSTEM_APPS_EVENTCTL_PROGRESSBAR_H

#include <chrono>
#include <cstddef>

namespace EventApps {

class ProgressBar {
 public:
  // `total` 0: how much there is to do is not known, and no bar is shown.
  explicit ProgressBar(std::size_t total);
  ~ProgressBar();

  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void update(std::size_t done);

  // Takes the bar off the screen; the next update() puts it back.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t m_total;
  bool m_wanted;
  bool m_visible = false;
  Clock::time_point m_nextUpdate;
};

}  // namespace EventApps

#endif
