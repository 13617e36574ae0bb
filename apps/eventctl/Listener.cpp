#include "apps/eventctl/Listener.h"

#include <poll.h>

#include <array>

namespace EventApps {

Woken Listener::look() const {
  return wait(-1, 0);
}

Woken Listener::wait(int descriptor, int milliseconds) const {
  std::array<pollfd, 3> waits = {{{.fd = descriptor, .events = POLLIN, .revents = 0},
                                  {.fd = stop, .events = POLLIN, .revents = 0},
                                  {.fd = output, .events = 0, .revents = 0}}};
  if (::poll(waits.data(), waits.size(), milliseconds) <= 0) return Woken::kMaybeMore;
  if (waits[1].revents != 0) return Woken::kStopped;
  return waits[2].revents != 0 ? Woken::kOutputClosed : Woken::kMaybeMore;
}

}  // namespace EventApps
