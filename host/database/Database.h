// The database behind EventSystem/platform/OrbDB.h: tables of one SQLite file.
//
// Thread safety: any thread, also at once; one mutex serialises all calls. Only the flush that
// waitDurable() waits for runs without it.

#ifndef EVENTSYSTEM_HOST_DATABASE_DATABASE_H
#define EVENTSYSTEM_HOST_DATABASE_DATABASE_H

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "host/Host.h"
#include "host/config/HostConfiguration.h"
#include "host/database/Catalogue.h"
#include "host/database/Maintenance.h"
#include "host/database/ReaderPool.h"
#include "host/database/SpaceReserve.h"
#include "host/database/WalSync.h"
#include "host/database/Walk.h"
#include "host/database/Work.h"
#include "host/database/Writer.h"

namespace EventSystemHost {

// Every int is 0 or a database status, which is positive; failures are logged.
class Database : public std::enable_shared_from_this<Database> {
 public:
  // Throw HostError. The writer creates what is missing; the caller holds the WriterLock.
  static std::shared_ptr<Database> openForWriting(const HostConfiguration& configuration);
  static std::shared_ptr<Database> openForReading(const HostConfiguration& configuration);

  ~Database();

  // Makes everything durable and closes the file; later calls fail.
  void close();

  // NULL when the file has no such table.
  OrbDB::CTable* table(const char* name);
  int addTable(const char* name, const char* iniPath);
  int insertInitialRows(const char* name, const char* iniPath);

  // Not 0 when there is no such row, without a log line.
  int read(const TableDefinition& definition, const char* key, Row& row);

  int add(const TableDefinition& definition, const char* record, int* key);
  int update(const TableDefinition& definition, const char* key, const char* assignments);
  int remove(const TableDefinition& definition, const char* key);

  // 0 with the first row. `walk` stays empty when there can be no second one.
  int startWalk(const TableDefinition& definition, const char* filter, std::unique_ptr<Walk>& walk,
                Row& row);
  int nextRow(Walk& walk, Row& row);
  void endWalk(std::unique_ptr<Walk> walk);

  // The global queue counts as one.
  bool hasDataSelection(unsigned int dsid);

  // Whether the library's walk over this table ends with a row more; see DataSelections.cpp. The
  // row, or false where no id was given so far. Where the walk does not come to it, nothing is
  // written until one does.
  static bool hasHighestIdRow(const TableDefinition& definition);
  bool readHighestIdRow(const TableDefinition& definition, Row& row);
  void missHighestIdRow();

  // Host::damage().
  std::string damage() const;

  // Host::lackOfSpace().
  std::string lackOfSpace() const;

  // Host::waitDurable().
  int waitDurable();

 private:
  using Lock = std::unique_lock<std::mutex>;
  enum class Use { kRead, kWrite };

  explicit Database(const HostConfiguration& configuration);

  // What a failure's log line says.
  struct Task {
    const char* table;  // may be NULL
    const char* failed;
  };

  // Runs `body`, which returns SQLITE_OK or a status, when the database can be used. What it
  // throws becomes a status and a log line.
  int call(Use use, const Task& task, const Work& body);
  int ready(Use use, Lock& lock);

  // Throws when the disk has no room for what is about to be added.
  void requireRoom();

  // Gives up what is kept back for deleting, when it is needed; false when there is nothing.
  bool makeRoom();

  // Runs `body`, which adds or changes a row of the table.
  int writeRow(const TableDefinition& definition, Writer::Kind kind, const Task& task,
               const Work& body);

  // Runs `body` as one write.
  int write(Writer::Commit when, Writer::Kind kind, const Task& task, const Work& body);
  void afterWrite();
  void forgetTablesTakenBack();
  int commitPending();

  // Opens the file anew after a failed file operation.
  int recover(Use use, Lock& lock);
  int reopen();
  int secureWal();
  void endAllWalks();

  const Connection& connection() const;
  TableQueries& queries(Table& table);
  Table& require(std::string_view name);
  int logFailure(int status, const Task& task, const std::string& reason);

  // Notes the first failure that says that the file is damaged; `table` may be NULL.
  void noteDamage(int status, const char* table, const std::string& reason);

  Maintenance::Clock::time_point maintenanceDue() const;
  void maintain(Lock& lock);
  void checkpoint();
  bool shrink();
  bool flushAtClose(Lock& lock);
  void finish(Lock& lock);

  // How many pages the WAL holds before they are copied into the file, between calls and then in
  // any case: 4 and 16 MiB.
  static constexpr int kCheckpointPages = 1000;
  static constexpr int kMaxWalPages = 4000;

  const HostConfiguration m_configuration;
  std::mutex m_mutex;
  bool m_open = true;
  Connection m_reader;               // read-only access
  std::unique_ptr<Writer> m_writer;  // the other one; empty while it cannot be opened
  bool m_readOnly = false;
  std::optional<Catalogue> m_catalogue;
  ReaderPool m_pool;
  SpaceReserve m_reserve;
  std::atomic<bool> m_lacksSpace = false;
  std::set<Walk*> m_walks;
  WalSync m_sync;

  Maintenance::Clock::time_point m_pendingSince;
  int m_checkpointAt;  // pages in the WAL
  int m_walPages = 0;
  int m_unsavedPages = 0;  // pages that must be in the WAL; 0 when the file has them all
  bool m_checkpointDue = false;
  std::uint64_t m_commits = 0;
  std::string m_damage;                   // what was found damaged; then nothing more is written
  std::atomic<bool> m_isDamaged = false;  // then m_damage stays as it is
  bool m_highestIdUnknown = false;        // to the library, which would give ids again
  bool m_walSuspect = false;              // its pages must reach the file before the next write
  bool m_lost = false;                    // calls that had returned are gone
  int m_unreported = SQLITE_OK;           // a failure that no caller has been told
  std::unique_ptr<Maintenance> m_maintenance;
};

// The database of the Host that lives; NULL without one.
std::shared_ptr<Database> currentDatabase();
void setCurrentDatabase(std::shared_ptr<Database> database);

}  // namespace EventSystemHost

#endif
