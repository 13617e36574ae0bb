#include "apps/common/StoredForm.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "EventSystem/Event.h"
#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"

namespace EventApps {
namespace {

// Replaces what stands between the first `key` and the ";" after it.
void setField(std::string& line, std::string_view key, std::string_view value) {
  const std::size_t found = line.find(key);
  if (found == std::string::npos) return;
  const std::size_t start = found + key.size();
  const std::size_t end = line.find(';', start);
  if (end != std::string::npos) line.replace(start, end - start, value);
}

// A number as it is written, from one as it may be read: " +007" is 7, and "0x1f" is 0x1F.
std::string writtenNumber(std::string_view text, bool hexadecimal) {
  std::string prefix;
  if (hexadecimal) {
    if (!text.starts_with("0x")) return std::string(text);
    prefix = "0x";
    text.remove_prefix(2);
  } else {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    if (text.starts_with('-')) {
      prefix = "-";
      text.remove_prefix(1);
    }
  }
  while (text.size() > 1 && text[0] == '0' && std::isxdigit(static_cast<unsigned char>(text[1]))) {
    text.remove_prefix(1);
  }
  std::string digits(text);
  for (char& digit : digits) {
    digit = static_cast<char>(std::toupper(static_cast<unsigned char>(digit)));
  }
  return prefix + digits;
}

// "key:value", the number in it as it is written.
std::string writtenField(std::string_view field, const EventKind& kind) {
  const std::size_t colon = field.find(':');
  if (colon == std::string_view::npos) return std::string(field);
  const std::size_t brace = field.rfind('{', colon);
  const std::string_view key =
      field.substr(brace == std::string_view::npos ? 0 : brace + 1,
                   colon - (brace == std::string_view::npos ? 0 : brace + 1));
  const Field* const known = findField(kind, key);
  const bool envelope = key == "version" || key == "type" || key == "date";
  if (!envelope && (known == nullptr || known->type == FieldType::kText)) return std::string(field);
  const bool hexadecimal = known != nullptr && known->type == FieldType::kFlags;
  return std::string(field.substr(0, colon + 1)) +
         writtenNumber(field.substr(colon + 1), hexadecimal);
}

// Adds what the class writes and its parser does without.
void addWhatMayBeMissing(std::string& line, const EventKind& kind) {
  const std::size_t tag = line.find(kind.tag);
  if (kind.number == EventSystem::kActivityEvent && tag > 0 && line[tag - 1] == ';') {
    line.insert(tag, "{");
  }
  if (kind.number == EventSystem::kImageRepEvent &&
      line.substr(0, tag).find("lsu:") == std::string::npos) {
    line.insert(tag, "lsu:TarnwellVolume;");
  }
}

// The line as it would be written if all of it is kept.
std::string writtenLine(std::string line, const EventKind& kind) {
  setField(line, "EVENT{version:", "1");
  addWhatMayBeMissing(line, kind);
  const std::string lastKey = std::string(kind.fields.back().key) + ":";
  const std::size_t last = std::min(line.find(lastKey, line.find(kind.tag)), line.size());
  std::string written;
  for (std::size_t start = 0; start < last;) {
    const std::size_t end = std::min(line.find(';', start), last);
    written += writtenField(std::string_view(line).substr(start, end - start), kind);
    if (end < last) written += ';';
    start = end + 1;
  }
  return written + line.substr(last);
}

// The field around a position, shortened for a message.
std::string fieldAround(std::string_view text, std::size_t position) {
  constexpr std::size_t kColumns = 60;
  const std::size_t before =
      position == 0 ? std::string_view::npos : text.find_last_of(";{", position - 1);
  const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
  const std::string_view field = text.substr(start, text.find(';', position) - start);
  return cutToWidth(displayText(field), kColumns);
}

}  // namespace

std::string withId(const std::string& line, unsigned long id) {
  std::string changed = line;
  setField(changed, ";id:", std::to_string(id));
  return changed;
}

std::string withDate(const std::string& line, unsigned long date) {
  std::string changed = line;
  setField(changed, ";date:", std::to_string(date));
  return changed;
}

std::string withoutId(const std::string& line) {
  return withId(line, 0);
}

std::string whyStoredChanged(const std::string& line) {
  const std::string ofNewEvent = withoutId(line);
  const auto event = parseEvent(ofNewEvent);
  const EventKind* const kind = event ? kindOf(event->getType()) : nullptr;
  if (kind == nullptr) return "";
  const std::string wanted = writtenLine(ofNewEvent, *kind);
  const std::string stored = eventStringOf(*event);
  if (wanted == stored) return "";
  const auto differs = std::mismatch(wanted.begin(), wanted.end(), stored.begin(), stored.end());
  const auto position = static_cast<std::size_t>(differs.first - wanted.begin());
  return "would be stored as \"" + fieldAround(stored, position) + "\", not as \"" +
         fieldAround(wanted, position) + "\"";
}

}  // namespace EventApps
