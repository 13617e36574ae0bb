// What a service manager's end of the notification protocol hears.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_EVENTD_PROGRAM_NOTIFYSOCKET_H
#define EVENTSYSTEM_TESTS_EVENTD_PROGRAM_NOTIFYSOCKET_H

#include <filesystem>
#include <string>

#include "apps/etcd_nodes/Descriptor.h"

namespace EventSystemTest {

class NotifySocket {
 public:
  explicit NotifySocket(const std::filesystem::path& path);

  const std::filesystem::path& path() const { return m_path; }

  // The next message; empty when none comes within `milliseconds`.
  std::string next(int milliseconds);

 private:
  std::filesystem::path m_path;
  EtcdNodes::Descriptor m_socket;
};

}  // namespace EventSystemTest

#endif
