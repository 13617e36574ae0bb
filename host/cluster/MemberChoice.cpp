#include "host/cluster/MemberChoice.h"

#include <algorithm>

namespace EventSystemHost {

std::size_t MemberChoice::next() {
  const std::lock_guard lock(m_mutex);
  for (std::size_t passed = 0; passed < m_avoided.size(); ++passed) {
    advance();
    if (!m_avoided[m_last]) return m_last;
  }
  advance();
  return m_last;
}

void MemberChoice::advance() {
  m_last = m_last + 1 < m_avoided.size() ? m_last + 1 : 0;
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
