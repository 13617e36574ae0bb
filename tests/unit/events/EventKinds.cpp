#include "tests/unit/events/EventKinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "tests/support/FakeHost.h"

namespace EventSystemTest {

using namespace EventSystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<Kind> statusKinds() {
  return {{.name = "LSUStatusEvent",
           .type = 3,
           .parse = LSUStatusEvent::fromString,
           .tag = "LSUSTATUSEVENT",
           .head = ";LSUSTATUSEVENT{state:2;server:",
           .longest = 124,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<LSUStatusEvent>(text.data(), LSUStatusEvent::lsuState{2}, id);
           }},
          {.name = "ServerStatusEvent",
           .type = 4,
           .parse = ServerStatusEvent::fromString,
           .tag = "SERVERSTATUSEVENT",
           .head = ";SERVERSTATUSEVENT{state:0;server:",
           .longest = 124,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<ServerStatusEvent>(text.data(),
                                                        ServerStatusEvent::serverState{0}, id);
           }},
          {.name = "CapacityEvent",
           .type = 5,
           .parse = CapacityEvent::fromString,
           .tag = "CAPACITYEVENT",
           .head = ";CAPACITYEVENT{capacity:1000;capacityphys:800;used:500;usedphys:400;server:",
           .longest = 124,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<CapacityEvent>(text.data(), 1000, 800, 500, 400, id);
           }},
          {.name = "AbilitiesEvent",
           .type = 6,
           .parse = AbilitiesEvent::fromString,
           .tag = "ABILITIESEVENT",
           .head = ";ABILITIESEVENT{flags:0x1F;server:",
           .longest = 124,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<AbilitiesEvent>(31, text.data(), id);
           }}};
}

std::vector<Kind> messageKinds() {
  return {{.name = "ActivityEvent",
           .type = 7,
           .parse = ActivityEvent::fromString,
           .tag = "ACTIVITYEVENT",
           .head = ";{ACTIVITYEVENT{version:1;action:3;time:100;severity:2;msg:",
           .longest = 1020,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<ActivityEvent>(3, 100, 2, text.data(), id);
           }},
          {.name = "AuditEvent",
           .type = 8,
           .parse = AuditEvent::fromString,
           .tag = "AUDITEVENT",
           .head = ";AUDITEVENT{version:4;action:-5;time:200;loadSize:6;AUditMSg:",
           .longest = 10236,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<AuditEvent>(text.data(), 4, -5, 200, 6, id);
           }},
          {.name = "LegacyEvent",
           .type = 1,
           .parse = LegacyEvent::fromString,
           .tag = "LEGACYEVENT",
           .head = ";LEGACYEVENT{payload:",
           .longest = 1020,
           .make = [](std::string text, unsigned long id) -> EventPtr {
             return std::make_unique<LegacyEvent>(text.data(), id);
           }}};
}

Kind imageRepKind() {
  return {.name = "ImageRepEvent",
          .type = 2,
          .parse = ImageRepEvent::fromString,
          .tag = "IMAGEREPEVENT",
          .head = ";lsu:vol1;IMAGEREPEVENT{size:4096;path:",
          .longest = 2044,
          .make = [](std::string text, unsigned long id) -> EventPtr {
            return std::make_unique<ImageRepEvent>(text.data(), 4096, id, "vol1");
          }};
}

// The two forms of a KelpEvent; toString() returns the length of the part after "share_type:1;".
Kind kelpKind(const std::string& name, int issue, const std::string& number) {
  const std::string opening =
      ";KELPEVENT{version:1;severity:2;issue:" + std::to_string(issue) + ";share_type:1;";
  return {.name = name,
          .type = 9,
          .parse = KelpEvent::fromString,
          .tag = "KELPEVENT",
          .head = opening + number + ";name:4;host:5;string:",
          .halfway = opening.size(),
          .longest = 1020,
          .cuts = true,
          .make = [issue](std::string text, unsigned long id) -> EventPtr {
            return std::make_unique<KelpEvent>(1, 2, issue, 1, 60, 77, 4, 5, text.data(), id);
          }};
}

// Marks an output that a parser has not written.
Event* untouched() {
  static char mark[sizeof(Event)];
  return reinterpret_cast<Event*>(mark);
}

}  // namespace

const std::vector<Kind>& allKinds() {
  static const std::vector<Kind> kinds = [] {
    std::vector<Kind> all = statusKinds();
    for (Kind& kind : messageKinds()) all.push_back(kind);
    all.push_back(imageRepKind());
    all.push_back(kelpKind("KelpEventFileGroup", 3, "file_group:77"));
    all.push_back(kelpKind("KelpEventDuration", 5, "issue_duration:60"));
    return all;
  }();
  return kinds;
}

std::ostream& operator<<(std::ostream& out, const Kind& kind) {
  return out << kind.name;
}

std::string nameOfKind(const ::testing::TestParamInfo<Kind>& tested) {
  return tested.param.name;
}

std::string Kind::line(const std::string& text) const {
  return eventString(type, section(text));
}

std::string eventString(int type, const std::string& section, unsigned long id,
                        unsigned long date) {
  return "EVENT{version:1;type:" + std::to_string(type) + ";id:" + std::to_string(id) +
         ";date:" + std::to_string(date) + section;
}

Parsed parseWith(Parser parse, const std::string& text) {
  const auto exact = std::make_unique<char[]>(text.size() + 1);  // a read beyond it is an error
  text.copy(exact.get(), text.size());
  Event* event = untouched();
  const int code = parse(exact.get(), &event);
  if (event == untouched()) {
    ADD_FAILURE() << "the parser left *event alone for " << text.substr(0, 200);
    event = nullptr;
  }
  return {code, EventPtr(event)};
}

Parsed parse(const std::string& text) {
  return parseWith(Event::fromString, text);
}

std::string written(Event& event) {
  std::string buffer(16384, '#');
  event.toString(buffer.data(), buffer.size());
  buffer.resize(buffer.find('\0'));
  return buffer;
}

std::string writtenSection(Event& event) {
  const std::string whole = written(event);
  const std::string envelope = eventString(event.getType(), "", event.getId(), event.getDate());
  EXPECT_EQ(envelope, whole.substr(0, envelope.size()));
  return whole.substr(envelope.size());
}

LogLine complaint(const std::string& format, const std::string& text) {
  const std::size_t second = format.find("%s", 2);
  return {.level = "error",
          .code = 9,
          .format = format,
          .text = "fromString" + format.substr(2, second - 2) + text + format.substr(second + 2)};
}

void expectRefused(Parser parse, const std::string& text, const std::string& format) {
  SCOPED_TRACE(text.substr(0, 300));
  host().clearCalls();
  const Parsed parsed = parseWith(parse, text);
  EXPECT_EQ(9, parsed.code);
  EXPECT_EQ(nullptr, parsed.event);
  EXPECT_THAT(host().log(), ElementsAre(complaint(format, text)));
}

std::string rewritten(Parser parse, const std::string& text) {
  SCOPED_TRACE(text.substr(0, 300));
  host().clearCalls();
  const Parsed parsed = parseWith(parse, text);
  EXPECT_EQ(0, parsed.code);
  EXPECT_THAT(host().log(), IsEmpty());
  if (parsed.event == nullptr) {
    ADD_FAILURE() << "no event";
    return "";
  }
  return writtenSection(*parsed.event);
}

}  // namespace EventSystemTest
