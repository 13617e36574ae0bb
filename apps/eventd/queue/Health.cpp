#include "apps/eventd/queue/Health.h"

#include <filesystem>
#include <system_error>

namespace EventApps {
namespace {

// Less than the journal of the database may take before it is copied.
constexpr std::uintmax_t kLeastFreeBytes = 16u << 20;

}  // namespace

void Health::failed(Matter matter, const std::string& why) {
  const std::lock_guard lock(m_mutex);
  m_failures.at(indexOf(matter)) = why;
  m_failing.at(indexOf(matter)) = true;
}

void Health::worked(Matter matter) {
  if (!m_failing.at(indexOf(matter))) return;
  const std::lock_guard lock(m_mutex);
  m_failures.at(indexOf(matter)).clear();
  m_failing.at(indexOf(matter)) = false;
}

Readiness Health::readiness() const {
  const std::string why = whyNot();
  return {why.empty(), why};
}

std::string Health::whyNot() const {
  std::string damage = m_host.damage();
  if (!damage.empty()) return damage;
  {
    const std::lock_guard lock(m_mutex);
    for (const std::string& failure : m_failures) {
      if (!failure.empty()) return failure;
    }
  }
  if (m_host.cluster() != nullptr) return "";
  const std::filesystem::path directory = m_host.configuration().databaseFile.parent_path();
  std::error_code error;
  const auto space = std::filesystem::space(directory, error);
  if (error || space.available >= kLeastFreeBytes) return "";
  return directory.string() + ": the disk is full: " + std::to_string(space.available) +
         " bytes are free, and writing needs " + std::to_string(kLeastFreeBytes);
}

}  // namespace EventApps
