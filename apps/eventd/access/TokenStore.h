// The tokens in force: the file's, taken anew when it changes.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_ACCESS_TOKENSTORE_H
#define EVENTSYSTEM_APPS_EVENTD_ACCESS_TOKENSTORE_H

#include <sys/types.h>

#include <ctime>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <tuple>

#include "apps/common/TokenFile.h"

namespace EventApps {

class TokenStore {
 public:
  // Throws Failure for a file that is there and cannot be used.
  explicit TokenStore(std::filesystem::path file);

  std::optional<Token> find(std::string_view token) const { return copyOf(*tokens(), token); }

  std::shared_ptr<const TokenFile> tokens() const;

  // Loads the file when it is another than the one loaded last. One that cannot be used is logged,
  // and the tokens stay as they were.
  void reloadIfChanged();
  void reload();

 private:
  // What tells one state of the file from the next: device, inode, size and both times.
  using Stamp = std::tuple<dev_t, ino_t, off_t, long, long, long, long>;

  static std::optional<Token> copyOf(const TokenFile& tokens, std::string_view token);
  Stamp stamp() const;

  const std::filesystem::path m_file;
  mutable std::mutex m_mutex;
  Stamp m_stamp;
  std::shared_ptr<const TokenFile> m_tokens;
};

}  // namespace EventApps

#endif
