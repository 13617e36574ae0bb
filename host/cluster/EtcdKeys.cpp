#include "host/cluster/EtcdKeys.h"

#include <algorithm>
#include <charconv>

namespace EventSystemHost {
namespace {

constexpr std::size_t kLongestName = 128;
constexpr std::size_t kIdDigits = 20;
constexpr std::size_t kDsidDigits = 10;
constexpr std::string_view kNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";

std::string paddedTo(std::size_t width, unsigned long number) {
  const std::string digits = std::to_string(number);
  return std::string(width - digits.size(), '0') + digits;
}

std::string prefixOf(const std::string& queue) {
  return "/eventsystem/" + queue + "/";
}

}  // namespace

std::string nameFault(std::string_view kind, std::string_view name) {
  const std::string subject = "the " + std::string(kind) + " name ";
  if (name.empty()) return subject + "is empty";
  if (name.size() > kLongestName) {
    return subject + "has " + std::to_string(name.size()) + " characters, more than " +
           std::to_string(kLongestName);
  }
  const auto bad = name.find_first_not_of(kNameCharacters);
  if (bad == std::string_view::npos) return "";
  return subject + "has a character that is not a letter, digit, '.', '_' or '-' at position " +
         std::to_string(bad + 1);
}

EtcdKeys::EtcdKeys(const std::string& queue, unsigned int dsid)
    : m_prefix(prefixOf(queue) + paddedTo(kDsidDigits, dsid) + "/") {}

std::string EtcdKeys::event(unsigned long id) const {
  return m_prefix + "e/" + padded(id);
}

std::string EtcdKeys::sequence() const {
  return m_prefix + "seq";
}

std::string EtcdKeys::lastToken(const std::string& producer) const {
  return m_prefix + "last/" + producer;
}

std::string EtcdKeys::copied(const std::string& member, unsigned long id) const {
  return m_prefix + "copied/" + member + "/" + padded(id);
}

std::string memberKey(const std::string& queue, const std::string& member) {
  return prefixOf(queue) + "members/" + member;
}

std::string successor(const std::string& key) {
  return key + '\0';
}

std::string behindPrefix(const std::string& prefix) {
  std::string key = prefix;
  ++key.back();
  return key;
}

std::string padded(unsigned long number) {
  return paddedTo(kIdDigits, number);
}

std::optional<unsigned long> parsePadded(std::string_view text) {
  unsigned long number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (text.size() != kIdDigits || failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<unsigned long> idOfKey(std::string_view key) {
  if (key.size() <= kIdDigits || key[key.size() - kIdDigits - 1] != '/') return std::nullopt;
  return parsePadded(key.substr(key.size() - kIdDigits));
}

std::optional<unsigned int> dsidOfKey(const std::string& queue, std::string_view key) {
  const std::string prefix = prefixOf(queue);
  if (!key.starts_with(prefix) || key.size() <= prefix.size() + kDsidDigits) return std::nullopt;
  const std::string_view digits = key.substr(prefix.size(), kDsidDigits);
  unsigned int dsid = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, failure] = std::from_chars(digits.data(), end, dsid);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return dsid;
}

std::string eventValue(const std::string& member, const std::string& text) {
  return member + '\n' + text;
}

std::optional<EventValue> parseEventValue(std::string_view value) {
  const auto end = value.find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  return EventValue{std::string(value.substr(0, end)), std::string(value.substr(end + 1))};
}

std::string tokenValue(const TokenValue& value) {
  return padded(value.token) + ' ' + padded(value.id);
}

std::optional<TokenValue> parseTokenValue(std::string_view value) {
  if (value.size() != 2 * kIdDigits + 1) return std::nullopt;
  const auto token = parsePadded(value.substr(0, kIdDigits));
  const auto id = parsePadded(value.substr(kIdDigits + 1));
  if (!token || !id) return std::nullopt;
  return TokenValue{*token, *id};
}

std::string withCopy(const std::string& marker, const std::string& hash, unsigned long id) {
  return marker + hash + ' ' + padded(id) + '\n';
}

std::optional<unsigned long> findCopy(std::string_view marker, std::string_view hash) {
  while (!marker.empty()) {
    const std::string_view line = marker.substr(0, marker.find('\n'));
    if (line.size() == hash.size() + 1 + kIdDigits && line.starts_with(hash)) {
      return parsePadded(line.substr(hash.size() + 1));
    }
    marker.remove_prefix(std::min(marker.size(), line.size() + 1));
  }
  return std::nullopt;
}

}  // namespace EventSystemHost
