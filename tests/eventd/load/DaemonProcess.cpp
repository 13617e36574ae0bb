#include "tests/eventd/load/DaemonProcess.h"

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/eventd/load/Client.h"

namespace EventSystemTest {

DaemonProcess::DaemonProcess(std::filesystem::path program, std::filesystem::path home)
    : m_program(std::move(program)), m_home(std::move(home)) {}

void DaemonProcess::start() {
  const std::filesystem::path output = m_home / "eventd.out";
  m_process = EtcdNodes::Subprocess({m_program, "--home", m_home}, output);
  while (!isReady()) {
    if (!m_process.running()) {
      throw std::runtime_error("eventd ended while it started; see " + output.string());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  setReady(true);
}

void DaemonProcess::kill() {
  setReady(false);
  m_process.kill();
}

int DaemonProcess::stop() {
  setReady(false);
  m_process.signal(SIGTERM);
  return m_process.wait();
}

void DaemonProcess::waitUntilReady() {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_ready; });
}

bool DaemonProcess::isReady() const {
  return Client(socket()).get("/readyz").status == 200;
}

void DaemonProcess::setReady(bool ready) {
  const std::lock_guard lock(m_mutex);
  m_ready = ready;
  m_changed.notify_all();
}

}  // namespace EventSystemTest
