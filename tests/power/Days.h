// The days of a server that are broken off everywhere: they begin with an empty home.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_DAYS_H
#define EVENTSYSTEM_TESTS_POWER_DAYS_H

#include <functional>
#include <string>

#include "tests/power/Service.h"

namespace EventSystemTest {

// Everything that a server does, each a few times: the first start, events of every type in three
// queues, deletions, audit rows left before a start and while the server runs, two more starts.
void shortDay(Service& service);

// Less of each, for when the whole day is repeated for every operation.
void briefDay(Service& service);

// As many events as it takes until the WAL is copied into the file while the service runs, and
// starts over, and as many deletions as it takes until pages go back to the file system.
// `copied` is called between calls, and returns when no such work is due.
void longDay(Service& service, const std::function<void()>& copied);

// The home's configuration; nothing is logged unless a level is named.
void configureHome(const std::filesystem::path& home, const std::string& durability,
                   const std::string& logLevel = "off");

}  // namespace EventSystemTest

#endif
