// An event as the programs show it: taken from a row or an Event object, as JSON.
//
// Thread safety: plain values; the functions use only their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_EVENTVIEW_H
#define EVENTSYSTEM_APPS_COMMON_EVENTVIEW_H

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <utility>
#include <vector>

#include "EventSystem/Event.h"

namespace EventApps {

struct EventView {
  unsigned long id = 0;
  unsigned int dsid = 0;
  int type = 0;
  unsigned long date = 0;
  std::string eventString;
  // The section's keys and texts in their order.
  std::vector<std::pair<std::string, std::string>> fields;
  std::string problem;  // what is wrong with the stored row; empty for a sound one
};

// The complete event string, of any length.
std::string eventStringOf(EventSystem::Event& event);

// The event that the text carries, or null.
std::unique_ptr<EventSystem::Event> parseEvent(const std::string& eventString);

EventView viewOf(EventSystem::Event& event, unsigned int dsid);

// The keys and texts of a section that an event class wrote.
std::vector<std::pair<std::string, std::string>> sectionFields(int type,
                                                               const std::string& eventString);

// One JSON object. Bytes that are no UTF-8 become U+FFFD; the event string is then there in hex,
// too.
nlohmann::ordered_json jsonOf(const EventView& event);
std::string jsonLine(const nlohmann::ordered_json& object);

}  // namespace EventApps

#endif
