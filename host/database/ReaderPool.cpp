#include "host/database/ReaderPool.h"

#include <utility>

#include "host/database/DatabaseFile.h"

namespace EventSystemHost {

namespace {
constexpr std::size_t kMaxIdle = 4;
}

ReaderPool::ReaderPool(std::filesystem::path file) : m_file(std::move(file)) {
  m_idle.reserve(kMaxIdle);  // a walk gives back when it ends, and must not fail then
}

Connection ReaderPool::take() {
  if (m_idle.empty()) return openReader(m_file);
  Connection connection = std::move(m_idle.back());
  m_idle.pop_back();
  return connection;
}

void ReaderPool::giveBack(Connection connection) {
  if (m_idle.size() < kMaxIdle) m_idle.push_back(std::move(connection));
}

}  // namespace EventSystemHost
