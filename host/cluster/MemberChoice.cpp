#include "host/cluster/MemberChoice.h"

#include <algorithm>

namespace EventSystemHost {

std::size_t MemberChoice::next() {
  const std::lock_guard lock(m_mutex);
  const std::size_t count = m_avoided.size();
  for (std::size_t step = 1; step <= count; ++step) {
    const std::size_t member = (m_last + step) % count;
    if (!m_avoided[member]) return m_last = member;
  }
  return m_last = (m_last + 1) % count;
}

void MemberChoice::avoid(std::size_t member) {
  const std::lock_guard lock(m_mutex);
  m_avoided[member] = true;
}

void MemberChoice::forgive(std::size_t member) {
  const std::lock_guard lock(m_mutex);
  m_avoided[member] = false;
}

std::vector<std::size_t> MemberChoice::avoided() const {
  const std::lock_guard lock(m_mutex);
  std::vector<std::size_t> members;
  for (std::size_t i = 0; i < m_avoided.size(); ++i) {
    if (m_avoided[i]) members.push_back(i);
  }
  return members;
}

bool MemberChoice::allAvoided() const {
  const std::lock_guard lock(m_mutex);
  return std::find(m_avoided.begin(), m_avoided.end(), false) == m_avoided.end();
}

}  // namespace EventSystemHost
