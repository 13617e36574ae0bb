// Makes texts and events that a parser or a writer may stumble over: event strings of all nine
// kinds with odd spellings of numbers and free texts around every limit, damaged in up to three
// places; soups of bytes and of the pieces that event strings are made of; events with any value
// in any member.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_TESTS_DIFFERENTIAL_CASEMAKER_H
#define EVENTSYSTEM_TESTS_DIFFERENTIAL_CASEMAKER_H

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "EventSystem/Event.h"
#include "tests/differential/Random.h"

namespace EventSystemTest {

class CaseMaker {
 public:
  static constexpr std::size_t kLongest = 16000;

  explicit CaseMaker(Random& random) : m_random(random) {}

  // A text without a NUL, for the parser of `type` (1 to 9). Stays until the next call.
  std::string_view text(int type);

  std::unique_ptr<EventSystem::Event> event(int type);

  // Mostly small, sometimes at the edge of a range.
  std::uint64_t number();

 private:
  void appendEventString(int type);
  void appendSoup();
  void appendPiece();
  void appendBytes(std::size_t count);
  void appendDecimal(std::uint64_t number);
  void appendNumber();
  void appendOddNumber();
  void appendHex();
  void appendFreeText(int type);
  void damage();
  void replaceNumber(std::size_t from);

  void append(std::string_view piece);
  void append(char c);
  void erase(std::size_t at, std::size_t count);
  // Moves what was appended since `end` to `at`.
  void moveTailTo(std::size_t at, std::size_t end);

  const char* freeText(int type);

  Random& m_random;
  std::size_t m_length = 0;
  std::array<char, kLongest + 400> m_text;
};

}  // namespace EventSystemTest

#endif
