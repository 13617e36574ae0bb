#include "tests/power/DiskLog.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace EventSystemTest {

namespace {

std::atomic<DiskLog*> current{nullptr};

std::string contentOf(sqlite3_file* file) {
  sqlite3_int64 size = 0;
  file->pMethods->xFileSize(file, &size);
  std::string content(static_cast<std::size_t>(size), '\0');
  file->pMethods->xRead(file, content.data(), static_cast<int>(size), 0);
  return content;
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

// Whether a file is SQLite's and survives a restart.
bool isStored(const std::filesystem::path& file) {
  const std::string name = file.filename();
  return name.ends_with(".db") || name.ends_with(".db-wal") || name.ends_with(".db-journal");
}

}  // namespace

std::set<std::string> namesIn(const std::filesystem::path& directory) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    names.insert(entry.path().filename());
  }
  return names;
}

DiskLog::DiskLog(const std::filesystem::path& root) {
  directoryFlushed(root, 0, namesIn(root));
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.is_directory()) directoryFlushed(entry.path(), 0, namesIn(entry.path()));
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (isStored(entry.path())) noteKnown(entry.path(), contentOf(entry.path()));
  }
  current = this;
  watchDisk(this);
}

DiskLog::~DiskLog() {
  watchDisk(nullptr);
  current = nullptr;
}

DiskLog* DiskLog::recording() {
  return current;
}

std::size_t DiskLog::position() const {
  const std::lock_guard lock(m_mutex);
  return m_entries.size();
}

int DiskLog::before(const DiskRequest& request) {
  const std::lock_guard lock(m_mutex);
  if (request.call == DiskCall::kOpen) {
    std::error_code error;
    if (!std::filesystem::exists(request.path, error)) m_creating.insert(request.path);
  } else if (request.call == DiskCall::kSync) {
    m_flushes[request.file] = m_entries.size();
  } else if (request.call == DiskCall::kClose) {
    m_open.erase(request.file);
  } else if (request.call == DiskCall::kDelete && m_numbers.erase(request.path) != 0) {
    // Not when it is done: the directory may be flushed within the call.
    m_entries.push_back({DiskEntry::Kind::kRemoved});
    m_entries.back().path = request.path;
  }
  return SQLITE_OK;
}

void DiskLog::after(const DiskRequest& request) {
  using Kind = DiskEntry::Kind;
  const std::lock_guard lock(m_mutex);
  if (request.call == DiskCall::kOpen) return opened(request);
  if (!m_open.contains(request.file)) return;  // without a name
  noteProgress(request);
  if (request.call == DiskCall::kWrite) {
    m_entries.push_back(entryOf(Kind::kWritten, request));
    m_entries.back().data.assign(static_cast<const char*>(request.data),
                                 static_cast<std::size_t>(request.size));
  } else if (request.call == DiskCall::kTruncate) {
    m_entries.push_back(entryOf(Kind::kTruncated, request));
  } else if (request.call == DiskCall::kSync) {
    m_entries.push_back(entryOf(Kind::kFlushed, request));
    m_entries.back().covered = m_flushes[request.file];
  }
}

void DiskLog::noteProgress(const DiskRequest& request) {
  const bool wal = std::string_view(request.path).ends_with("-wal");
  if (wal && request.call == DiskCall::kWrite) {
    m_walBytes = request.offset + request.size;
  } else if (!wal && request.call == DiskCall::kSync) {
    m_walBytes = 0;
    m_copied.notify_all();
  }
}

void DiskLog::waitUntilCopied(std::size_t walPages) {
  constexpr std::size_t kFrame = 24 + 4096;
  const auto bytes = static_cast<sqlite3_int64>(walPages * kFrame);
  std::unique_lock lock(m_mutex);
  m_copied.wait(lock, [&] { return m_walBytes < bytes; });
}

DiskEntry DiskLog::entryOf(DiskEntry::Kind kind, const DiskRequest& request) const {
  DiskEntry entry{kind};
  entry.file = m_open.at(request.file);
  entry.offset = request.offset;
  return entry;
}

void DiskLog::opened(const DiskRequest& request) {
  if (*request.path == '\0') return;
  const bool created = m_creating.erase(request.path) != 0;
  const auto known = m_numbers.find(request.path);
  if (known != m_numbers.end() && !created) {
    m_open[request.file] = known->second;
    return;
  }
  if (created) {
    m_numbers[request.path] = ++m_files;
    m_entries.push_back({DiskEntry::Kind::kCreated, m_files, request.path});
  } else {
    noteKnown(request.path, contentOf(request.file));
  }
  m_open[request.file] = m_files;
}

void DiskLog::noteKnown(const std::filesystem::path& path, std::string content) {
  m_numbers[path] = ++m_files;
  m_entries.push_back({DiskEntry::Kind::kKnown, m_files, path, std::move(content)});
}

void DiskLog::directoryFlushed(const std::filesystem::path& directory, std::size_t covered,
                               std::set<std::string> names) {
  const std::lock_guard lock(m_mutex);
  DiskEntry entry{DiskEntry::Kind::kDirectoryFlushed};
  entry.path = directory;
  entry.covered = covered;
  entry.names = std::move(names);
  m_entries.push_back(std::move(entry));
}

}  // namespace EventSystemTest
