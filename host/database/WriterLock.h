// The lock that makes this process the only writer of a database file. It is held on a file
// beside the database, FILE.lock, which names the owner's process id and stays when the lock is
// gone; a process that dies gives its lock back.
//
// Thread safety: none needed; taken and given back by the thread that owns the Host.

#ifndef EVENTSYSTEM_HOST_DATABASE_WRITERLOCK_H
#define EVENTSYSTEM_HOST_DATABASE_WRITERLOCK_H

#include <filesystem>

namespace EventSystemHost {

class WriterLock {
 public:
  // Throws DatabaseBusy with the owner's process id when it is taken, HostError when the file
  // cannot be created.
  explicit WriterLock(const std::filesystem::path& databaseFile);
  ~WriterLock();

  WriterLock(const WriterLock&) = delete;
  WriterLock& operator=(const WriterLock&) = delete;

 private:
  int m_descriptor = -1;
};

}  // namespace EventSystemHost

#endif
