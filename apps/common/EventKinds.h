// The nine kinds of events as data: what each is called, which fields its section has, and how
// an event is built from their texts.
//
// Thread safety: constant data; the functions use only their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_EVENTKINDS_H
#define EVENTSYSTEM_APPS_COMMON_EVENTKINDS_H

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "EventSystem/Event.h"

namespace EventApps {

enum class FieldType { kInt32, kUint32, kUint64, kFlags, kState, kText };

// When a field may be left out.
enum class Presence {
  kRequired,
  kDefault,   // `fallback` is taken
  kNow,       // the current time is taken
  kOptional,  // the event class has its own default
};

struct Field {
  const char* key;     // in the event string
  const char* option;  // of `eventctl add`
  FieldType type;
  Presence presence;
  const char* fallback;   // with Presence::kDefault
  std::size_t mostBytes;  // of a text that can be read back
  const char* help;
};

// Field texts by key.
using FieldTexts = std::map<std::string, std::string, std::less<>>;

struct EventKind {
  EventSystem::eventType number;
  const char* name;
  const char* tag;  // of the section
  const char* summary;
  std::span<const Field> fields;  // in the order of the section; a text that ends it is last
  std::unique_ptr<EventSystem::Event> (*build)(const FieldTexts&);
  const char* example;  // arguments of `eventctl add`
};

std::span<const EventKind> eventKinds();

// The kind, or null for a number or name that no kind has.
const EventKind* kindOf(int number);
const EventKind* kindNamed(std::string_view nameOrNumber);

// The kind's name, or "type N".
std::string kindName(int number);

const Field* findField(const EventKind& kind, std::string_view key);

// What people and programs call the field: as its option, with '_' in words: "load_size", "msg".
std::string nameOf(const Field& field);

// The field that somebody who writes an event calls so, by its name or by its key.
const Field* fieldNamed(const EventKind& kind, std::string_view name);

// The same of a kind that may be null, and whether it is a text.
const Field* fieldOf(const EventKind* kind, const std::string& key);
bool isText(const EventKind* kind, const std::string& key);

// Why `text` is no value of the field, or the empty text.
std::string whyNotAValue(const Field& field, const std::string& text);

// Gives the fields that may be left out their values, where they have one.
void fillDefaults(const EventKind& kind, FieldTexts& texts);

// A KelpEvent carries one of two fields, by its issue: the one that is needed and the one that
// would be lost. Both null for other kinds, and without an issue.
struct IssueFields {
  const Field* needed = nullptr;
  const Field* lost = nullptr;
};
IssueFields issueFields(const EventKind& kind, const FieldTexts& texts);

// The section as it must read, for messages: "CAPACITYEVENT{capacity:N;...;server:TEXT;}}".
std::string sectionForm(const EventKind& kind);

}  // namespace EventApps

#endif
