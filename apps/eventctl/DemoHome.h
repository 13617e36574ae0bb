// The directory of the tour of the cluster mode: the data of the etcd nodes and the homes of the
// hosts. It is removed at the end.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOHOME_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOHOME_H

#include <filesystem>
#include <string>
#include <vector>

#include "apps/etcd_nodes/Descriptor.h"

namespace EventApps {

class DemoHome {
 public:
  // Makes the directory, or takes over an empty one or what an earlier tour left. Throws
  // Failure when anything else is in it, or another tour uses it.
  DemoHome(const std::filesystem::path& directory, bool keep);
  ~DemoHome();

  DemoHome(const DemoHome&) = delete;
  DemoHome& operator=(const DemoHome&) = delete;

  const std::filesystem::path& path() const { return m_path; }
  bool isKept() const { return m_keep; }

  // The names of what is in it.
  static const std::vector<std::string>& hosts();
  static const std::vector<std::string>& nodes();
  static const std::string& reader();

  // Writes a file below the directory, and makes its folder. Throws Failure.
  void write(const std::filesystem::path& file, const std::string& text) const;

 private:
  void claim();
  void clear() const;

  std::filesystem::path m_path;
  bool m_keep;
  bool m_made = false;  // the directory itself, by this or an earlier tour
  EtcdNodes::Descriptor m_lock;
};

}  // namespace EventApps

#endif
