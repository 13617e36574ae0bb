// The keys of one queue in etcd, and what their values look like:
//
//   /eventsystem/QUEUE/DSID/e/ID               MEMBER, a line feed, the event string
//   /eventsystem/QUEUE/DSID/seq                the highest id handed out
//   /eventsystem/QUEUE/DSID/last/PRODUCER      the last token of one producer process, a blank, and
//                                              the id that it got
//   /eventsystem/QUEUE/members/MEMBER          the identity of the member's home, a line feed, and
//                                              where it is
//   /eventsystem/QUEUE/DSID/copied/MEMBER/ID   a line per text that was copied under this id: its
//                                              hash, a blank, and the id that it got
//
// Numbers are decimal and of fixed width (ids and tokens 20 digits, DSID 10), so that the order of
// the keys is the order of the ids.
//
// Thread safety: plain values and pure functions.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ETCDKEYS_H
#define EVENTSYSTEM_HOST_CLUSTER_ETCDKEYS_H

#include <optional>
#include <string>
#include <string_view>

namespace EventSystemHost {

// Why a queue or member cannot be called so; empty when it can: 1 to 128 letters, digits, '.',
// '_' and '-'. `kind` is "queue" or "member".
std::string nameFault(std::string_view kind, std::string_view name);

class EtcdKeys {
 public:
  EtcdKeys(const std::string& queue, unsigned int dsid);

  std::string event(unsigned long id) const;
  std::string sequence() const;
  std::string lastToken(const std::string& producer) const;
  std::string copied(const std::string& member, unsigned long id) const;

  // What all keys of the queue begin with.
  const std::string& prefix() const { return m_prefix; }

 private:
  std::string m_prefix;
};

// The key that follows this one with nothing between them: makes an inclusive end of a range.
std::string successor(const std::string& key);

// The first key behind all that begin with `prefix`, which ends in a character below 0xff.
std::string behindPrefix(const std::string& prefix);

// Where a member of a queue is known: what home it is.
std::string memberKey(const std::string& queue, const std::string& member);

std::string padded(unsigned long number);

// Nothing when the text is not a number of fixed width.
std::optional<unsigned long> parsePadded(std::string_view text);

// The id at the end of a key.
std::optional<unsigned long> idOfKey(std::string_view key);

// The data selection of a key of this queue.
std::optional<unsigned int> dsidOfKey(const std::string& queue, std::string_view key);

std::string eventValue(const std::string& member, const std::string& text);

struct EventValue {
  std::string member;
  std::string text;
};
std::optional<EventValue> parseEventValue(std::string_view value);

struct TokenValue {
  unsigned long token;
  unsigned long id;
};
std::string tokenValue(const TokenValue& value);
std::optional<TokenValue> parseTokenValue(std::string_view value);

// A marker of copied texts with one more line, and the id that the text with this hash got.
std::string withCopy(const std::string& marker, const std::string& hash, unsigned long id);
std::optional<unsigned long> findCopy(std::string_view marker, std::string_view hash);

}  // namespace EventSystemHost

#endif
