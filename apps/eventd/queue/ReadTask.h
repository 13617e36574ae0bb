// Reads events of one queue through the library.
//
// Thread safety: made by any thread, used by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_READTASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_READTASK_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>

#include "apps/eventd/queue/Published.h"
#include "apps/eventd/queue/Task.h"

namespace EventApps {

class Core;

class ReadTask : public Task {
 public:
  struct Request {
    unsigned int dsid = 0;
    unsigned long after = 0;
    std::size_t limit = 0;
    std::set<int> types;
    // Asked after each slice that has not come to the end.
    std::function<bool()> goesOn = [] { return true; };
  };

  struct Read {
    EventList events;
    unsigned long seenTo = 0;  // events above it were not looked at
    unsigned long shown = 0;   // all events up to it have been shown, those above it will be
    bool complete = false;     // up to the limit or to the end of the queue
    int code = 0;
    std::string problem;
  };

  // On the answering thread.
  using Done = std::function<void(Read)>;

  ReadTask(Core& core, Request request, Done done);

  bool step() override;
  void fail(const std::exception& problem) override;

 private:
  bool walk();
  void answer();

  Core& m_core;
  const Request m_request;
  const Done m_done;
  Read m_read;
  unsigned long m_walkedTo = 0;
};

}  // namespace EventApps

#endif
