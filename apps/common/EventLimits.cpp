#include "apps/common/EventLimits.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/common/QueueNames.h"

namespace EventApps {
namespace {

constexpr auto kLatestDate = static_cast<unsigned long>(std::numeric_limits<long>::max());
constexpr std::size_t kEventStringBytes = 2047;  // of every store
constexpr std::size_t kLongestLine = 16384;      // of which more can be said than that
constexpr std::size_t kRecordBytes = 2047;
constexpr std::size_t kDataSelectionRecordBytes = 1023;

std::size_t digits(unsigned long number) {
  return std::to_string(number).size();
}

struct Length {
  const char* what;
  std::size_t bytes;
  std::size_t most;

  std::size_t excess() const { return bytes > most ? bytes - most : 0; }
};

// The record of a row is id,eventid,type,date,"event string"[,dsid], inner quotes doubled.
std::size_t recordBytes(EventSystem::Event& event, const std::string& text, std::size_t textBytes,
                        const Destination& destination) {
  const auto quotes = static_cast<std::size_t>(std::count(text.begin(), text.end(), '"'));
  const std::size_t escaped = textBytes + quotes + 2;
  const std::size_t numbers = 2 * digits(destination.id) + 1 + digits(event.getDate()) + 4;
  const unsigned int dsid = destination.dsid;
  return numbers + escaped + (isGlobalQueue(dsid) ? 0 : 1 + digits(dsid));
}

Length recordLength(EventSystem::Event& event, const std::string& text, std::size_t textBytes,
                    const Destination& destination) {
  const std::size_t bytes = recordBytes(event, text, textBytes, destination);
  if (isGlobalQueue(destination.dsid)) return {"its database record", bytes, kRecordBytes};
  return {"its database record in a data selection", bytes, kDataSelectionRecordBytes};
}

std::string whyTooLong(EventSystem::Event& event, const std::string& text,
                       const Destination& destination) {
  const std::size_t bytes = text.size() - digits(event.getId()) + digits(destination.id);
  Length length = {"its event string", bytes, kEventStringBytes};
  if (destination.isDatabase) {
    const Length ofRecord = recordLength(event, text, bytes, destination);
    if (ofRecord.excess() > length.excess()) length = ofRecord;
  }
  if (length.excess() == 0) return "";
  return std::string(length.what) + " would be " + std::to_string(length.bytes) +
         " bytes long, and at most " + std::to_string(length.most) + " fit; shorten the text by " +
         std::to_string(length.excess());
}

// The text of a field as the parsers find it; nothing when it is not there.
std::optional<std::string_view> rawText(std::string_view line, const EventKind& kind,
                                        const Field& field) {
  const bool isLast = &field == &kind.fields.back();
  const std::size_t tag = isLast ? line.find(kind.tag) : 0;
  if (tag == std::string_view::npos) return std::nullopt;
  const std::string key = std::string(field.key) + ":";
  const std::size_t start = line.find(key, tag);
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view rest = line.substr(start + key.size());
  const std::size_t end = rest.find(';');
  return isLast ? rest.substr(0, rest.size() - std::min<std::size_t>(3, rest.size()))
                : rest.substr(0, end);
}

std::string whyTextTooLong(const std::string& line, const EventKind& kind) {
  for (const Field& field : kind.fields) {
    if (field.type != FieldType::kText) continue;
    const auto text = rawText(line, kind, field);
    if (!text || text->size() <= field.mostBytes) continue;
    return std::string(field.key) + " is " + std::to_string(text->size()) +
           " bytes long; at most " + std::to_string(field.mostBytes) + " can be read back";
  }
  return "";
}

std::string whyNoSection(const std::string& line, const EventKind& kind) {
  if (line.find(kind.tag) == std::string::npos) {
    return std::string("an event of type ") + std::to_string(kind.number) + " (" + kind.name +
           ") needs a section " + kind.tag + "{...}";
  }
  if (!line.ends_with(";}}")) return "it does not end in \";}}\"";
  if (line.ends_with(";AUditMSg:;}}")) return "its AUditMSg is empty";
  return "its section does not read " + sectionForm(kind);
}

}  // namespace

std::string whyNotStorable(EventSystem::Event& event, const Destination& destination) {
  if (destination.isDatabase && event.getDate() > kLatestDate) {
    return "its date " + std::to_string(event.getDate()) + " is above " +
           std::to_string(kLatestDate) + ", the highest that can be stored";
  }
  const std::string text = eventStringOf(event);
  if (text.find_first_of("\r\n") != std::string::npos) {
    return "its text contains a line break, and an event is one line";
  }
  std::string problem = whyTooLong(event, text, destination);
  if (!problem.empty()) return problem;
  const auto copy = parseEvent(text);
  if (!copy) return "its event string could not be read back: " + displayText(text);
  if (eventStringOf(*copy) != text) {
    return "it would read back as another event: " + displayText(eventStringOf(*copy));
  }
  return "";
}

std::string whyNotAnEventString(const std::string& line) {
  unsigned int version = 0;
  if (std::sscanf(line.c_str(), "EVENT{version:%u;", &version) != 1) {
    return "it does not begin with \"EVENT{version:1;\"";
  }
  int type = 0;
  unsigned long id = 0;
  unsigned long date = 0;
  const int values =
      std::sscanf(line.c_str(), "EVENT{version:%*u;type:%d;id:%lu;date:%lu", &type, &id, &date);
  if (values != 3) return "its envelope does not read EVENT{version:1;type:N;id:N;date:N";
  const EventKind* const kind = kindOf(type);
  if (kind == nullptr) return "its type " + std::to_string(type) + " is not one of 1 to 9";
  std::string problem = whyTextTooLong(line, *kind);
  if (!problem.empty()) return problem;
  // The library would write all of it to the log.
  if (line.size() > kLongestLine) {
    return "it is " + std::to_string(line.size()) + " bytes long, and at most " +
           std::to_string(kEventStringBytes) + " fit";
  }
  return parseEvent(line) ? "" : whyNoSection(line, *kind);
}

}  // namespace EventApps
