#include "apps/eventctl/DemoHome.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <fstream>
#include <system_error>

#include "apps/common/Failure.h"

namespace EventApps {
namespace {

namespace fs = std::filesystem;

// Says whose the directory is, and is locked while a tour uses it.
constexpr const char* kMark = "cluster-tour";

bool isOwnName(const std::string& name) {
  const auto matches = [&](const std::string& own) {
    return name == own || name == own + ".log" || name == own + ".events";
  };
  return name == kMark || name == DemoHome::reader() ||
         std::any_of(DemoHome::hosts().begin(), DemoHome::hosts().end(), matches) ||
         std::any_of(DemoHome::nodes().begin(), DemoHome::nodes().end(), matches);
}

std::vector<std::string> namesIn(const fs::path& directory) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(directory)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

}  // namespace

const std::vector<std::string>& DemoHome::hosts() {
  static const std::vector<std::string> names = {"host-a", "host-b"};
  return names;
}

const std::vector<std::string>& DemoHome::nodes() {
  static const std::vector<std::string> names = {"etcd-1", "etcd-2", "etcd-3"};
  return names;
}

const std::string& DemoHome::reader() {
  static const std::string name = "reader";
  return name;
}

DemoHome::DemoHome(const fs::path& directory, bool keep)
    : m_path(fs::absolute(directory)), m_keep(keep) {
  try {
    claim();
  } catch (const fs::filesystem_error& error) {
    throw Failure("cannot use " + m_path.string() + ": " + error.code().message());
  }
}

void DemoHome::claim() {
  m_made = fs::create_directories(m_path);
  if (m_made) fs::permissions(m_path, fs::perms::owner_all);
  const std::vector<std::string> names = namesIn(m_path);
  const bool leftOver = std::find(names.begin(), names.end(), kMark) != names.end();
  const auto foreign = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
    return !leftOver || !isOwnName(name);
  });
  if (foreign != names.end()) {
    throw Failure(m_path.string() + " holds " + *foreign +
                  ", which is not of the tour; name an empty directory with --home");
  }
  m_lock = EtcdNodes::Descriptor(
      ::open((m_path / kMark).c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (m_lock.get() < 0 || ::flock(m_lock.get(), LOCK_EX | LOCK_NB) != 0) {
    throw Failure("another tour uses " + m_path.string() + "; name another with --home");
  }
  m_made = m_made || leftOver;
  clear();
}

DemoHome::~DemoHome() {
  if (m_keep) return;
  std::error_code ignored;
  try {
    clear();
  } catch (const fs::filesystem_error&) {  // what cannot be removed is left to the next tour
    return;
  }
  fs::remove(m_path / kMark, ignored);
  if (m_made) fs::remove(m_path, ignored);
}

// The mark goes last: whatever happens, what is left is known as the tour's.
void DemoHome::clear() const {
  for (const std::string& name : namesIn(m_path)) {
    if (name != kMark && isOwnName(name)) fs::remove_all(m_path / name);
  }
}

void DemoHome::write(const fs::path& file, const std::string& text) const {
  const fs::path whole = m_path / file;
  fs::create_directories(whole.parent_path());
  std::ofstream stream(whole);
  stream << text;
  if (!stream.flush()) throw Failure("cannot write " + whole.string());
}

}  // namespace EventApps
