#include "apps/eventctl/StopSignals.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <system_error>

namespace EventApps {
namespace {

sigset_t stopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGHUP);
  return signals;
}

}  // namespace

StopSignals::StopSignals() {
  const sigset_t signals = stopSignals();
  pthread_sigmask(SIG_BLOCK, &signals, &m_before);
  m_descriptor = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), "signalfd");
}

StopSignals::~StopSignals() {
  const sigset_t signals = stopSignals();
  const timespec now{};
  while (::sigtimedwait(&signals, nullptr, &now) > 0) {
  }
  ::close(m_descriptor);
  pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

bool StopSignals::arrived() const {
  pollfd wait{.fd = m_descriptor, .events = POLLIN, .revents = 0};
  return ::poll(&wait, 1, 0) > 0;
}

}  // namespace EventApps
