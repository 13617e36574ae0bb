#include "tests/death/EventMaker.h"

#include <array>
#include <charconv>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "tests/differential/Random.h"

namespace EventSystemTest {
namespace {

constexpr char kOpening[] = "<no ";
constexpr char kAuditOpening[] = "<audit ";

std::string marked(const char* opening, std::uint64_t number) {
  return opening + std::to_string(number) + ">";
}

// The number's mark and some more, with quotes and commas, which a record has to keep.
std::string freeText(std::uint64_t number, unsigned int room) {
  static constexpr char kAlphabet[] = "abcdefghijklmnopqrstuvwxyz ABCDEF0123456789,,\"\"''%/=_";
  Random random(number, 1);
  std::string text = marked(kOpening, number);
  const unsigned int length = random.oneIn(4) ? room : random.below(room + 1);
  while (text.size() < length) text += kAlphabet[random.below(sizeof kAlphabet - 1)];
  return text;
}

std::optional<std::uint64_t> numberBehind(const std::string& text, const std::string& opening) {
  const std::size_t at = text.find(opening);
  if (at == std::string::npos) return std::nullopt;
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + at + opening.size(), end, number);
  if (error != std::errc() || stop == end || *stop != '>') return std::nullopt;
  return number;
}

}  // namespace

std::unique_ptr<EventSystem::Event> makeEvent(std::uint64_t number, unsigned int room) {
  using namespace EventSystem;
  std::string mark = marked(kOpening, number);
  std::string text = freeText(number, room);
  Random random(number, 2);
  switch (random.below(9)) {
    case 0:
      return std::make_unique<LegacyEvent>(text.data(), 0);
    case 1:
      return std::make_unique<ImageRepEvent>(text.data(), 7u, 0, "lsu");
    case 2:
      return std::make_unique<LSUStatusEvent>(mark.data(), LSUStatusEvent::lsuState(2), 0);
    case 3:
      return std::make_unique<ServerStatusEvent>(mark.data(), ServerStatusEvent::serverState(1), 0);
    case 4:
      return std::make_unique<CapacityEvent>(mark.data(), random.next(), 2, 3, 4, 0);
    case 5:
      return std::make_unique<AbilitiesEvent>(5, mark.data(), 0);
    case 6:
      return std::make_unique<ActivityEvent>(1, random.next(), 3, text.c_str(), 0);
    case 7:
      return std::make_unique<AuditEvent>(text.data(), 1, 2, 3, 4, 0);
    default:
      return std::make_unique<KelpEvent>(1, 2, 3, 4, 5, 6, 7, 8, text.c_str(), 0);
  }
}

std::string auditContentOf(std::uint64_t number) {
  return "version:1;action:2;time:" + std::to_string(number) +
         ";loadSize:0;AUditMSg:" + marked(kAuditOpening, number);
}

std::string eventStringOf(EventSystem::Event& event) {
  std::array<char, 2048> text{};
  event.toString(text.data(), text.size());
  return text.data();
}

std::string withId(const std::string& text, std::uint64_t id) {
  constexpr char kTag[] = ";id:";
  const std::size_t begin = text.find(kTag);
  if (begin == std::string::npos) return text;
  const std::size_t from = begin + sizeof kTag - 1;
  const std::size_t end = text.find(';', from);
  if (end == std::string::npos) return text;
  std::string changed = text;
  return changed.replace(from, end - from, std::to_string(id));
}

std::optional<EventNumber> numberOf(const std::string& text) {
  if (const auto number = numberBehind(text, kOpening)) return EventNumber{*number, false};
  if (const auto number = numberBehind(text, kAuditOpening)) return EventNumber{*number, true};
  return std::nullopt;
}

}  // namespace EventSystemTest
