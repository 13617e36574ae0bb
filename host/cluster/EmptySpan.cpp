#include "host/cluster/EmptySpan.h"

#include <algorithm>
#include <climits>

namespace EventSystemHost {

unsigned long EmptySpan::skip(unsigned long afterId) const {
  const bool starts = known() && m_last != ULONG_MAX && m_first - 1 <= afterId && afterId < m_last;
  return starts ? m_last : afterId;
}

bool EmptySpan::holds(std::int64_t birth, unsigned long highest) const {
  return !known() || (birth == m_birth && highest >= m_last);
}

void EmptySpan::learn(std::int64_t birth, unsigned long first, unsigned long last) {
  if (first == 0 || first > last) return;
  const bool touches = known() && birth == m_birth && first - 1 <= m_last && m_first - 1 <= last;
  m_first = touches ? std::min(first, m_first) : first;
  m_last = touches ? std::max(last, m_last) : last;
  m_birth = birth;
}

void EmptySpan::emptied(unsigned long id) {
  if (!known() || id == 0) return;
  if (id - 1 == m_last) m_last = id;
}

}  // namespace EventSystemHost
