#include "apps/common/Output.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "apps/common/Display.h"
#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

constexpr std::size_t kBufferBytes = 65536;
constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kLeastColumns = 40;

std::size_t columnsOf(int descriptor) {
  winsize size{};
  if (::isatty(descriptor) == 1 && ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return size.ws_col < kLeastColumns ? kLeastColumns : size.ws_col;
  }
  const char* const text = std::getenv("COLUMNS");
  const auto columns = parseNumber<unsigned short>(text == nullptr ? "" : text);
  return columns && *columns >= kLeastColumns ? *columns : kUsualColumns;
}

// A caller that shows this output on a terminal asks for colours with CLICOLOR_FORCE.
bool wantsColour(bool terminal) {
  const char* const refused = std::getenv("NO_COLOR");
  if (refused != nullptr && *refused != '\0') return false;
  return terminal || std::getenv("CLICOLOR_FORCE") != nullptr;
}

bool isFile(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

[[noreturn]] void fail(int error) {
  throw OutputError(std::string("cannot write to standard output: ") + std::strerror(error),
                    error == EPIPE);
}

}  // namespace

OutputError::OutputError(const std::string& message, bool closedPipe)
    : std::runtime_error(message), m_closedPipe(closedPipe) {}

OutputError readerHasGone() {
  return {"the reader of standard output has gone", false};
}

OutputInterrupted::OutputInterrupted() : std::runtime_error("interrupted while writing") {}

Output::Output(int descriptor)
    : m_descriptor(descriptor),
      m_terminal(::isatty(descriptor) == 1),
      m_coloured(wantsColour(m_terminal)),
      m_file(isFile(descriptor)),
      m_columns(columnsOf(descriptor)) {}

void Output::write(std::string_view text) {
  m_buffer += text;
  if (m_buffer.size() >= kBufferBytes) flush();
}

void Output::line(std::string_view text) {
  m_buffer += text;
  write("\n");
}

void Output::flush() {
  const std::string pending = std::exchange(m_buffer, {});
  std::string_view rest = pending;
  while (!rest.empty()) writeSome(rest);
}

void Output::sync() {
  flush();
  if (m_file && ::fdatasync(m_descriptor) != 0) fail(errno);
}

// With an interrupt, no more than a pipe takes without blocking once it is writable.
void Output::writeSome(std::string_view& rest) {
  std::size_t bytes = rest.size();
  if (m_interrupt >= 0) {
    waitWritable();
    if (bytes > PIPE_BUF) bytes = PIPE_BUF;
  }
  const ssize_t written = ::write(m_descriptor, rest.data(), bytes);
  if (written >= 0) {
    rest.remove_prefix(static_cast<std::size_t>(written));
  } else if (errno == EAGAIN) {
    waitWritable();
  } else if (errno != EINTR) {
    fail(errno);
  }
}

void Output::waitWritable() {
  std::array<pollfd, 2> waits = {{{.fd = m_descriptor, .events = POLLOUT, .revents = 0},
                                  {.fd = m_interrupt, .events = POLLIN, .revents = 0}}};
  while (::poll(waits.data(), waits.size(), -1) < 0) {
    if (errno != EINTR) fail(errno);
  }
  if (waits[0].revents == 0) throw OutputInterrupted();
}

Output& standardOutput() {
  static Output output(STDOUT_FILENO);
  return output;
}

bool isErrorTerminal() {
  return ::isatty(STDERR_FILENO) == 1;
}

void complain(std::string_view message) {
  std::string text = "eventctl: ";
  text += displayText(message);
  text += '\n';
  // Nothing is left to tell of a standard error that cannot be written.
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace EventApps
