#include "tests/differential/Differential.h"

#include <algorithm>
#include <cstring>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "tests/oracle/events/EventMembers.h"
#include "tests/oracle/events/EventOracle.h"

namespace EventSystemTest {

using namespace EventSystem;

namespace {

constexpr unsigned long kBuffer = 32768;  // holds every event that a case makes
constexpr unsigned long kBehind = 64;     // bytes behind a text that must be the same, too
constexpr unsigned int kUsualSize = 2048;

using Parser = int (*)(const char* text, Event** event);

// By type number; 0 is any type.
constexpr Parser kParsers[] = {
    Event::fromString,          LegacyEvent::fromString,       ImageRepEvent::fromString,
    LSUStatusEvent::fromString, ServerStatusEvent::fromString, CapacityEvent::fromString,
    AbilitiesEvent::fromString, ActivityEvent::fromString,     AuditEvent::fromString,
    KelpEvent::fromString};

// What an output holds before a parser has set it.
Event* untouched() {
  alignas(Event) static char mark[sizeof(Event)];
  return reinterpret_cast<Event*>(mark);
}

// The name of a storage unit stands before the tag that readers search for; one that holds the tag
// makes another event of the text.
bool hidesTag(const std::string& text) {
  const std::size_t name = text.find(";lsu:");
  const std::size_t end = text.find(';', name == std::string::npos ? 0 : name + 1);
  return text.find("IMAGEREPEVENT", std::min(name, text.size())) < end;
}

// A class parser stamps its event with the time, which may change between two of them.
void settleDates(Event& one, Event& other) {
  if (other.getDate() - one.getDate() <= 1) {
    setEnvelope(one, one.getId(), 1700000000);
    setEnvelope(other, other.getId(), 1700000000);
  }
}

}  // namespace

void Tally::add(const Tally& other) {
  accepted += other.accepted;
  refused += other.refused;
  events += other.events;
  writings += other.writings;
}

Differential::Differential(std::uint64_t seed)
    : m_seed(seed),
      m_expected(std::make_unique<char[]>(kBuffer)),
      m_actual(std::make_unique<char[]>(kBuffer)) {}

bool Differential::run(std::uint64_t number) {
  Random random(m_seed, number);
  CaseMaker maker(random);
  const int type = static_cast<int>(1 + random.below(9));
  return random.below(8) < 6 ? runText(random, maker, type) : runEvent(random, maker, type);
}

bool Differential::runText(Random& random, CaseMaker& maker, int type) {
  const std::string_view text = maker.text(type);
  int parser = 0;
  if (random.oneIn(6)) parser = random.oneIn(16) ? static_cast<int>(1 + random.below(9)) : type;
  EventPtr parsed;
  if (!compareParsing(parser, m_text.place(text), parsed)) return false;
  ++(parsed == nullptr ? m_tally.refused : m_tally.accepted);
  return parsed == nullptr || compareSomeWritings(*parsed, random);
}

bool Differential::runEvent(Random& random, CaseMaker& maker, int type) {
  const EventPtr event = maker.event(type);
  setEnvelope(*event, maker.number(), maker.number());
  if (!compareSomeWritings(*event, random)) return false;
  if (random.oneIn(256) && !compareNullBuffer(*event)) return false;
  ++m_tally.events;
  // What stores do: they hold events in texts of 2048 bytes.
  const std::string_view written(m_expected.get());
  EventPtr parsed;
  return compareParsing(0, m_text.place(written.substr(0, kUsualSize - 1)), parsed);
}

bool Differential::reads(std::string_view text) {
  return readsSection(0, text);
}

bool Differential::readsSection(int type, std::string_view text) {
  EventPtr parsed;
  if (!compareParsing(type, m_text.place(text), parsed)) return false;
  return parsed == nullptr || writesAtEverySize(*parsed);
}

bool Differential::comesBack(int type, std::string_view text) {
  EventPtr event;
  if (!compareParsing(type, m_text.place(text), event)) return false;
  if (event == nullptr) return true;
  if (!compareWriting(*event, kBuffer)) return false;
  const std::string written = m_expected.get();
  const unsigned long whole = written.size();
  for (const unsigned long size : {whole, whole + 1, text.size() % (whole + 1), 0ul}) {
    if (!compareWriting(*event, size)) return false;
  }
  if (!compareNullBuffer(*event)) return false;
  if (!compareParsing(0, m_text.place(written), event)) return false;
  // A text can be too long to be read again.
  if (event == nullptr || hidesTag(written)) return true;
  if (!compareWriting(*event, kBuffer)) return false;
  return written == m_expected.get() || differ("event that was read, written and read");
}

bool Differential::writesAtEverySize(Event& event) {
  if (!compareWriting(event, kBuffer)) return false;
  const unsigned long whole = strlen(m_expected.get());
  for (unsigned long size = 0; size <= whole + 2; ++size) {
    if (!compareWriting(event, size)) return false;
  }
  return compareNullBuffer(event);
}

bool Differential::compareParsing(int type, const char* text, EventPtr& parsed) {
  Event* expected = untouched();
  Event* actual = untouched();
  captureLog(m_expectedLog);
  m_expectedLog.clear();
  const int expectedCode =
      type == 0 ? Oracle::parse(text, &expected) : Oracle::parseSection(type, text, &expected);
  captureLog(m_actualLog);
  m_actualLog.clear();
  const int actualCode = kParsers[type](text, &actual);
  const EventPtr expectedEvent(expected == untouched() ? nullptr : expected);
  parsed.reset(actual == untouched() ? nullptr : actual);
  if (expectedCode != actualCode) return differ("result of parsing");
  if ((expected == untouched()) != (actual == untouched()) ||
      (expectedEvent == nullptr) != (parsed == nullptr)) {
    return differ("event");
  }
  if (m_expectedLog != m_actualLog) return differ("log of parsing");
  if (parsed == nullptr) return true;
  if (type != 0) settleDates(*expectedEvent, *parsed);
  return sameMembers(*expectedEvent, *parsed) || differ("members of the event");
}

// Both buffers have held the same since they were made, so that they must be the same also where
// nothing is to be written.
bool Differential::compareWriting(Event& event, unsigned long size) {
  ++m_tally.writings;
  m_expectedLog.clear();
  m_actualLog.clear();
  captureLog(m_expectedLog);
  const int expected = Oracle::write(event, m_expected.get(), size);
  captureLog(m_actualLog);
  const int actual = event.toString(m_actual.get(), size);
  if (expected != actual) return differ("result of writing");
  if (m_expectedLog != m_actualLog) return differ("log of writing");
  const unsigned long extent = std::min(size, strlen(m_expected.get()) + 1) + kBehind;
  return memcmp(m_expected.get(), m_actual.get(), std::min(extent, kBuffer)) == 0 ||
         differ("written text");
}

bool Differential::compareSomeWritings(Event& event, Random& random) {
  if (random.oneIn(1024)) return writesAtEverySize(event) && compareWriting(event, kBuffer);
  if (random.oneIn(3)) {
    const bool usual = random.oneIn(2);
    const unsigned int size = usual ? kUsualSize : random.below(300);
    if (!compareWriting(event, size)) return false;
  }
  return compareWriting(event, kBuffer);
}

bool Differential::compareNullBuffer(Event& event) {
  m_expectedLog.clear();
  m_actualLog.clear();
  captureLog(m_expectedLog);
  const int expected = Oracle::write(event, nullptr, kUsualSize);
  captureLog(m_actualLog);
  const int actual = event.toString(nullptr, kUsualSize);
  return (expected == actual && m_expectedLog == m_actualLog) || differ("writing into nothing");
}

bool Differential::differ(const char* what) {
  m_difference = std::string("The ") + what + " differs.\nexpected log:\n" +
                 m_expectedLog.describe() + "actual log:\n" + m_actualLog.describe() +
                 "expected text: " + m_expected.get() + "\nactual text: " + m_actual.get() + "\n";
  return false;
}

}  // namespace EventSystemTest
