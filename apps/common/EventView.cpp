#include "apps/common/EventView.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

// More than the longest section (an audit message of 10 KiB) and its envelope.
constexpr std::size_t kLongestEventString = 16384;

bool takePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// Takes "key:value;" off the front; `last` takes the value up to the closing ";}}".
bool takeField(std::string_view& text, std::string_view last, Fields& fields) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return false;
  const std::string_view key = text.substr(0, colon);
  const std::size_t end = key == last ? text.rfind(";}}") : text.find(';', colon);
  if (end == std::string_view::npos || end < colon) return false;
  fields.emplace_back(key, text.substr(colon + 1, end - colon - 1));
  text.remove_prefix(end + 1);
  return true;
}

// What follows the envelope's date and the ";" after it.
std::string_view behindEnvelope(std::string_view text) {
  for (int field = 0; field < 4; ++field) {  // version, type, id, date
    const std::size_t end = text.find(';');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
  return text;
}

nlohmann::ordered_json jsonValue(const EventKind* kind, const std::string& key,
                                 const std::string& text) {
  if (isText(kind, key)) return text;
  if (text.starts_with("0x")) {
    if (const auto flags = parseNumber<unsigned long>(std::string_view(text).substr(2), 16)) {
      return *flags;
    }
  }
  if (const auto number = parseNumber<unsigned long>(text)) return *number;
  if (const auto number = parseNumber<long>(text)) return *number;
  return text;
}

}  // namespace

std::string eventStringOf(EventSystem::Event& event) {
  std::array<char, kLongestEventString> text;
  text.front() = '\0';
  event.toString(text.data(), text.size());
  return text.data();
}

std::unique_ptr<EventSystem::Event> parseEvent(const std::string& eventString) {
  EventSystem::Event* event = nullptr;
  const int result = EventSystem::Event::fromString(eventString.c_str(), &event);
  std::unique_ptr<EventSystem::Event> owner(event);
  if (result != 0) owner.reset();
  return owner;
}

EventView viewOf(EventSystem::Event& event, unsigned int dsid) {
  EventView view;
  view.id = event.getId();
  view.dsid = dsid;
  view.type = event.getType();
  view.date = event.getDate();
  view.eventString = eventStringOf(event);
  view.fields = sectionFields(view.type, view.eventString);
  return view;
}

Fields sectionFields(int type, const std::string& eventString) {
  const EventKind* const kind = kindOf(type);
  if (kind == nullptr) return {};
  Fields fields;
  fields.reserve(kind->fields.size());
  std::string_view text = behindEnvelope(eventString);
  if (text.starts_with("lsu:") && !takeField(text, "", fields)) return {};
  takePrefix(text, "{");  // an activity's section has a brace before its tag
  if (!takePrefix(text, kind->tag) || !takePrefix(text, "{")) return {};
  const std::string_view last = kind->fields.back().key;
  do {
    if (!takeField(text, last, fields)) return {};
  } while (fields.back().first != last);
  return fields;
}

nlohmann::ordered_json jsonOf(const EventView& event) {
  const EventKind* const kind = kindOf(event.type);
  nlohmann::ordered_json object;
  object["id"] = event.id;
  object["dsid"] = event.dsid;
  object["type"] = event.type;
  object["kind"] = kindName(event.type);
  object["date"] = event.date;
  object["time"] = displayTime(event.date, true);
  auto& fields = object["fields"] = nlohmann::ordered_json::object();
  for (const auto& [key, text] : event.fields) fields[key] = jsonValue(kind, key, text);
  object["eventString"] = event.eventString;
  if (!isUtf8(event.eventString)) object["eventStringHex"] = hexOfBytes(event.eventString);
  if (!event.problem.empty()) object["problem"] = event.problem;
  return object;
}

std::string jsonLine(const nlohmann::ordered_json& object) {
  return displayJson(object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

}  // namespace EventApps
