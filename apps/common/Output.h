// Standard output, written so that a failure is always seen: a consumer deletes an event only
// after it has been handed over.
//
// Thread safety: none; the commands print from one thread.

#ifndef EVENTSYSTEM_APPS_COMMON_OUTPUT_H
#define EVENTSYSTEM_APPS_COMMON_OUTPUT_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace EventApps {

// Standard output cannot be written.
class OutputError : public std::runtime_error {
 public:
  OutputError(const std::string& message, bool closedPipe);
  // The reader has gone; the usual end of `eventctl list | head`.
  bool closedPipe() const { return m_closedPipe; }

 private:
  bool m_closedPipe;
};

// For a reader that has gone while nothing was to be written.
OutputError readerHasGone();

// A stop was asked for while standard output did not take what was to be written.
class OutputInterrupted : public std::runtime_error {
 public:
  OutputInterrupted();
};

class Output {
 public:
  explicit Output(int descriptor);

  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // Appends; what has gathered is written when it is much. Throws as flush() does.
  void write(std::string_view text);
  void line(std::string_view text);

  // Writes all that was appended. Throws OutputError or OutputInterrupted; what could not be
  // written is then dropped.
  void flush();

  // flush(), and for a file also waits until it survives power loss.
  void sync();

  // Makes writing stop with OutputInterrupted once this descriptor is readable. -1: never.
  void interruptBy(int descriptor) { m_interrupt = descriptor; }

  int descriptor() const { return m_descriptor; }
  bool isTerminal() const { return m_terminal; }
  // Colours are wanted: by a terminal or CLICOLOR_FORCE, and not refused by NO_COLOR.
  bool isColoured() const { return m_coloured; }
  // Columns of the terminal; otherwise of COLUMNS, or 80.
  std::size_t columns() const { return m_columns; }

 private:
  void writeSome(std::string_view& rest);
  void waitWritable();

  int m_descriptor;
  int m_interrupt = -1;
  bool m_terminal;
  bool m_coloured;
  bool m_file;
  std::size_t m_columns;
  std::string m_buffer;
};

// The process's standard output.
Output& standardOutput();

// Whether standard error is a terminal, for progress that nobody keeps.
bool isErrorTerminal();

// "eventctl: message", on standard error.
void complain(std::string_view message);

}  // namespace EventApps

#endif
