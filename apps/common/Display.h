// Text of unknown origin made fit for a terminal: what could move the cursor, ring or hide
// something is shown as an escape, and widths are counted in terminal columns.
//
// Thread safety: pure functions of their arguments; the process's LC_CTYPE must be a UTF-8 locale.

#ifndef EVENTSYSTEM_APPS_COMMON_DISPLAY_H
#define EVENTSYSTEM_APPS_COMMON_DISPLAY_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace EventApps {

// `text` with control characters, invisible characters and bytes that are no UTF-8 replaced
// by escapes such as \n, \x1b and \u{202e}.
std::string displayText(std::string_view text);

// JSON text with the same content, in which control characters and invisible ones are escaped.
std::string displayJson(std::string json);

// Whether all bytes are UTF-8, and the bytes as lower-case hex digits.
bool isUtf8(std::string_view text);
std::string hexOfBytes(std::string_view bytes);

// Columns that an output of displayText() takes.
std::size_t displayWidth(std::string_view text);

// `text`, an output of displayText(), cut to at most `columns`; a cut ends in an ellipsis.
std::string cutToWidth(std::string_view text, std::size_t columns);

// The start of any text as displayText() shows it, in at most `columns`; a cut ends in an ellipsis.
// Takes no longer for a text that is very long.
std::string displayStart(std::string_view text, std::size_t columns);

// `text`, an output of displayText(), in lines of at most `columns`, broken at blanks where
// possible. Never empty.
std::vector<std::string> wrapToWidth(std::string_view text, std::size_t columns);

// A date of an event, in UTC: "2023-11-14 22:13:20", or with `iso` "2023-11-14T22:13:20Z". Dates
// that no calendar holds are shown as "@" and the seconds.
std::string displayTime(unsigned long seconds, bool iso);

// 1234567 as "1,234,567".
std::string displayCount(unsigned long count);

}  // namespace EventApps

#endif
