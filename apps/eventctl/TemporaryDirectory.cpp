#include "apps/eventctl/TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

#include "apps/common/Failure.h"

namespace EventApps {

TemporaryDirectory::TemporaryDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "eventctl-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw Failure("cannot make the directory " + name + ": " + std::strerror(errno));
  }
  m_path = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

}  // namespace EventApps
