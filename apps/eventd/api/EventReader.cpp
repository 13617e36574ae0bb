#include "apps/eventd/api/EventReader.h"

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/common/ImportLine.h"
#include "apps/common/QueueNames.h"
#include "apps/common/StoredForm.h"
#include "apps/eventd/api/JsonReader.h"
#include "apps/eventd/api/Problem.h"

namespace EventApps::Api {
namespace {

using EventSystem::Event;
using nlohmann::json;

// An event, its fields, and a value in them.
constexpr std::size_t kEventDepth = 2;

// A longer name is none of ours, and is not sent back.
constexpr std::size_t kLongestField = 64;

[[noreturn]] void refuse(const std::string& detail, const std::string& field = "") {
  Problem problem{.kind = ProblemKind::kInvalidEvent, .detail = detail};
  if (!field.empty() && field.size() <= kLongestField) problem.members["field"] = field;
  throw Refused(std::move(problem));
}

// `problem`, with the place of the event in the body.
[[noreturn]] void refuseAt(Problem problem, std::size_t index, std::optional<std::size_t> line) {
  std::string place = line ? "line " + std::to_string(*line) : "event " + std::to_string(index);
  problem.detail = place.append(": ").append(problem.detail);
  if (problem.kind == ProblemKind::kInvalidEvent) problem.members["index"] = index;
  if (line) problem.members["line"] = *line;
  throw Refused(std::move(problem));
}

std::string namesOf(const EventKind& kind) {
  std::string names;
  for (const Field& field : kind.fields) {
    names.append(names.empty() ? "" : ", ").append(nameOf(field));
  }
  return names;
}

// The text of a number or a text.
std::string textOf(const Field& field, const json& value) {
  if (value.is_string()) {
    const auto& text = value.get_ref<const std::string&>();
    if (text.find('\0') != std::string::npos) refuse("the text contains a NUL byte", field.key);
    return text;
  }
  if (field.type == FieldType::kText) refuse("the field takes a text, in quotes", field.key);
  if (value.is_number_unsigned()) return std::to_string(value.get<std::uint64_t>());
  if (value.is_number_integer()) return std::to_string(value.get<std::int64_t>());
  refuse(std::string("the field takes a whole number, not ") +
             (value.is_number() ? "a fraction or one of more than 64 bits" : value.type_name()),
         field.key);
}

std::string namesBoth(const Field& field) {
  return nameOf(field) + " and as " + field.key;
}

FieldTexts textsOf(const EventKind& kind, const json& fields) {
  FieldTexts texts;
  for (const auto& [key, value] : fields.items()) {
    const Field* const field = fieldNamed(kind, key);
    if (field == nullptr) {
      refuse(std::string("an event of kind ") + kind.name + " has no field " + quotedStart(key) +
                 "; its fields are " + namesOf(kind),
             key);
    }
    std::string text = textOf(*field, value);
    const std::string problem = whyNotAValue(*field, text);
    if (!problem.empty()) refuse(problem, key);
    const bool isNew = texts.emplace(field->key, std::move(text)).second;
    if (!isNew) refuse("the field is there twice, as " + namesBoth(*field) + "; keep one", key);
  }
  return texts;
}

void requireComplete(const EventKind& kind, const FieldTexts& texts) {
  for (const Field& field : kind.fields) {
    if (field.presence != Presence::kRequired || texts.contains(field.key)) continue;
    refuse(std::string("an event of kind ") + kind.name + " needs the field " + nameOf(field),
           nameOf(field));
  }
  const IssueFields fields = issueFields(kind, texts);
  if (fields.needed == nullptr) return;
  const std::string issue = "an event with issue " + texts.at("issue");
  if (!texts.contains(fields.needed->key)) {
    refuse(issue + " needs the field " + fields.needed->key, fields.needed->key);
  }
  if (texts.contains(fields.lost->key)) {
    refuse(issue + " carries no field " + fields.lost->key, fields.lost->key);
  }
}

const EventKind& kindIn(const json& object) {
  const auto found = object.find("kind");
  if (found == object.end()) {
    refuse("the event has neither a \"kind\" with \"fields\" nor an \"eventString\"");
  }
  const EventKind* const kind =
      found->is_string() ? kindNamed(found->get_ref<const std::string&>()) : nullptr;
  if (kind != nullptr && *found == kind->name) return *kind;  // not by its number
  std::string names;
  for (const EventKind& one : eventKinds())
    names.append(names.empty() ? "" : ", ").append(one.name);
  refuse(quotedStart(found->is_string() ? found->get<std::string>() : found->dump()) +
             " is no kind of event; those are " + names,
         "kind");
}

std::optional<unsigned long> dateIn(const json& object) {
  const auto found = object.find("date");
  if (found == object.end()) return std::nullopt;
  if (found->is_number_unsigned() && found->get<unsigned long>() > 0) {
    return found->get<unsigned long>();
  }
  refuse("the date is a whole number of seconds since 1970, above 0", "date");
}

void requireKnownMembers(const json& object, std::initializer_list<const char*> known) {
  for (const auto& [name, value] : object.items()) {
    bool isKnown = false;
    for (const char* const one : known) isKnown = isKnown || name == one;
    if (isKnown) continue;
    std::string names;
    for (const char* const one : known) names.append(names.empty() ? "" : ", ").append(one);
    refuse("an event has no member " + quotedStart(name) + "; its members are " + names, name);
  }
}

std::unique_ptr<Event> eventOfFields(const json& object, const Destination& destination) {
  requireKnownMembers(object, {"kind", "fields", "date"});
  const EventKind& kind = kindIn(object);
  const auto fields = object.find("fields");
  if (fields == object.end() || !fields->is_object()) {
    refuse("the event needs \"fields\", an object with the fields " + namesOf(kind), "fields");
  }
  FieldTexts texts = textsOf(kind, *fields);
  requireComplete(kind, texts);
  fillDefaults(kind, texts);
  auto event = kind.build(texts);
  if (const auto date = dateIn(object)) {
    event = parseEvent(withDate(eventStringOf(*event), *date));
    if (!event) refuse("its event string could not be read back");
  }
  const std::string problem = whyNotStorable(*event, destination);
  if (!problem.empty()) refuse(problem);
  return event;
}

std::unique_ptr<Event> eventOfString(std::string line, const Destination& destination) {
  const ImportLines lines(
      destination.dsid, [](unsigned int) { return true; },
      [&](unsigned int) { return destination; });
  ImportedEvent imported = lines.read(std::move(line));
  if (imported.event && queueOf(imported.dsid) != destination.dsid) {
    refuse("it is meant for " + queueName(imported.dsid) + " and was sent to " +
           queueName(destination.dsid));
  }
  if (!imported.event) refuse(imported.problem);
  return std::move(imported.event);
}

std::unique_ptr<Event> eventOfJson(const json& object, const Destination& destination) {
  if (!object.is_object()) refuse("it is no JSON object");
  const auto eventString = object.find("eventString");
  if (eventString == object.end()) return eventOfFields(object, destination);
  requireKnownMembers(object, {"eventString"});
  if (!eventString->is_string()) refuse("the event string is no text", "eventString");
  return eventOfString(eventString->get<std::string>(), destination);
}

void requireRoom(const Events& events, const BodyBounds& bounds) {
  if (events.size() < bounds.mostEvents) return;
  throw Refused(ProblemKind::kPayloadTooLarge, "the body has more than " +
                                                   std::to_string(bounds.mostEvents) +
                                                   " events; send it in several requests");
}

// Adds what `read` returns.
template <typename Read>
void add(Events& events, const BodyBounds& bounds, std::optional<std::size_t> line, Read read) {
  requireRoom(events, bounds);
  try {
    events.push_back(read());
  } catch (const Refused& problem) {
    refuseAt(problem.problem(), events.size(), line);
  }
}

Events eventsOfJson(std::string_view body, const BodyBounds& bounds) {
  const json document = readJson(body, {.depth = kEventDepth + 1, .elements = bounds.mostEvents});
  Events events;
  const auto addObject = [&](const json& object) {
    add(events, bounds, std::nullopt, [&] { return eventOfJson(object, bounds.destination); });
  };
  if (document.is_array()) {
    for (const json& object : document) addObject(object);
  } else {
    addObject(document);
  }
  return events;
}

// Calls `visit` with each line, without its end, and its number.
template <typename Visit>
void forEachLine(std::string_view body, Visit visit) {
  for (std::size_t number = 1; !body.empty(); ++number) {
    const std::size_t end = body.find('\n');
    std::string_view line = body.substr(0, end);
    body = end == std::string_view::npos ? std::string_view() : body.substr(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    visit(line, number);
  }
}

Events eventsOfJsonLines(std::string_view body, const BodyBounds& bounds) {
  Events events;
  forEachLine(body, [&](std::string_view line, std::size_t number) {
    if (line.find_first_not_of(" \t") == std::string_view::npos) return;
    add(events, bounds, number,
        [&] { return eventOfJson(readJson(line, {.depth = kEventDepth}), bounds.destination); });
  });
  return events;
}

Events eventsOfText(std::string_view body, const BodyBounds& bounds) {
  Events events;
  forEachLine(body, [&](std::string_view line, std::size_t number) {
    std::string text(line);
    if (!ImportLines::carriesEvent(text)) return;
    add(events, bounds, number, [&] { return eventOfString(std::move(text), bounds.destination); });
  });
  return events;
}

Events eventsOfBody(std::string_view body, std::string_view mediaType, const BodyBounds& bounds) {
  if (mediaType == "application/json") return eventsOfJson(body, bounds);
  if (mediaType == "application/x-ndjson") return eventsOfJsonLines(body, bounds);
  if (mediaType == "text/plain") return eventsOfText(body, bounds);
  throw Refused(
      ProblemKind::kUnsupportedMediaType,
      "events are taken as application/json, application/x-ndjson or text/plain, not as \"" +
          displayText(mediaType) + "\"");
}

}  // namespace

Events readEvents(std::string_view body, std::string_view mediaType, const BodyBounds& bounds) {
  Events events = eventsOfBody(body, mediaType, bounds);
  if (events.empty()) throw Refused(ProblemKind::kBadRequest, "the body holds no event");
  return events;
}

}  // namespace EventApps::Api
