#include "apps/eventctl/NewFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "apps/common/Failure.h"
#include "host/files/Replaceable.h"

namespace EventApps {
namespace {

constexpr std::size_t kBufferBytes = 65536;

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

bool syncDirectory(const std::filesystem::path& directory) {
  const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool synced = ::fsync(descriptor) == 0 || errno == EINVAL;
  ::close(descriptor);
  return synced;
}

}  // namespace

NewFile::NewFile(std::filesystem::path file, bool overwrite)
    : m_file(std::move(file)),
      m_overwrite(overwrite),
      m_temporary(m_file.string() + ".XXXXXX"),
      m_descriptor(::mkostemp(m_temporary.data(), O_CLOEXEC)) {
  if (m_descriptor < 0) fail("cannot be created");
  std::error_code error;
  const bool taken = std::filesystem::exists(std::filesystem::symlink_status(m_file, error));
  const std::string problem = EventSystemHost::whyNotReplaceable(m_file);
  if (!taken || (m_overwrite && problem.empty())) return;
  ::close(m_descriptor);
  ::unlink(m_temporary.c_str());
  if (m_overwrite) throw Failure(problem);
  errno = EEXIST;
  fail("cannot be created");
}

NewFile::~NewFile() {
  if (m_descriptor >= 0) ::close(m_descriptor);
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

void NewFile::fail(const char* what) const {
  const bool taken = errno == EEXIST;
  throw Failure(m_file.string() + ": " + what + ": " + std::strerror(errno) +
                (taken ? "; --force replaces it" : ""));
}

void NewFile::line(std::string_view text) {
  m_buffer += text;
  m_buffer += '\n';
  if (m_buffer.size() >= kBufferBytes) flush();
}

void NewFile::flush() {
  std::string_view rest = m_buffer;
  while (!rest.empty()) {
    const ssize_t written = ::write(m_descriptor, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail("cannot be written");
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  m_buffer.clear();
}

void NewFile::publish() {
  flush();
  if (::fsync(m_descriptor) != 0) fail("cannot be written");
  if (::close(std::exchange(m_descriptor, -1)) != 0) fail("cannot be written");
  giveName();
  m_temporary.clear();
  if (!syncDirectory(directoryOf(m_file))) fail("its directory cannot be synced");
}

// A name that somebody took meanwhile stays his.
void NewFile::giveName() const {
  if (m_overwrite) {
    if (::rename(m_temporary.c_str(), m_file.c_str()) != 0) fail("cannot be created");
    return;
  }
  if (::link(m_temporary.c_str(), m_file.c_str()) != 0) fail("cannot be created");
  ::unlink(m_temporary.c_str());
}

}  // namespace EventApps
