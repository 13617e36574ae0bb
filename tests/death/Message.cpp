#include "tests/death/Message.h"

#include <array>
#include <climits>
#include <cstring>
#include <stdexcept>

namespace EventSystemTest {
namespace {

struct Header {
  std::uint64_t number;
  std::uint64_t id;
  std::int64_t result;
  std::uint32_t queue;
  std::uint32_t textSize;
  std::uint64_t kind;
};

}  // namespace

void send(int output, const Message& message) {
  std::array<char, PIPE_BUF> bytes;
  const std::size_t size = sizeof(Header) + message.text.size();
  if (size > bytes.size()) throw std::length_error("a message that a pipe would cut");
  const Header header = {message.number,
                         message.id,
                         message.result,
                         message.queue,
                         static_cast<std::uint32_t>(message.text.size()),
                         static_cast<std::uint64_t>(message.kind)};
  memcpy(bytes.data(), &header, sizeof header);
  memcpy(bytes.data() + sizeof header, message.text.data(), message.text.size());
  tellParent(output, bytes.data(), size);
}

std::optional<Message> MessageReader::next() {
  Header header{};
  for (;;) {
    const std::size_t there = m_bytes.size() - m_used;
    if (there >= sizeof header) {
      memcpy(&header, m_bytes.data() + m_used, sizeof header);
      if (there >= sizeof header + header.textSize) break;
    }
    if (!readMore()) return std::nullopt;
  }
  Message message;
  message.kind = static_cast<Message::Kind>(header.kind);
  message.queue = header.queue;
  message.number = header.number;
  message.id = header.id;
  message.result = header.result;
  message.text.assign(m_bytes.data() + m_used + sizeof header, header.textSize);
  m_used += sizeof header + header.textSize;
  return message;
}

bool MessageReader::readMore() {
  m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(m_used));
  m_used = 0;
  std::array<char, 65536> more;
  const std::size_t got = m_process.read(more.data(), more.size());
  m_bytes.insert(m_bytes.end(), more.data(), more.data() + got);
  return got > 0;
}

}  // namespace EventSystemTest
