#include "apps/common/LineReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "apps/common/Failure.h"

namespace EventApps {
namespace {

constexpr std::size_t kPieceBytes = 65536;

}  // namespace

LineReader::LineReader(const std::string& name, std::size_t mostBytes)
    : m_name(name == "-" ? "standard input" : name),
      m_mostBytes(mostBytes),
      m_descriptor(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)),
      m_owned(name != "-") {
  if (m_descriptor < 0) {
    throw Failure("cannot open " + m_name + ": " + std::strerror(errno));
  }
  struct stat status {};
  if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    m_bytesInAll = static_cast<std::size_t>(status.st_size);
  }
}

LineReader::~LineReader() {
  if (m_owned) ::close(m_descriptor);
}

LineReader::Result LineReader::next(std::string& line) {
  line.clear();
  bool any = false;
  bool tooLong = false;
  while (m_position < m_buffer.size() || fill()) {
    any = true;
    const std::size_t end = m_buffer.find('\n', m_position);
    const std::size_t stop = end == std::string::npos ? m_buffer.size() : end;
    tooLong = tooLong || line.size() + (stop - m_position) > m_mostBytes;
    if (!tooLong) line.append(m_buffer, m_position, stop - m_position);
    m_position = end == std::string::npos ? stop : end + 1;
    if (end != std::string::npos) break;
  }
  if (!any) return Result::kEnd;
  if (tooLong) return Result::kTooLong;
  if (line.ends_with('\r')) line.pop_back();
  return Result::kLine;
}

bool LineReader::fill() {
  m_buffer.resize(kPieceBytes);
  m_position = 0;
  ssize_t bytes = 0;
  do {
    bytes = ::read(m_descriptor, m_buffer.data(), m_buffer.size());
  } while (bytes < 0 && errno == EINTR);
  if (bytes < 0) {
    m_buffer.clear();
    throw Failure("cannot read " + m_name + ": " + std::strerror(errno));
  }
  m_buffer.resize(static_cast<std::size_t>(bytes));
  m_bytesRead += m_buffer.size();
  return bytes > 0;
}

}  // namespace EventApps
