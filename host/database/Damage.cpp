// What happens when the file is found damaged: the first finding is kept and nothing more is
// written. What cannot be read looks like what is not there, so a caller that goes on would hand
// out ids a second time, or take a queue for empty.

#include "EventSystem/platform/HostLog.h"
#include "host/database/Database.h"

namespace EventSystemHost {

void Database::noteDamage(int status, const char* table, const std::string& reason) {
  if (!saysDamage(status) || !m_damage.empty()) return;
  const std::string file = m_configuration.databaseFile.string();
  m_damage = file + ": is damaged" +
             (table == nullptr ? std::string() : std::string(", table ") + table) + ": " + reason +
             " (status " + std::to_string(status) + "); nothing more is written to it. " +
             kDamageAdvice;
  ErrorA(status, "%s", m_damage.c_str());
}

std::string Database::damage() {
  const Lock lock(m_mutex);
  return m_damage;
}

}  // namespace EventSystemHost
