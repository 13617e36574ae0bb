// The open connections of a server, and whether there may be one more.
//
// Thread safety: every operation may be called from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_CONNECTIONS_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_CONNECTIONS_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "apps/eventd/http/Limits.h"

namespace EventApps::Http {

class Connection;

class Connections {
 public:
  enum class Entry {
    kAdmitted,
    kToBeRefused,  // there is room to tell it so
    kNone          // not even that
  };

  explicit Connections(const Limits& limits) : m_limits(limits) {}

  // `network` is what connections of one client have in common; empty: the Unix socket.
  Entry enter(const std::shared_ptr<Connection>& connection, const std::string& network);
  void leave(const Connection* connection);

  std::vector<std::shared_ptr<Connection>> all() const;
  std::uint64_t open() const;
  std::uint64_t opened() const;
  std::uint64_t refused() const;

  // Whether all have left within that time.
  bool waitUntilEmpty(std::chrono::milliseconds most);

 private:
  struct Member {
    std::shared_ptr<Connection> connection;
    std::string network;
    bool admitted;
  };

  bool isRoomFor(const std::string& network) const;

  const Limits m_limits;
  mutable std::mutex m_mutex;
  std::condition_variable m_left;
  std::unordered_map<const Connection*, Member> m_members;
  std::unordered_map<std::string, std::size_t> m_networks;  // admitted connections of each
  std::size_t m_admitted = 0;
  std::uint64_t m_opened = 0;
  std::uint64_t m_refused = 0;
};

}  // namespace EventApps::Http

#endif
