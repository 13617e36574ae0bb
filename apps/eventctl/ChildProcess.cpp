#include "apps/eventctl/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "apps/common/Failure.h"

namespace EventApps {
namespace {

using EtcdNodes::Descriptor;

struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
      throw Failure(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
  }

  Descriptor reader;
  Descriptor writer;
};

// The end that stays here; what the child has is blocking.
Descriptor withoutWaiting(Descriptor end) {
  ::fcntl(end.get(), F_SETFL, O_NONBLOCK);
  return end;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, const ChildOptions& options) {
  std::vector<std::string> command = {std::filesystem::read_symlink("/proc/self/exe").string()};
  command.insert(command.end(), arguments.begin(), arguments.end());
  Pipe input;
  Pipe output;
  EtcdNodes::Surroundings surroundings;
  surroundings.directory = options.directory;
  surroundings.environment = options.environment;
  if (options.takesInput) surroundings.input = input.reader.get();
  surroundings.output = output.writer.get();
  try {
    m_process = EtcdNodes::Subprocess(command, surroundings);
  } catch (const std::runtime_error& error) {
    throw Failure("cannot start " + command[0] + ": " + error.what());
  }
  m_output = withoutWaiting(std::move(output.reader));
  if (options.takesInput) m_input = withoutWaiting(std::move(input.writer));
}

bool ChildProcess::readLines(const TakeLine& take) {
  std::array<char, 16384> piece;
  ssize_t bytes = 0;
  while ((bytes = ::read(m_output.get(), piece.data(), piece.size())) > 0) {
    m_pending.append(piece.data(), static_cast<std::size_t>(bytes));
    std::size_t start = 0;
    for (std::size_t end = m_pending.find('\n'); end != std::string::npos;
         end = m_pending.find('\n', start)) {
      take(m_pending.substr(start, end - start));
      start = end + 1;
    }
    m_pending.erase(0, start);
  }
  if (bytes < 0 && (errno == EAGAIN || errno == EINTR)) return true;
  if (!m_pending.empty()) take(std::exchange(m_pending, {}));
  return false;
}

std::size_t ChildProcess::write(std::string_view text) {
  const ssize_t written = ::write(m_input.get(), text.data(), text.size());
  if (written >= 0) return static_cast<std::size_t>(written);
  if (errno != EAGAIN && errno != EINTR) closeInput();
  return 0;
}

int ChildProcess::wait() {
  const int status = m_process.wait();
  if (status < 0) throw Failure("eventctl ended by signal " + std::to_string(-status));
  return status;
}

int runSelf(const std::vector<std::string>& arguments, const ChildOptions& options,
            const ChildProcess::TakeLine& take, int stop) {
  ChildProcess child(arguments, options);
  do {
    std::array<pollfd, 2> waits = {{{.fd = child.output(), .events = POLLIN, .revents = 0},
                                    {.fd = stop, .events = POLLIN, .revents = 0}}};
    ::poll(waits.data(), waits.size(), -1);
    if (waits[1].revents != 0) throw Failure("interrupted");
  } while (child.readLines(take));
  return child.wait();
}

}  // namespace EventApps
