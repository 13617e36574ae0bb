// The kinds of event strings as data, so that what all of them share is tested once: for each kind
// the parser, the written section around its one free text, and how to make such an event. With
// it, helpers that write, parse and compare event strings.
//
// Thread safety: plain functions; allKinds() is filled on first use.

#ifndef EVENTSYSTEM_TESTS_UNIT_EVENTS_EVENTKINDS_H
#define EVENTSYSTEM_TESTS_UNIT_EVENTS_EVENTKINDS_H

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "EventSystem/Event.h"
#include "tests/support/LogLine.h"

namespace EventSystemTest {

using EventPtr = std::unique_ptr<EventSystem::Event>;
using Parser = int (*)(const char* text, EventSystem::Event** event);

struct Kind {
  std::string name;  // of the class, or of one form of its section
  int type = 0;      // in the envelope
  Parser parse = nullptr;
  std::string tag;          // what the parser searches for
  std::string head;         // the section up to its free text, which ";}}" follows
  std::size_t halfway = 0;  // where in `head` the part starts whose length toString() returns
  std::size_t longest = 0;  // the longest free text that comes back whole
  bool cuts = false;        // a longer one comes back cut; otherwise it is refused
  // The event that writes `head`, the text and ";}}".
  std::function<EventPtr(std::string text, unsigned long id)> make;

  std::string section(const std::string& text) const { return head + text + ";}}"; }
  // A complete event string of this kind.
  std::string line(const std::string& text) const;
};

const std::vector<Kind>& allKinds();
std::ostream& operator<<(std::ostream& out, const Kind& kind);
// For INSTANTIATE_TEST_SUITE_P.
std::string nameOfKind(const ::testing::TestParamInfo<Kind>& tested);

// An event string with these values in its envelope.
std::string eventString(int type, const std::string& section, unsigned long id = 12,
                        unsigned long date = 1700000000);

// What a parser gave.
struct Parsed {
  int code = -1;
  EventPtr event;
};

// Runs a parser on an exact copy of the text; fails the test when `*event` was left alone.
Parsed parseWith(Parser parse, const std::string& text);
// The same with Event::fromString().
Parsed parse(const std::string& text);

// The whole event string, and the part after the envelope.
std::string written(EventSystem::Event& event);
std::string writtenSection(EventSystem::Event& event);

// Formats of what the parsers complain about.
inline constexpr char kWrongType[] = "%s Invalid event string (wrong event type?): %s";
inline constexpr char kBadFormat[] = "%s Invalid event string (bad format): %s";
inline constexpr char kBadEnding[] = "%s Invalid event string (bad ending): %s";
inline constexpr char kEmptyMessage[] = "%s Invalid event string (empty after AUditMSg): %s";
inline constexpr char kNoFileGroup[] = "%s Invalid event string (no file_group): %s";
inline constexpr char kNoDuration[] = "%s Invalid event string (no file_group tag): %s";
inline constexpr char kNoString[] = "%s Invalid event string (no string tag): %s";
inline constexpr char kInvalid[] = "%s Invalid event string: %s";
inline constexpr char kUnparsed[] = "%s Failed to parse event string: %s";

// The error line (code 9) of a complaint about this text, from "fromString".
LogLine complaint(const std::string& format, const std::string& text);

// Parses the text and expects 9, a NULL event, and this one complaint in the log.
void expectRefused(Parser parse, const std::string& text, const std::string& format);

// Parses the text, expects success and no log line, and returns the section as it is written again.
std::string rewritten(Parser parse, const std::string& text);

}  // namespace EventSystemTest

#endif
