#include "apps/eventd/access/TokenStore.h"

#include <sys/stat.h>

#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "apps/common/Failure.h"

namespace EventApps {

TokenStore::TokenStore(std::filesystem::path file)
    : m_file(std::move(file)),
      m_stamp(stamp()),
      m_tokens(std::make_shared<const TokenFile>(TokenFile::load(m_file))) {}

std::shared_ptr<const TokenFile> TokenStore::tokens() const {
  const std::lock_guard lock(m_mutex);
  return m_tokens;
}

std::optional<Token> TokenStore::copyOf(const TokenFile& tokens, std::string_view token) {
  const Token* const found = tokens.find(token);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

void TokenStore::reloadIfChanged() {
  {
    const std::lock_guard lock(m_mutex);
    if (m_stamp == stamp()) return;
  }
  reload();
}

// The stamp is taken first: a file that changes while it is read is read again.
void TokenStore::reload() {
  const Stamp read = stamp();
  try {
    auto tokens = std::make_shared<const TokenFile>(TokenFile::load(m_file));
    InfoA(0, "eventd: %zu tokens are in force, from %s", tokens->tokens().size(), m_file.c_str());
    const std::lock_guard lock(m_mutex);
    m_tokens = std::move(tokens);
    m_stamp = read;
  } catch (const Failure& problem) {
    ErrorA(4, "eventd: the tokens stay as they were: %s", problem.what());
    const std::lock_guard lock(m_mutex);
    m_stamp = read;
  }
}

TokenStore::Stamp TokenStore::stamp() const {
  struct stat status {};
  if (::stat(m_file.c_str(), &status) != 0) return {};
  return {status.st_dev,         status.st_ino,          status.st_size,
          status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
          status.st_ctim.tv_nsec};
}

}  // namespace EventApps
