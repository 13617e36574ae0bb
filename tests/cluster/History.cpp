#include "tests/cluster/History.h"

#include <algorithm>

namespace EventSystemTest {
void History::handedOut(unsigned long highest) {
  const std::lock_guard lock(m_mutex);
  m_records.handedOut = std::max(m_records.handedOut, highest);
}

void History::gone(const std::string& text) {
  const std::lock_guard lock(m_mutex);
  m_records.gone.insert(text);
}

void History::wrote(const std::string& text, unsigned long id, Time begin, Time end) {
  const std::lock_guard lock(m_mutex);
  m_records.writes.push_back({text, id, begin, end});
}

void History::failed(const std::string& text, Time begin) {
  const std::lock_guard lock(m_mutex);
  m_records.failed.push_back({text, begin});
}

void History::copied(const std::string& member, const std::string& text, Time begin) {
  const std::lock_guard lock(m_mutex);
  m_records.copies.push_back({member, text, begin});
}

void History::read(unsigned long afterId, unsigned long id, const std::string& text, Time begin,
                   Time end) {
  const std::lock_guard lock(m_mutex);
  m_records.reads.push_back({afterId, id, text, begin, end});
}

void History::deleting(unsigned long id, Time begin) {
  const std::lock_guard lock(m_mutex);
  m_records.deleting.push_back({id, begin});
}

void History::deleted(unsigned long id, Time end) {
  const std::lock_guard lock(m_mutex);
  m_records.deleted.push_back({id, end});
}

void History::left(unsigned long id, const std::string& text) {
  const std::lock_guard lock(m_mutex);
  m_records.left.push_back({id, text});
}

History::Verdict History::check() const {
  const std::lock_guard lock(m_mutex);
  return checkHistory(m_records);
}

}  // namespace EventSystemTest
