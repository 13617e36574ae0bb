// Puts one text or one event through the library and through the plain formulation and compares
// everything that a caller can see: results, events, log lines, written bytes and cuts.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_TESTS_DIFFERENTIAL_DIFFERENTIAL_H
#define EVENTSYSTEM_TESTS_DIFFERENTIAL_DIFFERENTIAL_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "EventSystem/Event.h"
#include "tests/differential/CaseMaker.h"
#include "tests/differential/GuardedText.h"
#include "tests/differential/LogCapture.h"

namespace EventSystemTest {

// What has been compared; a case is one text or one event.
struct Tally {
  std::uint64_t accepted = 0;  // texts that gave an event
  std::uint64_t refused = 0;
  std::uint64_t events = 0;
  std::uint64_t writings = 0;  // of an event into a buffer of some size

  std::uint64_t cases() const { return accepted + refused + events; }
  void add(const Tally& other);
};

class Differential {
 public:
  explicit Differential(std::uint64_t seed);

  // Runs one case of the seed. Returns false at a difference, which difference() then tells.
  bool run(std::uint64_t number);

  // Whether both read this text alike: with Event::fromString(), or as the section of one type.
  bool reads(std::string_view text);
  bool readsSection(int type, std::string_view text);
  // Whether both read this text alike, write its event alike, read that alike too, and the event
  // then is written as it stands. `type` is 0 or whose section it is.
  bool comesBack(int type, std::string_view text);
  // Whether both write this event alike into buffers of these sizes, 0 to one more than needed.
  bool writesAtEverySize(EventSystem::Event& event);

  const std::string& difference() const { return m_difference; }
  const Tally& tally() const { return m_tally; }

 private:
  using EventPtr = std::unique_ptr<EventSystem::Event>;

  bool runText(Random& random, CaseMaker& maker, int type);
  bool runEvent(Random& random, CaseMaker& maker, int type);
  bool compareParsing(int type, const char* text, EventPtr& parsed);
  bool compareWriting(EventSystem::Event& event, unsigned long size);
  bool compareSomeWritings(EventSystem::Event& event, Random& random);
  bool compareNullBuffer(EventSystem::Event& event);
  bool differ(const char* what);

  std::uint64_t m_seed;
  Tally m_tally;
  std::string m_difference;
  GuardedText m_text;
  LogCapture m_expectedLog;
  LogCapture m_actualLog;
  std::unique_ptr<char[]> m_expected;
  std::unique_ptr<char[]> m_actual;
};

}  // namespace EventSystemTest

#endif
