// The file of the tokens that programs show to eventd. It keeps what tells a token again, not the
// token: whoever reads the file cannot use it.
//
// Thread safety: a loaded file is a plain value. change() keeps other callers of change() out, in
// this process and in others.

#ifndef EVENTSYSTEM_APPS_COMMON_TOKENFILE_H
#define EVENTSYSTEM_APPS_COMMON_TOKENFILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/common/Role.h"

namespace EventApps {

struct Token {
  std::string name;
  Role role = Role::kRead;
  std::string sha256;         // of the token, in lower-case hex digits
  unsigned long created = 0;  // seconds since 1970; 0: not known
};

class TokenFile {
 public:
  TokenFile() = default;

  // A file that does not exist holds no tokens. Throws Failure, naming file, section and entry, for
  // one that cannot be read, that others may write, or that is not as save() leaves it.
  static TokenFile load(const std::filesystem::path& file);

  // Loads the file, applies `edit` and saves the file, unless `edit` throws. Creates the directory
  // where it is missing. Throws Failure.
  static void change(const std::filesystem::path& file,
                     const std::function<void(TokenFile&)>& edit);

  // In the order of the file.
  const std::vector<Token>& tokens() const { return m_tokens; }

  // The entry of a token, or null. Takes as long for one that is there as for one that is not.
  const Token* find(std::string_view token) const;

  // Makes a token of 256 random bits, which is returned and is kept nowhere. Throws Failure when
  // the name is taken, or is not 1 to 64 letters, digits, '.', '_' and '-'.
  std::string add(const std::string& name, Role role);

  // False when there is no such token.
  bool remove(std::string_view name);

  // Replaces the file, readable by its owner only. After a crash it is the old file or the new one.
  // Written by root, it belongs to the owner of its directory. Throws Failure.
  void save(const std::filesystem::path& file) const;

 private:
  std::vector<Token> m_tokens;
};

}  // namespace EventApps

#endif
