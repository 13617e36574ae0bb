// An eventd on a home, which can be killed and started again while others use it.
//
// Thread safety: start() and kill() by one thread; waitUntilReady() by any.

#ifndef EVENTSYSTEM_TESTS_EVENTD_LOAD_DAEMONPROCESS_H
#define EVENTSYSTEM_TESTS_EVENTD_LOAD_DAEMONPROCESS_H

#include <condition_variable>
#include <filesystem>
#include <mutex>

#include "apps/etcd_nodes/Subprocess.h"

namespace EventSystemTest {

class DaemonProcess {
 public:
  // What the program prints goes to home/eventd.out.
  DaemonProcess(std::filesystem::path program, std::filesystem::path home);

  std::filesystem::path socket() const { return m_home / "eventd.sock"; }

  // Returns when it is ready. Throws std::runtime_error when it ends instead.
  void start();

  void kill();

  // SIGTERM, and its exit status.
  int stop();

  // Returns at once while it is ready.
  void waitUntilReady();

 private:
  bool isReady() const;
  void setReady(bool ready);

  std::filesystem::path m_program;
  std::filesystem::path m_home;
  EtcdNodes::Subprocess m_process;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_ready = false;
};

}  // namespace EventSystemTest

#endif
