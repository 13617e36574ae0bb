// Whether the audit database may have rows that have not been taken in.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_AUDITWATCH_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_AUDITWATCH_H

#include <filesystem>
#include <string>
#include <utility>

#include "apps/common/FileSignature.h"

namespace EventApps {

class AuditWatch {
 public:
  explicit AuditWatch(std::filesystem::path file) : m_file(std::move(file)) {}

  // Asked before the rows are looked for. True once more after each change: the times of files are
  // coarse, and a row may come right behind a change that was seen.
  bool mayHaveRows() {
    const std::string before = std::exchange(m_signature, fileSignature(m_file));
    const bool changed = m_signature != before;
    return std::exchange(m_changed, changed) || changed;
  }

 private:
  const std::filesystem::path m_file;
  std::string m_signature;
  bool m_changed = false;
};

}  // namespace EventApps

#endif
