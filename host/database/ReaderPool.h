// Connections for walks. Each walk has one to itself, because a walk keeps a read transaction
// open; connections whose walks have ended are kept for the next ones.
//
// Thread safety: none; the database's mutex guards it.

#ifndef EVENTSYSTEM_HOST_DATABASE_READERPOOL_H
#define EVENTSYSTEM_HOST_DATABASE_READERPOOL_H

#include <filesystem>
#include <vector>

#include "host/database/Sqlite.h"

namespace EventSystemHost {

class ReaderPool {
 public:
  explicit ReaderPool(std::filesystem::path file);

  // Throws as openReader().
  Connection take();
  void giveBack(Connection connection);

  void closeAll() { m_idle.clear(); }

 private:
  std::filesystem::path m_file;
  std::vector<Connection> m_idle;
};

}  // namespace EventSystemHost

#endif
