#include "apps/common/EventKinds.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <optional>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

using EventSystem::Event;
using enum FieldType;
using enum Presence;

constexpr std::size_t kServerBytes = 124;
constexpr std::size_t kMessageBytes = 1020;
constexpr std::size_t kAuditBytes = 10236;
constexpr std::size_t kPathBytes = 2044;
constexpr std::size_t kLsuBytes = 1023;

constexpr Field text(const char* key, const char* option, std::size_t mostBytes, const char* help,
                     Presence presence = kRequired) {
  return {key, option, kText, presence, nullptr, mostBytes, help};
}

constexpr Field number(const char* key, const char* option, FieldType type, const char* help,
                       const char* fallback = nullptr) {
  return {key, option, type, fallback == nullptr ? kRequired : kDefault, fallback, 0, help};
}

constexpr Field kServer = text("server", "--server", kServerBytes, "server name");
constexpr Field kStateField = number("state", "--state", kState, "0, 1 or 2");
constexpr Field kTime = {
    "time", "--time", kUint64, kNow, nullptr, 0, "seconds since 1970 (default: now)"};

constexpr std::array kLegacyFields = {
    text("payload", "--payload", kMessageBytes, "opaque text of the older scheme")};

constexpr std::array kImageRepFields = {
    text("lsu", "--lsu", kLsuBytes, "storage unit (default: TarnwellVolume)", kOptional),
    number("size", "--size", kUint32, "size of the payload file"),
    text("path", "--path", kPathBytes, "path of the payload file")};

constexpr std::array kStatusFields = {kStateField, kServer};

constexpr std::array kCapacityFields = {
    number("capacity", "--capacity", kUint64, "total capacity"),
    number("capacityphys", "--capacityphys", kUint64, "physical capacity"),
    number("used", "--used", kUint64, "used space"),
    number("usedphys", "--usedphys", kUint64, "physical used space"), kServer};

constexpr std::array kAbilitiesFields = {
    number("flags", "--flags", kFlags, "ability flags, as 31 or 0x1F"), kServer};

constexpr std::array kActivityFields = {number("action", "--action", kInt32, "action code"), kTime,
                                        number("severity", "--severity", kInt32, "severity"),
                                        text("msg", "--msg", kMessageBytes, "message")};

constexpr std::array kAuditFields = {
    number("version", "--record-version", kInt32, "version of the record (default: 1)", "1"),
    number("action", "--action", kInt32, "action code"), kTime,
    number("loadSize", "--load-size", kInt32, "size figure (default: 0)", "0"),
    text("AUditMSg", "--msg", kAuditBytes, "message, not empty")};

constexpr std::array kKelpFields = {
    number("version", "--record-version", kInt32, "version of the record (default: 1)", "1"),
    number("severity", "--severity", kInt32, "severity"),
    number("issue", "--issue", kInt32, "issue code; 3 takes --file-group"),
    number("share_type", "--share-type", kInt32, "kind of share"),
    Field{"file_group", "--file-group", kUint64, kOptional, nullptr, 0,
          "file group; required for issue 3"},
    Field{"issue_duration", "--issue-duration", kInt32, kOptional, nullptr, 0,
          "duration; required for every issue but 3"},
    number("name", "--name", kInt32, "share name id"),
    number("host", "--host", kInt32, "host id"),
    text("string", "--string", kMessageBytes, "free text")};

// The texts were checked with whyNotAValue(), so a number always parses.
template <typename Number>
Number numberOf(const FieldTexts& texts, const char* key) {
  const auto found = texts.find(key);
  return found == texts.end() ? Number{} : parseNumber<Number>(found->second).value_or(Number{});
}

std::optional<std::uint32_t> parseFlags(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) {
    return parseNumber<std::uint32_t>(text.substr(2), 16);
  }
  return parseNumber<std::uint32_t>(text);
}

// A text that the event classes take as char* and copy.
class Argument {
 public:
  Argument(const FieldTexts& texts, const char* key) {
    const auto found = texts.find(key);
    m_present = found != texts.end();
    if (m_present) m_text = found->second;
  }
  char* get() { return m_present ? m_text.data() : nullptr; }

 private:
  std::string m_text;
  bool m_present;
};

std::unique_ptr<Event> buildLegacy(const FieldTexts& texts) {
  return std::make_unique<EventSystem::LegacyEvent>(Argument(texts, "payload").get(), 0);
}

std::unique_ptr<Event> buildImageRep(const FieldTexts& texts) {
  return std::make_unique<EventSystem::ImageRepEvent>(Argument(texts, "path").get(),
                                                      numberOf<unsigned int>(texts, "size"), 0,
                                                      Argument(texts, "lsu").get());
}

std::unique_ptr<Event> buildLSUStatus(const FieldTexts& texts) {
  using EventSystem::LSUStatusEvent;
  const auto state = static_cast<LSUStatusEvent::lsuState>(numberOf<unsigned int>(texts, "state"));
  return std::make_unique<LSUStatusEvent>(Argument(texts, "server").get(), state, 0);
}

std::unique_ptr<Event> buildServerStatus(const FieldTexts& texts) {
  using EventSystem::ServerStatusEvent;
  const auto state =
      static_cast<ServerStatusEvent::serverState>(numberOf<unsigned int>(texts, "state"));
  return std::make_unique<ServerStatusEvent>(Argument(texts, "server").get(), state, 0);
}

std::unique_ptr<Event> buildCapacity(const FieldTexts& texts) {
  return std::make_unique<EventSystem::CapacityEvent>(
      Argument(texts, "server").get(), numberOf<unsigned long>(texts, "capacity"),
      numberOf<unsigned long>(texts, "capacityphys"), numberOf<unsigned long>(texts, "used"),
      numberOf<unsigned long>(texts, "usedphys"), 0);
}

std::unique_ptr<Event> buildAbilities(const FieldTexts& texts) {
  const auto flags = parseFlags(texts.at("flags")).value_or(0);
  return std::make_unique<EventSystem::AbilitiesEvent>(static_cast<int>(flags),
                                                       Argument(texts, "server").get(), 0);
}

std::unique_ptr<Event> buildActivity(const FieldTexts& texts) {
  return std::make_unique<EventSystem::ActivityEvent>(
      numberOf<int>(texts, "action"), numberOf<unsigned long>(texts, "time"),
      numberOf<int>(texts, "severity"), Argument(texts, "msg").get(), 0);
}

std::unique_ptr<Event> buildAudit(const FieldTexts& texts) {
  return std::make_unique<EventSystem::AuditEvent>(
      Argument(texts, "AUditMSg").get(), numberOf<int>(texts, "version"),
      numberOf<int>(texts, "action"), numberOf<unsigned long>(texts, "time"),
      numberOf<int>(texts, "loadSize"), 0);
}

std::unique_ptr<Event> buildKelp(const FieldTexts& texts) {
  return std::make_unique<EventSystem::KelpEvent>(
      numberOf<int>(texts, "version"), numberOf<int>(texts, "severity"),
      numberOf<int>(texts, "issue"), numberOf<int>(texts, "share_type"),
      numberOf<int>(texts, "issue_duration"), numberOf<unsigned long>(texts, "file_group"),
      numberOf<int>(texts, "name"), numberOf<int>(texts, "host"), Argument(texts, "string").get(),
      0);
}

const std::array<EventKind, 9> kKinds = {{
    {EventSystem::kLegacyEvent, "legacy", "LEGACYEVENT", "a text of an older event scheme",
     kLegacyFields, buildLegacy, "--payload 'job 17 done'"},
    {EventSystem::kImageRepEvent, "imagerep", "IMAGEREPEVENT", "an image was replicated",
     kImageRepFields, buildImageRep, "--path /data/img.bin --size 4096 --lsu vol1"},
    {EventSystem::kLSUStatusEvent, "lsustatus", "LSUSTATUSEVENT", "a storage unit changed state",
     kStatusFields, buildLSUStatus, "--server node1 --state 2"},
    {EventSystem::kServerStatusEvent, "serverstatus", "SERVERSTATUSEVENT", "a server changed state",
     kStatusFields, buildServerStatus, "--server node1 --state 0"},
    {EventSystem::kCapacityEvent, "capacity", "CAPACITYEVENT", "capacity figures of a server",
     kCapacityFields, buildCapacity,
     "--server node1 --capacity 1000 --capacityphys 800 \\\n    --used 500 --usedphys 400"},
    {EventSystem::kAbilitiesEvent, "abilities", "ABILITIESEVENT", "ability flags of a server",
     kAbilitiesFields, buildAbilities, "--server node1 --flags 0x1F"},
    {EventSystem::kActivityEvent, "activity", "ACTIVITYEVENT", "an action with a message",
     kActivityFields, buildActivity, "--action 3 --severity 2 --msg 'disk full'"},
    {EventSystem::kAuditEvent, "audit", "AUDITEVENT", "an audit record", kAuditFields, buildAudit,
     "--action 3 --msg 'user admin logged in'"},
    {EventSystem::kKelpEvent, "kelp", "KELPEVENT", "an issue of the file-share service",
     kKelpFields, buildKelp,
     "--severity 2 --issue 3 --share-type 1 --file-group 77 \\\n    --name 4 --host 5 --string "
     "full"},
}};

template <typename Number>
std::string whyNotNumber(const std::string& value) {
  if (parseNumber<Number>(value)) return "";
  return "'" + value + "' is not a whole number from " +
         std::to_string(std::numeric_limits<Number>::min()) + " to " +
         std::to_string(std::numeric_limits<Number>::max());
}

std::string whyNotText(const Field& field, const std::string& value) {
  if (value.find_first_of("\r\n") != std::string::npos) {
    return "the text contains a line break; an event is one line";
  }
  if (value.size() > field.mostBytes) {
    return "the text is " + std::to_string(value.size()) + " bytes long; at most " +
           std::to_string(field.mostBytes) + " can be read back";
  }
  return "";
}

}  // namespace

std::span<const EventKind> eventKinds() {
  return kKinds;
}

const EventKind* kindOf(int number) {
  const bool known = number >= 1 && number <= static_cast<int>(kKinds.size());
  return known ? &kKinds[static_cast<std::size_t>(number - 1)] : nullptr;
}

const EventKind* kindNamed(std::string_view nameOrNumber) {
  if (const auto number = parseNumber<int>(nameOrNumber)) return kindOf(*number);
  const auto found = std::find_if(kKinds.begin(), kKinds.end(),
                                  [&](const EventKind& kind) { return kind.name == nameOrNumber; });
  return found == kKinds.end() ? nullptr : &*found;
}

std::string kindName(int number) {
  const EventKind* const kind = kindOf(number);
  return kind == nullptr ? "type " + std::to_string(number) : kind->name;
}

const Field* findField(const EventKind& kind, std::string_view key) {
  const auto found = std::find_if(kind.fields.begin(), kind.fields.end(),
                                  [&](const Field& field) { return field.key == key; });
  return found == kind.fields.end() ? nullptr : &*found;
}

std::string nameOf(const Field& field) {
  std::string name = field.option + 2;  // without its dashes
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

const Field* fieldNamed(const EventKind& kind, std::string_view name) {
  const auto found = std::find_if(kind.fields.begin(), kind.fields.end(), [&](const Field& field) {
    return field.key == name || nameOf(field) == name;
  });
  return found == kind.fields.end() ? nullptr : &*found;
}

const Field* fieldOf(const EventKind* kind, const std::string& key) {
  return kind == nullptr ? nullptr : findField(*kind, key);
}

bool isText(const EventKind* kind, const std::string& key) {
  const Field* const field = fieldOf(kind, key);
  return field != nullptr && field->type == FieldType::kText;
}

std::string whyNotAValue(const Field& field, const std::string& value) {
  switch (field.type) {
    case kInt32:
      return whyNotNumber<int>(value);
    case kUint32:
      return whyNotNumber<unsigned int>(value);
    case kUint64:
      return whyNotNumber<unsigned long>(value);
    case kFlags:
      return parseFlags(value) ? "" : "'" + value + "' is neither a number nor 0x and hex digits";
    case kState:
      return value == "0" || value == "1" || value == "2" ? "" : "'" + value + "' is not 0, 1 or 2";
    case kText:
      break;
  }
  return whyNotText(field, value);
}

void fillDefaults(const EventKind& kind, FieldTexts& texts) {
  for (const Field& field : kind.fields) {
    if (texts.contains(field.key)) continue;
    if (field.presence == kDefault) texts[field.key] = field.fallback;
    if (field.presence == kNow) texts[field.key] = std::to_string(std::time(nullptr));
  }
}

IssueFields issueFields(const EventKind& kind, const FieldTexts& texts) {
  const auto issue = texts.find("issue");
  if (kind.number != EventSystem::kKelpEvent || issue == texts.end()) return {};
  const bool isFileGroup = numberOf<int>(texts, "issue") == 3;
  return {findField(kind, isFileGroup ? "file_group" : "issue_duration"),
          findField(kind, isFileGroup ? "issue_duration" : "file_group")};
}

std::string sectionForm(const EventKind& kind) {
  std::string inside;
  std::string before;
  for (const Field& field : kind.fields) {
    const std::string key = field.key;
    if (key == "lsu") {
      before = "lsu:TEXT;";  // stands before the tag
    } else if (key == "file_group") {
      inside += "file_group:N (issue 3) or ";
    } else {
      inside += key + (field.type == kText ? ":TEXT;" : field.type == kFlags ? ":0xN;" : ":N;");
    }
  }
  return before + kind.tag + (kind.number == EventSystem::kActivityEvent ? "{version:1;" : "{") +
         inside + "}}";
}

}  // namespace EventApps
