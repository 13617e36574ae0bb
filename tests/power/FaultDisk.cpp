#include "tests/power/FaultDisk.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>

#include "tests/power/DirectorySync.h"

namespace EventSystemTest {

namespace {

using enum FaultEffect;

// A flush with the name of no file stands for those of directories.
constexpr const char* kDirectoryFlush = "directory-flush";

constexpr std::array kFaults = {
    Fault{"read", DiskCall::kRead, SQLITE_IOERR_READ, kNothing},
    Fault{"short-read", DiskCall::kRead, SQLITE_IOERR_SHORT_READ, kZeros},
    Fault{"write", DiskCall::kWrite, SQLITE_IOERR_WRITE, kHalf},
    Fault{"full-disk", DiskCall::kWrite, SQLITE_FULL, kFullDisk},
    Fault{"flush", DiskCall::kSync, SQLITE_IOERR_FSYNC, kNothing},
    Fault{"flush-that-loses", DiskCall::kSync, SQLITE_IOERR_FSYNC, kLosesWrites},
    Fault{kDirectoryFlush, DiskCall::kSync, SQLITE_IOERR_DIR_FSYNC, kNothing},
    Fault{"truncate", DiskCall::kTruncate, SQLITE_IOERR_TRUNCATE, kNothing},
    Fault{"file-size", DiskCall::kFileSize, SQLITE_IOERR_FSTAT, kNothing},
    Fault{"lock", DiskCall::kLock, SQLITE_IOERR_LOCK, kNothing},
    Fault{"busy", DiskCall::kLock, SQLITE_BUSY, kNothing},
    Fault{"open", DiskCall::kOpen, SQLITE_CANTOPEN, kNothing},
    Fault{"delete", DiskCall::kDelete, SQLITE_IOERR_DELETE, kNothing},
    Fault{"access", DiskCall::kAccess, SQLITE_IOERR_ACCESS, kNothing},
    Fault{"map-shared", DiskCall::kMapShared, SQLITE_IOERR_SHMMAP, kNothing},
    Fault{"lock-shared", DiskCall::kLockShared, SQLITE_IOERR_SHMLOCK, kNothing},
    Fault{"busy-shared", DiskCall::kLockShared, SQLITE_BUSY, kNothing},
};

std::atomic<FaultDisk*> current{nullptr};

bool isOfDirectories(const Fault& fault) {
  return fault.name == kDirectoryFlush;
}

bool growsFile(const DiskRequest& request) {
  sqlite3_int64 size = 0;
  request.file->pMethods->xFileSize(request.file, &size);
  return request.offset + request.size > size;
}

}  // namespace

std::span<const Fault> allFaults() {
  return kFaults;
}

const Fault* faultCalled(const std::string& name) {
  const auto found = std::find_if(kFaults.begin(), kFaults.end(),
                                  [&](const Fault& fault) { return fault.name == name; });
  return found == kFaults.end() ? nullptr : &*found;
}

FaultDisk::FaultDisk() {
  current = this;
  watchDisk(this);
  failDirectoryFlushes(directoryFlushFails);
}

FaultDisk::~FaultDisk() {
  failDirectoryFlushes(nullptr);
  watchDisk(nullptr);
  current = nullptr;
}

void FaultDisk::arm(const Fault& fault, std::size_t n, Lasting lasting) {
  const std::lock_guard lock(m_mutex);
  m_fault = &fault;
  m_n = n;
  m_lasting = lasting;
  m_counted = 0;
  m_failed = 0;
}

void FaultDisk::lift() {
  const std::lock_guard lock(m_mutex);
  m_fault = nullptr;
}

std::size_t FaultDisk::failed() const {
  const std::lock_guard lock(m_mutex);
  return m_failed;
}

std::size_t FaultDisk::counted() const {
  const std::lock_guard lock(m_mutex);
  return m_counted;
}

bool FaultDisk::directoryFlushFails() {
  FaultDisk& disk = *current;
  const std::lock_guard lock(disk.m_mutex);
  return disk.m_fault != nullptr && isOfDirectories(*disk.m_fault) &&
         disk.strikes({DiskCall::kSync, "", nullptr});
}

bool FaultDisk::strikes(const DiskRequest& request) {
  if (m_fault->call != request.call) return false;
  if (m_fault->effect == kFullDisk && !growsFile(request)) return false;
  ++m_counted;
  if (m_counted < m_n || (m_counted > m_n && m_lasting == Lasting::kOnce)) return false;
  ++m_failed;
  return true;
}

int FaultDisk::before(const DiskRequest& request) {
  if (request.call == DiskCall::kSleep) return SQLITE_BUSY;
  const std::lock_guard lock(m_mutex);
  if (request.call == DiskCall::kClose) m_unflushed.erase(request.file);
  const bool struck = m_fault != nullptr && !isOfDirectories(*m_fault) && strikes(request);
  if (struck) return answer(request);
  if (request.call == DiskCall::kWrite) {
    m_unflushed[request.file].note(request.file, request.size, request.offset);
  }
  return SQLITE_OK;
}

int FaultDisk::answer(const DiskRequest& request) {
  if (m_fault->effect == kHalf) {
    m_unflushed[request.file].note(request.file, request.size, request.offset);
    request.file->pMethods->xWrite(request.file, request.data, request.size / 2, request.offset);
  } else if (m_fault->effect == kZeros) {
    std::memset(request.to, 0, static_cast<std::size_t>(request.size));
  } else if (m_fault->effect == kLosesWrites) {
    m_unflushed[request.file].lose(request.file);
  }
  return m_fault->status;
}

void FaultDisk::after(const DiskRequest& request) {
  if (request.call != DiskCall::kOpen && request.call != DiskCall::kSync) return;
  const std::lock_guard lock(m_mutex);
  m_unflushed[request.file].flushed(request.file);
}

}  // namespace EventSystemTest
