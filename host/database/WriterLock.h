// The lock that makes this process the only writer of a database file. It is held twice: on a
// file beside the database, FILE.lock, which names the owner's process id and stays when the lock
// is gone, and on the database file itself, which has the same lock by whatever name it is
// reached. A process that dies gives both back.
//
// Thread safety: none needed; taken and given back by the thread that owns the Host.

#ifndef EVENTSYSTEM_HOST_DATABASE_WRITERLOCK_H
#define EVENTSYSTEM_HOST_DATABASE_WRITERLOCK_H

#include <filesystem>

#include "host/files/FileDescriptor.h"

namespace EventSystemHost {

class WriterLock {
 public:
  // Creates what is missing. Throws DatabaseBusy with the owner's process id when the lock is
  // taken, HostError when a file cannot be created.
  //
  // Create it before SQLite opens the file, and end it after SQLite has closed it: closing any
  // descriptor of the file takes SQLite's own locks away from the whole process.
  explicit WriterLock(const std::filesystem::path& databaseFile);
  ~WriterLock();

  WriterLock(const WriterLock&) = delete;
  WriterLock& operator=(const WriterLock&) = delete;

 private:
  FileDescriptor m_named;
  FileDescriptor m_file;
};

}  // namespace EventSystemHost

#endif
