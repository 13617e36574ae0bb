#include "apps/eventd/http/Outlet.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace EventApps::Http {
namespace {

constexpr const char* kLastChunk = "0\r\n\r\n";

void appendChunk(std::string& bytes, const std::string& chunk, bool framed) {
  if (!framed) {
    bytes += chunk;
    return;
  }
  std::array<char, 24> size{};
  std::snprintf(size.data(), size.size(), "%zx\r\n", chunk.size());
  bytes.append(size.data()).append(chunk).append("\r\n");
}

}  // namespace

bool Outlet::tell() {
  return !std::exchange(m_told, true);
}

bool Outlet::respond(Response&& response) {
  Callback dropped;  // outside the lock: it may hold whatever its maker put in
  const std::lock_guard lock(m_mutex);
  if (m_state != State::kWaiting) return false;
  m_state = State::kEnded;
  m_answered = true;
  m_output.head = std::move(response);
  m_output.ended = true;
  dropped.swap(m_callback);
  return tell();
}

bool Outlet::startStream(Response&& head) {
  const std::lock_guard lock(m_mutex);
  if (m_state != State::kWaiting) return false;
  const bool over = m_form.bodyless || m_closed;
  m_state = over ? State::kEnded : State::kStreaming;
  m_output.head = std::move(head);
  m_output.stream = true;
  m_output.ended = over;
  if (over && m_form.chunked && !m_form.bodyless) m_output.bytes = kLastChunk;
  return tell();
}

Outlet::Sent Outlet::send(const std::string& chunk) {
  const std::lock_guard lock(m_mutex);
  if (m_state != State::kStreaming) return {false, false};
  if (chunk.empty()) return {true, false};
  if (chunk.size() > m_form.backlog || m_unsent > m_form.backlog - chunk.size()) {
    m_state = State::kEnded;
    m_output.overrun = true;
    return {false, tell()};
  }
  const std::size_t before = m_output.bytes.size();
  appendChunk(m_output.bytes, chunk, m_form.chunked);
  m_unsent += m_output.bytes.size() - before;
  return {true, tell()};
}

bool Outlet::endStream() {
  const std::lock_guard lock(m_mutex);
  if (m_state != State::kStreaming) return false;
  m_state = State::kEnded;
  if (m_form.chunked) m_output.bytes += kLastChunk;
  m_output.ended = true;
  return tell();
}

bool Outlet::abandon() {
  if (endStream()) return true;
  const std::lock_guard lock(m_mutex);
  if (m_state != State::kWaiting) return false;
  m_state = State::kEnded;
  m_answered = true;
  m_output.abandoned = true;
  m_output.ended = true;
  return tell();
}

std::size_t Outlet::unsent() const {
  const std::lock_guard lock(m_mutex);
  return m_unsent;
}

Outlet::Callback Outlet::onClose(Callback&& callback) {
  const std::lock_guard lock(m_mutex);
  if (m_answered) return {};
  if (m_closed) return std::move(callback);
  m_callback.swap(callback);
  return {};
}

Outlet::Output Outlet::take() {
  const std::lock_guard lock(m_mutex);
  m_told = false;
  const Output state{{}, false, {}, m_output.ended, m_output.overrun, false};
  return std::exchange(m_output, state);
}

void Outlet::queued(std::size_t bytes) {
  const std::lock_guard lock(m_mutex);
  m_unsent += bytes;
}

void Outlet::sent(std::size_t bytes) {
  const std::lock_guard lock(m_mutex);
  m_unsent -= std::min(m_unsent, bytes);
}

Outlet::Callback Outlet::close() {
  if (m_answered) return {};
  m_closed = true;
  return std::exchange(m_callback, {});
}

Outlet::Callback Outlet::clientGone() {
  const std::lock_guard lock(m_mutex);
  return close();
}

Outlet::Callback Outlet::stop() {
  if (!endStream()) {
    const std::lock_guard lock(m_mutex);
    if (m_state == State::kWaiting) return close();
  }
  return {};
}

Outlet::Callback Outlet::end() {
  const std::lock_guard lock(m_mutex);
  m_state = State::kEnded;
  return close();
}

}  // namespace EventApps::Http
