// The event string in its plain formulation, on sscanf and snprintf alone: what a parser makes of a
// text, without a class of the library. Tests hold the library against it over generated texts.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_UNIT_EVENTS_REFERENCETEXT_H
#define EVENTSYSTEM_TESTS_UNIT_EVENTS_REFERENCETEXT_H

#include <string>
#include <vector>

#include "tests/support/LogLine.h"

namespace EventSystemTest {

struct Reading {
  int code = 9;
  std::string again;         // the event string as the event writes it; empty when refused
  std::vector<LogLine> log;  // in order

  bool operator==(const Reading&) const = default;
};

// What Event::fromString() makes of the text, which holds no NUL.
Reading referenceReading(const std::string& text);

}  // namespace EventSystemTest

#endif
