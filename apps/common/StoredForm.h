// What becomes of an event string on its way into a queue: it is read, and written anew by its
// event class, which forgets whatever it does not know.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_STOREDFORM_H
#define EVENTSYSTEM_APPS_COMMON_STOREDFORM_H

#include <string>

namespace EventApps {

// An event string with another id in its envelope.
std::string withId(const std::string& line, unsigned long id);

// An event string with another date in its envelope, in seconds since 1970.
std::string withDate(const std::string& line, unsigned long date);

// A parseable event string as a new event has it: with id 0. A store takes an event that has an id
// already for one that it holds.
std::string withoutId(const std::string& line);

// The part of a parseable event string that the queue would hold otherwise, in words, or the empty
// text. What only looks different does not count: a version of the envelope, leading zeros and
// blanks of numbers, a default that is left out.
std::string whyStoredChanged(const std::string& line);

}  // namespace EventApps

#endif
