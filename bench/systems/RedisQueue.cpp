// Redis Streams, through a Unix socket.

#include <hiredis/hiredis.h>

#include <array>
#include <charconv>
#include <string_view>

#include "bench/systems/ServerProcess.h"
#include "bench/systems/Systems.h"

namespace EventSystemBench {
namespace {

// A stream's id is MILLISECONDS-NUMBER; both fit one integer.
constexpr int kNumberBits = 20;

std::uint64_t packId(std::string_view id) {
  const std::size_t dash = id.find('-');
  std::uint64_t milliseconds = 0;
  std::uint64_t number = 0;
  std::from_chars(id.data(), id.data() + dash, milliseconds);
  std::from_chars(id.data() + dash + 1, id.data() + id.size(), number);
  if (dash == std::string_view::npos || number >= (1u << kNumberBits)) {
    throw SystemError("Redis: unexpected id " + std::string(id));
  }
  return milliseconds << kNumberBits | number;
}

std::string unpackId(std::uint64_t id) {
  return std::to_string(id >> kNumberBits) + "-" + std::to_string(id & ((1u << kNumberBits) - 1u));
}

using Context = std::unique_ptr<redisContext, decltype(&redisFree)>;
using Reply = std::unique_ptr<redisReply, decltype(&freeReplyObject)>;

Context connectTo(const std::filesystem::path& socket) {
  return {redisConnectUnix(socket.c_str()), redisFree};
}

class RedisQueue : public Queue {
 public:
  explicit RedisQueue(const std::filesystem::path& socket) : m_context(connectTo(socket)) {
    if (m_context == nullptr || m_context->err != 0) throw SystemError("Redis: cannot connect");
  }

  std::uint64_t produce(const std::string& text) override {
    const Reply reply = call(std::array<std::string_view, 5>{"XADD", "events", "*", "e", text});
    expect(*reply, REDIS_REPLY_STRING);
    return packId({reply->str, reply->len});
  }

  std::optional<QueuedText> next(std::uint64_t after) override {
    const std::string start = "(" + unpackId(after);
    const Reply reply =
        call(std::array<std::string_view, 6>{"XRANGE", "events", start, "+", "COUNT", "1"});
    expect(*reply, REDIS_REPLY_ARRAY);
    if (reply->elements == 0) return std::nullopt;
    const redisReply& entry = *reply->element[0];
    const redisReply& id = *entry.element[0];
    const redisReply& text = *entry.element[1]->element[1];
    return QueuedText{packId({id.str, id.len}), {text.str, text.len}};
  }

  void remove(std::uint64_t id) override {
    const std::string name = unpackId(id);
    const Reply reply = call(std::array<std::string_view, 3>{"XDEL", "events", name});
    expect(*reply, REDIS_REPLY_INTEGER);
    if (reply->integer != 1) throw SystemError("Redis: nothing deleted");
  }

 private:
  template <std::size_t count>
  Reply call(const std::array<std::string_view, count>& words) {
    std::array<const char*, count> texts{};
    std::array<std::size_t, count> sizes{};
    for (std::size_t i = 0; i < count; ++i) {
      texts[i] = words[i].data();
      sizes[i] = words[i].size();
    }
    void* const answer =
        redisCommandArgv(m_context.get(), static_cast<int>(count), texts.data(), sizes.data());
    if (answer == nullptr) throw SystemError(std::string("Redis: ") + m_context->errstr);
    return {static_cast<redisReply*>(answer), freeReplyObject};
  }

  static void expect(const redisReply& reply, int type) {
    if (reply.type == type) return;
    throw SystemError("Redis: " + (reply.type == REDIS_REPLY_ERROR
                                       ? std::string(reply.str, reply.len)
                                       : "unexpected reply of type " + std::to_string(reply.type)));
  }

  Context m_context;
};

class Redis : public System {
 public:
  Redis(const std::filesystem::path& directory, const std::string& appendFsync)
      : m_socket(directory / "socket"),
        m_server({{"redis-server", "--port", "0", "--unixsocket", m_socket, "--dir", directory,
                   "--save", "", "--appendonly", "yes", "--appendfsync", appendFsync},
                  directory,
                  std::nullopt}) {
    m_server.waitUntil([this] {
      const Context context = connectTo(m_socket);
      return context != nullptr && context->err == 0;
    });
  }

  std::unique_ptr<Queue> connect() override { return std::make_unique<RedisQueue>(m_socket); }

 private:
  std::filesystem::path m_socket;
  ServerProcess m_server;
};

SystemEntry entry(const std::string& appendFsync, Promise promise, const std::string& meaning) {
  return {"Redis Streams, " + appendFsync,
          promise,
          "appendonly yes, appendfsync " + appendFsync + meaning + "; no snapshots; Unix socket",
          "XADD",
          "XRANGE (ID + COUNT 1",
          "XDEL",
          [appendFsync](const std::filesystem::path& directory) {
            return std::make_unique<Redis>(directory, appendFsync);
          }};
}

}  // namespace

std::vector<SystemEntry> redisEntries() {
  return {entry("always", Promise::kDurable,
                ": a flush before the answers; commands that arrive together share it"),
          entry("everysec", Promise::kRelaxed, ": a flush every second")};
}

}  // namespace EventSystemBench
