// The two ways to the queues of one host: the library itself, and what a daemon puts before it.
//
// Thread safety: LibraryFront none; DaemonFront any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_FRONT_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_FRONT_H

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/HostQueues.h"
#include "apps/eventd/queue/QueueService.h"
#include "host/Host.h"

namespace EventSystemTest {

// A legacy event whose payload is this name; the same text each time that it is handed in.
std::string textOfEvent(const std::string& name);

class Front {
 public:
  struct Stored {
    unsigned long id = 0;  // 0: it was told to have failed
    bool open = false;     // and that it may be stored all the same
  };
  // Events as (id, name), in the order in which they were shown.
  struct Page {
    std::vector<std::pair<unsigned long, std::string>> events;
    bool isLast = false;  // it was told that there are no more
  };

  Front() = default;
  virtual ~Front() = default;
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;

  virtual Stored store(const std::string& text, unsigned int dsid) = 0;
  // The events after an id; nothing when it failed.
  virtual std::optional<Page> read(unsigned int dsid, unsigned long afterId) = 0;
  // False when it failed.
  virtual bool remove(unsigned int dsid, unsigned long id) = 0;
};

class LibraryFront : public Front {
 public:
  explicit LibraryFront(const std::filesystem::path& home);

  Stored store(const std::string& text, unsigned int dsid) override;
  std::optional<Page> read(unsigned int dsid, unsigned long afterId) override;
  bool remove(unsigned int dsid, unsigned long id) override;

 private:
  EventSystemHost::Host m_host;
  EventApps::HostQueues m_queues;
};

class DaemonFront : public Front {
 public:
  // The home gets the data selections that it does not have yet.
  explicit DaemonFront(const std::filesystem::path& home);

  Stored store(const std::string& text, unsigned int dsid) override;
  std::optional<Page> read(unsigned int dsid, unsigned long afterId) override {
    return read(dsid, afterId, std::chrono::milliseconds(0));
  }
  bool remove(unsigned int dsid, unsigned long id) override;

  // The same for a reader that waits for the first event.
  std::optional<Page> read(unsigned int dsid, unsigned long afterId,
                           std::chrono::milliseconds wait);

 private:
  EventSystemHost::Host m_host;
  std::optional<EventApps::QueueService> m_service;
};

}  // namespace EventSystemTest

#endif
