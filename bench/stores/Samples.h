// The events that the measurements use.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_BENCH_STORES_SAMPLES_H
#define EVENTSYSTEM_BENCH_STORES_SAMPLES_H

#include <memory>

#include "EventSystem/Event.h"

namespace EventSystemBench {

// 0: a capacity event of 140 characters; 1: an audit event with a message of 700 characters.
enum Sample : int { kShort, kLong };

std::unique_ptr<EventSystem::Event> makeEvent(Sample sample);

// The store's way of copying an event: its event string, parsed.
std::unique_ptr<EventSystem::Event> throughText(EventSystem::Event& event);

}  // namespace EventSystemBench

#endif
