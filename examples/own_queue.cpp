// A program with queues of its own: stores an event, then handles and deletes what is there.
//
//   c++ own_queue.cpp $(pkg-config --cflags --libs eventsystem-host) -o own_queue
//   ./own_queue [DIRECTORY]

#include <cstdio>
#include <exception>
#include <memory>

#include "EventSystem/ActivityEvent.h"
#include "EventSystem/EventManager.h"
#include "host/Host.h"

int main(int argc, char** argv) try {
  EventSystemHost::HostOptions options;
  options.home = argc > 1 ? argv[1] : "own-queue";  // made where it is missing
  const EventSystemHost::Host host(options);        // the one writer of this home
  EventSystem::EventManager* const queue = EventSystem::EventManager::getInstance();

  EventSystem::ActivityEvent event(3, 1700000000, 2, "disk full", 0);
  if (queue->newEvent(&event, 0) != 0) return 1;      // the log says why
  std::printf("stored: event %lu\n", event.getId());  // 0 in cluster mode

  int result = 0;
  EventSystem::Event* next = nullptr;
  while ((result = queue->getNextEvent(0, &next, 0)) == 0 && next != nullptr) {
    const std::unique_ptr<EventSystem::Event> owned(next);
    char text[2048];
    next->toString(text, sizeof text);
    std::puts(text);
    queue->deleteEvent(next->getId(), 0);
  }
  return result;
} catch (const std::exception& problem) {
  std::fprintf(stderr, "%s\n", problem.what());
  return 1;
}
