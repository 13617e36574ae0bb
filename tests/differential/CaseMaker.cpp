#include "tests/differential/CaseMaker.h"

#include <algorithm>
#include <charconv>
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

namespace EventSystemTest {

using namespace EventSystem;

namespace {

// Sections: # stands for a number, $ for a hexadecimal one, @ for the free text, ^ for a few
// characters.
constexpr std::string_view kSections[] = {
    "",
    ";LEGACYEVENT{payload:@;}}",
    ";lsu:^;IMAGEREPEVENT{size:#;path:@;}}",
    ";LSUSTATUSEVENT{state:#;server:@;}}",
    ";SERVERSTATUSEVENT{state:#;server:@;}}",
    ";CAPACITYEVENT{capacity:#;capacityphys:#;used:#;usedphys:#;server:@;}}",
    ";ABILITIESEVENT{flags:0x$;server:@;}}",
    ";{ACTIVITYEVENT{version:1;action:#;time:#;severity:#;msg:@;}}",
    ";AUDITEVENT{version:#;action:#;time:#;loadSize:#;AUditMSg:@;}}",
    ";KELPEVENT{version:#;severity:#;issue:3;share_type:#;file_group:#;name:#;host:#;string:@;}}"};
constexpr std::string_view kDurationSection =
    ";KELPEVENT{version:#;severity:#;issue:#;share_type:#;issue_duration:#;name:#;host:#;"
    "string:@;}}";

// The longest free text that comes back whole.
constexpr unsigned int kLimits[] = {0, 1020, 2044, 124, 124, 124, 124, 1020, 10236, 1020};

constexpr std::uint64_t kEdges[] = {0,
                                    1,
                                    2,
                                    3,
                                    2147483647,
                                    2147483648,
                                    4294967294,
                                    4294967295,
                                    4294967296,
                                    4294967299,
                                    999999999999999999,
                                    9223372036854775807u,
                                    9223372036854775808u,
                                    9223372036854775809u,
                                    9999999999999999999u,
                                    10000000000000000000u,
                                    18446744073709551614u,
                                    18446744073709551615u};

constexpr std::string_view kPieces[] = {";}}",
                                        ";",
                                        "}",
                                        "{",
                                        ":",
                                        " ",
                                        "\t",
                                        "\n",
                                        "\v",
                                        "\f",
                                        "\r",
                                        "-",
                                        "+",
                                        "0x",
                                        "0X",
                                        "0",
                                        "00",
                                        "-1",
                                        "1",
                                        "3",
                                        "9",
                                        "a",
                                        "F",
                                        "x",
                                        "%n%s",
                                        "99999999999999999999",
                                        "18446744073709551615",
                                        "18446744073709551616",
                                        "18446744073709551617",
                                        "-18446744073709551615",
                                        "184467440737095516150",
                                        "4294967296",
                                        "4294967299",
                                        "2147483648",
                                        "-2147483649",
                                        "9223372036854775808",
                                        "-9223372036854775808",
                                        "-9223372036854775809",
                                        "10000000000000000000",
                                        "0000000000000000000000",
                                        "ffffffffffffffff",
                                        "10000000000000000",
                                        "(NULL)",
                                        "(null)",
                                        "(NULL",
                                        "lsu:",
                                        ";lsu:x;",
                                        ";server:",
                                        ";msg:",
                                        ";AUditMSg:",
                                        ";path:",
                                        ";string:",
                                        "{payload:",
                                        "{size:",
                                        "{state:",
                                        "{flags:0x",
                                        "{capacity:",
                                        "{version:",
                                        ";file_group:7;name:1;host:2",
                                        ";issue_duration:7;name:1;host:2",
                                        ";issue:3;",
                                        ";issue:4;",
                                        "EVENT{version:1;",
                                        "version:",
                                        ";type:",
                                        ";id:",
                                        ";date:",
                                        "EVENT",
                                        "LEGACYEVENT",
                                        "IMAGEREPEVENT",
                                        "LSUSTATUSEVENT",
                                        "SERVERSTATUSEVENT",
                                        "CAPACITYEVENT",
                                        "ABILITIESEVENT",
                                        "ACTIVITYEVENT",
                                        "AUDITEVENT",
                                        "KELPEVENT",
                                        "\xff\x80",
                                        "\x85",
                                        "\xa0",
                                        "\x1f"};

constexpr std::string_view kBlanks = " \t\n\v\f\r";

}  // namespace

std::string_view CaseMaker::text(int type) {
  m_length = 0;
  if (m_random.oneIn(16)) {
    appendSoup();
  } else {
    appendEventString(type);
    for (unsigned int damages = m_random.below(4); damages != 0; --damages) damage();
  }
  return {m_text.data(), m_length};
}

std::uint64_t CaseMaker::number() {
  switch (m_random.below(8)) {
    case 0:
      return kEdges[m_random.below(std::size(kEdges))];
    case 1:
      return m_random.next();
    case 2:
      return m_random.next() >> m_random.below(64);
    case 3:
      return 0 - static_cast<std::uint64_t>(m_random.below(1000));
    default:
      return m_random.below(100000);
  }
}

void CaseMaker::appendEventString(int type) {
  append("EVENT{version:");
  m_random.oneIn(32) ? appendNumber() : append('1');
  append(";type:");
  m_random.oneIn(32) ? appendNumber() : appendDecimal(static_cast<std::uint64_t>(type));
  append(";id:");
  appendNumber();
  append(";date:");
  appendNumber();
  const bool duration = type == kKelpEvent && m_random.oneIn(2);
  for (const char c : duration ? kDurationSection : kSections[type]) {
    if (c == '#') {
      appendNumber();
    } else if (c == '$') {
      appendHex();
    } else if (c == '@') {
      appendFreeText(type);
    } else if (c == '^') {
      appendBytes(m_random.below(8));
    } else {
      append(c);
    }
  }
}

void CaseMaker::appendSoup() {
  for (unsigned int pieces = 1 + m_random.below(24); pieces != 0; --pieces) appendPiece();
}

void CaseMaker::appendPiece() {
  switch (m_random.below(12)) {
    case 0:
      appendBytes(1 + m_random.below(4));
      break;
    case 1:
      appendOddNumber();
      break;
    default:
      append(kPieces[m_random.below(std::size(kPieces))]);
  }
}

void CaseMaker::appendBytes(std::size_t count) {
  for (; count != 0; --count) append(static_cast<char>(1 + m_random.below(255)));
}

void CaseMaker::appendDecimal(std::uint64_t number) {
  char digits[20];
  const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  append({digits, static_cast<std::size_t>(end - digits)});
}

void CaseMaker::appendNumber() {
  m_random.oneIn(12) ? appendOddNumber() : appendDecimal(number());
}

void CaseMaker::appendOddNumber() {
  for (unsigned int blanks = m_random.below(3); blanks != 0; --blanks) {
    append(kBlanks[m_random.below(static_cast<unsigned int>(kBlanks.size()))]);
  }
  if (m_random.oneIn(2)) append("+-"[m_random.below(2)]);
  if (m_random.oneIn(8)) append("+-"[m_random.below(2)]);
  if (m_random.oneIn(4)) append(std::string_view("00000000000000000000000000", m_random.below(26)));
  if (!m_random.oneIn(8)) appendDecimal(number());
  for (unsigned int more = m_random.oneIn(4) ? m_random.below(24) : 0; more != 0; --more) {
    append(static_cast<char>('0' + m_random.below(10)));
  }
}

void CaseMaker::appendHex() {
  if (m_random.oneIn(8)) append(kPieces[m_random.below(std::size(kPieces))]);
  if (m_random.oneIn(16)) append("0x");
  char digits[16];
  const char* const end = std::to_chars(digits, digits + sizeof digits, number(), 16).ptr;
  append({digits, static_cast<std::size_t>(end - digits)});
  if (m_random.oneIn(8)) append("ABCDEFGabcdefg"[m_random.below(14)]);
}

void CaseMaker::appendFreeText(int type) {
  append(freeText(type));
}

// Of the length that it is to be tested with; printable and not so.
const char* CaseMaker::freeText(int type) {
  static thread_local std::array<char, 16000> free;
  std::size_t length = m_random.below(24);
  if (m_random.oneIn(type == kAuditEvent ? 512 : 32))
    length = kLimits[type] - 4 + m_random.below(9);
  if (m_random.oneIn(2048)) length = m_random.below(4000);
  std::size_t at = 0;
  while (at + 8 <= length) {
    const std::uint64_t bytes = (m_random.next() & 0x1f1f1f1f1f1f1f1fu) | 0x6060606060606060u;
    memcpy(free.data() + at, &bytes, 8);
    at += 8;
  }
  while (at < length) free[at++] = static_cast<char>(1 + m_random.below(255));
  free[length] = '\0';
  if (m_random.oneIn(16)) {
    const std::string_view piece = kPieces[m_random.below(std::size(kPieces))];
    const std::size_t place = m_random.below(static_cast<unsigned int>(length) + 1);
    memcpy(free.data() + place, piece.data(), piece.size());
    free[std::max(length, place + piece.size())] = '\0';
  }
  return free.data();
}

void CaseMaker::damage() {
  const std::size_t at = m_random.below(static_cast<unsigned int>(m_length) + 1);
  const std::size_t end = m_length;
  switch (m_random.below(8)) {
    case 0:
      m_length = at;
      break;
    case 1:
      erase(at, 1 + m_random.below(8));
      break;
    case 2:
      append(std::string_view(m_text.data() + m_random.below(static_cast<unsigned int>(at) + 1),
                              std::min<std::size_t>(m_random.below(40), end - at)));
      moveTailTo(at, end);
      break;
    case 3:
      erase(at, 1 + m_random.below(3));
      [[fallthrough]];
    case 4: {
      const std::size_t cut = m_length;
      appendPiece();
      moveTailTo(std::min(at, cut), cut);
      break;
    }
    case 5:
      replaceNumber(at);
      break;
    default:
      if (at < m_length) m_text[at] = static_cast<char>(1 + m_random.below(255));
  }
}

void CaseMaker::replaceNumber(std::size_t from) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  while (from < m_length && !isDigit(m_text[from])) ++from;
  std::size_t behind = from;
  while (behind < m_length && isDigit(m_text[behind])) ++behind;
  erase(from, behind - from);
  const std::size_t end = m_length;
  appendOddNumber();
  moveTailTo(from, end);
}

void CaseMaker::append(std::string_view piece) {
  const std::size_t count = std::min(piece.size(), m_text.size() - m_length);
  memmove(m_text.data() + m_length, piece.data(), count);
  m_length += count;
}

void CaseMaker::append(char c) {
  if (m_length < m_text.size()) m_text[m_length++] = c;
}

void CaseMaker::erase(std::size_t at, std::size_t count) {
  count = std::min(count, m_length - at);
  memmove(m_text.data() + at, m_text.data() + at + count, m_length - at - count);
  m_length -= count;
}

void CaseMaker::moveTailTo(std::size_t at, std::size_t end) {
  char tail[512];
  const std::size_t count = std::min(m_length - end, sizeof tail);
  memcpy(tail, m_text.data() + end, count);
  memmove(m_text.data() + at + count, m_text.data() + at, end - at);
  memcpy(m_text.data() + at, tail, count);
  m_length = end + count;
}

std::unique_ptr<Event> CaseMaker::event(int type) {
  static thread_local std::array<char, 16000> name;
  const char* const free = freeText(type);
  memcpy(name.data(), free, strlen(free) + 1);
  char* const text = m_random.oneIn(32) ? nullptr : name.data();
  const std::uint64_t id = number();
  const auto integer = [this] { return static_cast<int>(number()); };
  const auto state = static_cast<unsigned int>(m_random.oneIn(2) ? m_random.below(4) : number());
  switch (type) {
    case kLegacyEvent:
      return std::make_unique<LegacyEvent>(text, id);
    case kImageRepEvent:
      return std::make_unique<ImageRepEvent>(text, static_cast<unsigned int>(number()), id,
                                             m_random.oneIn(2) ? nullptr : freeText(kLegacyEvent));
    case kLSUStatusEvent:
      return std::make_unique<LSUStatusEvent>(text, static_cast<LSUStatusEvent::lsuState>(state),
                                              id);
    case kServerStatusEvent:
      return std::make_unique<ServerStatusEvent>(
          text, static_cast<ServerStatusEvent::serverState>(state), id);
    case kCapacityEvent:
      return std::make_unique<CapacityEvent>(text, number(), number(), number(), number(), id);
    case kAbilitiesEvent:
      return std::make_unique<AbilitiesEvent>(integer(), text, id);
    case kActivityEvent:
      return std::make_unique<ActivityEvent>(integer(), number(), integer(), text, id);
    case kAuditEvent:
      return std::make_unique<AuditEvent>(text, integer(), integer(), number(), integer(), id);
    default:
      return std::make_unique<KelpEvent>(integer(), integer(), m_random.oneIn(2) ? 3 : integer(),
                                         integer(), integer(), number(), integer(), integer(), text,
                                         id);
  }
}

}  // namespace EventSystemTest
