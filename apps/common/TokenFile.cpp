#include "apps/common/TokenFile.h"

#include <fcntl.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <limits>
#include <map>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"
#include "apps/common/Sha256.h"
#include "host/Host.h"
#include "host/config/EntryReader.h"
#include "host/config/IniFile.h"
#include "host/files/FileDescriptor.h"
#include "host/files/PrivateFiles.h"

namespace EventApps {
namespace {

using EventSystemHost::EntryReader;
using EventSystemHost::FileDescriptor;
using EventSystemHost::IniFile;
using EventSystemHost::NotAllowed;

constexpr const char* kHeading =
    "# Who may use eventd. Made by \"eventctl token\"; the tokens themselves are kept nowhere.\n";
constexpr std::string_view kPrefix = "evt_";
constexpr std::size_t kRandomBytes = 32;
constexpr std::size_t kHexDigits = 64;
constexpr std::size_t kLongestName = 64;
constexpr std::string_view kNameCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";

bool isName(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName &&
         name.find_first_not_of(kNameCharacters) == std::string_view::npos;
}

// base64url without padding (RFC 4648).
std::string base64Url(const std::array<unsigned char, kRandomBytes>& bytes) {
  std::array<unsigned char, 4 * ((kRandomBytes + 2) / 3) + 1> encoded{};
  const int size = EVP_EncodeBlock(encoded.data(), bytes.data(), static_cast<int>(bytes.size()));
  std::string text(reinterpret_cast<const char*>(encoded.data()), static_cast<std::size_t>(size));
  std::replace(text.begin(), text.end(), '+', '-');
  std::replace(text.begin(), text.end(), '/', '_');
  text.erase(text.find_last_not_of('=') + 1);
  return text;
}

std::string randomToken() {
  std::array<unsigned char, kRandomBytes> bytes{};
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
    throw Failure("a token cannot be made: the system has no random numbers");
  }
  return std::string(kPrefix) + base64Url(bytes);
}

EntryReader hashEntry(std::string& target) {
  return [&target](const std::string& value) {
    if (value.size() != kHexDigits ||
        value.find_first_not_of("0123456789abcdef") != std::string::npos) {
      throw NotAllowed{"a SHA-256 in 64 lower-case hex digits"};
    }
    target = value;
  };
}

void readEntry(Token& token, const IniFile::Entry& entry) {
  const std::map<std::string, EntryReader> readers = {
      {"role", EventSystemHost::choiceEntry(token.role, kRoles)},
      {"sha256", hashEntry(token.sha256)},
      {"created", EventSystemHost::numberEntry(token.created, 0UL,
                                               std::numeric_limits<unsigned long>::max())}};
  const auto reader = readers.find(entry.name);
  if (reader == readers.end()) throw NotAllowed{"one of the entries role, sha256 and created"};
  reader->second(entry.value);
}

void requireComplete(const std::string& file, const IniFile& ini, const Token& token) {
  for (const char* const name : {"role", "sha256"}) {
    if (ini.find(token.name, name) != nullptr) continue;
    throw Failure(file + ": [" + token.name + "] has no entry " + name +
                  "; remove the section and make a new token with: eventctl token add");
  }
}

std::vector<Token> tokensOf(const std::string& file, const IniFile& ini) {
  std::vector<Token> tokens;
  for (const IniFile::Entry& entry : ini.entries()) {
    const bool isNew = tokens.empty() || tokens.back().name != entry.section;
    if (isNew) tokens.push_back({.name = entry.section, .role = {}, .sha256 = {}, .created = 0});
    try {
      if (!isName(entry.section)) {
        throw NotAllowed{"a section named by 1 to 64 letters, digits, '.', '_' and '-'"};
      }
      readEntry(tokens.back(), entry);
    } catch (const NotAllowed& problem) {
      throw Failure(EventSystemHost::describe(file, entry) + "allowed is " + problem.allowed);
    }
  }
  for (const Token& token : tokens) requireComplete(file, ini, token);
  return tokens;
}

// Whoever can write the file can make himself a token.
void requirePrivate(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || (status.st_mode & (S_IWGRP | S_IWOTH)) == 0) return;
  throw Failure(file.string() +
                ": others than its owner may write it; take that right away with: " + "chmod 600 " +
                file.string());
}

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

[[noreturn]] void fail(const std::filesystem::path& file, const char* what) {
  throw Failure(file.string() + ": " + what + ": " + std::strerror(errno));
}

// What root writes must stay readable for the daemon, which is another user.
void giveToOwnerOfDirectory(const std::filesystem::path& file) {
  if (::geteuid() != 0) return;
  struct stat status {};
  if (::stat(directoryOf(file).c_str(), &status) != 0 ||
      ::chown(file.c_str(), status.st_uid, status.st_gid) != 0) {
    fail(file, "cannot be given to the owner of its directory");
  }
}

}  // namespace

TokenFile TokenFile::load(const std::filesystem::path& file) {
  TokenFile loaded;
  try {
    requirePrivate(file);
    loaded.m_tokens = tokensOf(file.string(), IniFile::load(file));
  } catch (const EventSystemHost::HostError& problem) {
    throw Failure(problem.what());
  }
  return loaded;
}

void TokenFile::change(const std::filesystem::path& file,
                       const std::function<void(TokenFile&)>& edit) {
  const std::filesystem::path directory = directoryOf(file);
  try {
    EventSystemHost::makePrivateDirectories(directory);
  } catch (const EventSystemHost::HostError& problem) {
    throw Failure(problem.what());
  }
  // The file itself is replaced, so the lock is on its directory.
  const FileDescriptor lock(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock.valid()) fail(directory, "the directory cannot be opened");
  while (::flock(lock.get(), LOCK_EX) != 0) {
    if (errno != EINTR) fail(directory, "the directory cannot be locked");
  }
  TokenFile tokens = load(file);
  edit(tokens);
  tokens.save(file);
}

const Token* TokenFile::find(std::string_view token) const {
  const std::string wanted = sha256Of(token);
  const Token* found = nullptr;
  for (const Token& candidate : m_tokens) {
    const bool same = candidate.sha256.size() == wanted.size() &&
                      CRYPTO_memcmp(candidate.sha256.data(), wanted.data(), wanted.size()) == 0;
    found = same ? &candidate : found;
  }
  return found;
}

std::string TokenFile::add(const std::string& name, Role role) {
  if (!isName(name)) {
    throw Failure(
        "'" + displayText(name) +
        "' is no name for a token; allowed are 1 to 64 letters, digits, '.', '_' and '-'");
  }
  if (std::any_of(m_tokens.begin(), m_tokens.end(),
                  [&](const Token& token) { return token.name == name; })) {
    throw Failure("there is a token named " + name +
                  " already; remove it first, or take another name");
  }
  std::string token = randomToken();
  m_tokens.push_back({name, role, sha256Of(token), static_cast<unsigned long>(std::time(nullptr))});
  return token;
}

bool TokenFile::remove(std::string_view name) {
  return std::erase_if(m_tokens, [&](const Token& token) { return token.name == name; }) > 0;
}

void TokenFile::save(const std::filesystem::path& file) const {
  std::string text = kHeading;
  for (const Token& token : m_tokens) {
    text.append("\n[").append(token.name).append("]\nrole = ").append(nameOf(token.role));
    text.append("\nsha256 = ").append(token.sha256);
    text.append("\ncreated = ").append(std::to_string(token.created)).append("\n");
  }
  try {
    EventSystemHost::writePrivateFile(file, text);
  } catch (const EventSystemHost::HostError& problem) {
    throw Failure(problem.what());
  }
  giveToOwnerOfDirectory(file);
}

}  // namespace EventApps
