#include "host/database/Database.h"

#include <limits>
#include <new>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "host/database/DatabaseFile.h"
#include "host/database/Record.h"
#include "host/database/TableHandle.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

struct Current {
  std::mutex mutex;
  std::shared_ptr<Database> database;
};

Current& current() {
  static Current instance;
  return instance;
}

void writeDefinitions(const std::filesystem::path& directory) {
  makePrivateDirectories(directory);
  const std::filesystem::path file = directory / "orbdb.ini";
  std::error_code error;
  if (!std::filesystem::exists(file, error)) writePrivateFile(file, builtInDefinitions());
}

// SqliteError is for the code; an operator is told the file and what to do.
[[noreturn]] void cannotOpen(const HostConfiguration& configuration, const SqliteError& problem) {
  const std::string advice = saysDamage(problem.status()) ? std::string(". ") + kDamageAdvice : "";
  throw HostError(configuration.databaseFile.string() + ": cannot be opened: " + problem.what() +
                  " (status " + std::to_string(problem.status()) + ")" + advice);
}

int refuseKeyBeyondInt(const TableDefinition& table, std::int64_t number, const int* key) {
  const bool narrow = key != nullptr || table.keyColumn().type == ColumnType::kInt;
  return narrow && number > std::numeric_limits<int>::max() ? SQLITE_FULL : SQLITE_OK;
}

}  // namespace

std::shared_ptr<Database> currentDatabase() {
  const std::lock_guard lock(current().mutex);
  return current().database;
}

void setCurrentDatabase(std::shared_ptr<Database> database) {
  const std::lock_guard lock(current().mutex);
  current().database.swap(database);
}

Database::Database(const HostConfiguration& configuration)
    : m_configuration(configuration),
      m_pool(configuration.databaseFile),
      m_checkpointAt(kCheckpointPages) {}

std::shared_ptr<Database> Database::openForWriting(const HostConfiguration& configuration) {
  std::shared_ptr<Database> database(new Database(configuration));
  Database& self = *database;
  try {
    writeDefinitions(configuration.databaseDirectory);
    self.m_catalogue.emplace(configuration.databaseDirectory);
    prepareFile(configuration.databaseFile);
    self.m_writer =
        std::make_unique<Writer>(configuration.databaseFile, configuration.durability, 0);
    self.m_catalogue->check(self.connection());
    // A connection that stays open keeps the index of the WAL in memory when the writer's is
    // opened anew.
    self.m_pool.giveBack(self.m_pool.take());
  } catch (const SqliteError& problem) {
    cannotOpen(configuration, problem);
  }
  self.m_maintenance = std::make_unique<Maintenance>(
      self.m_mutex, [&self] { return self.maintenanceDue(); },
      [&self](Lock& lock) { self.maintain(lock); });
  const std::string definitions = (configuration.databaseDirectory / "orbdb.ini").string();
  if (self.table("dataselection") == nullptr &&
      self.addTable("dataselection", definitions.c_str()) != 0) {
    throw HostError(configuration.databaseFile.string() +
                    ": the table dataselection cannot be created; the log says why");
  }
  return database;
}

std::shared_ptr<Database> Database::openForReading(const HostConfiguration& configuration) {
  std::shared_ptr<Database> database(new Database(configuration));
  Database& self = *database;
  self.m_readOnly = true;
  try {
    self.m_reader = openReader(configuration.databaseFile);
    self.m_catalogue.emplace(configuration.databaseDirectory);
    self.m_catalogue->check(self.connection());
  } catch (const SqliteError& problem) {
    cannotOpen(configuration, problem);
  }
  return database;
}

Database::~Database() {
  close();
}

void Database::close() {
  if (m_maintenance) m_maintenance->stop();
  Lock lock(m_mutex);
  if (!m_open) return;
  try {
    if (m_writer && ready(Use::kWrite, lock) == SQLITE_OK) finish(lock);
  } catch (const std::bad_alloc&) {
    // A destructor may be waiting for this; what was committed is in the WAL.
    ErrorA(SQLITE_NOMEM, "%s: closed without its last work, memory is short",
           m_configuration.databaseFile.c_str());
    if (!lock.owns_lock()) lock.lock();
  }
  m_sync.waitUntilIdle(lock);
  endAllWalks();
  m_open = false;
  if (m_catalogue) {
    for (auto& [name, table] : m_catalogue->tables()) table.queries.reset();
  }
  m_pool.closeAll();
  m_writer.reset();
  m_reader = Connection();
}

const Connection& Database::connection() const {
  return m_readOnly ? m_reader : m_writer->connection();
}

int Database::logFailure(int status, const Task& task, const std::string& reason) {
  noteDamage(status, task.table, reason);
  return ErrorA(status, "%s: table %s: %s: %s", m_configuration.databaseFile.c_str(),
                task.table == nullptr ? "(none)" : task.table, task.failed, reason.c_str());
}

Table& Database::require(std::string_view name) {
  Table* table = m_catalogue->find(name, connection());
  if (table == nullptr) throw SqliteError(SQLITE_ERROR, "the table does not exist");
  return *table;
}

TableQueries& Database::queries(Table& table) {
  if (!table.queries) table.queries.emplace(connection(), *table.definition);
  return *table.queries;
}

int Database::call(Use use, const Task& task, const Work& body) {
  Lock lock(m_mutex);
  try {
    const int status = ready(use, lock);
    if (status != SQLITE_OK) return status;
    if (use == Use::kWrite && !m_damage.empty()) {
      return ErrorA(SQLITE_CORRUPT, "%s: %s", task.failed, m_damage.c_str());
    }
    return body();
  } catch (const RefusedRecord& problem) {
    logFailure(problem.status(), task, problem.what());
    if (m_writer) commitPending();
    return problem.status();
  } catch (const SqliteError& problem) {
    logFailure(problem.status(), task, problem.what());
    if (m_writer && saysFailedOperation(problem.status())) m_writer->markSuspect();
    return problem.status();
  } catch (const HostError& problem) {
    return logFailure(SQLITE_ERROR, task, problem.what());
  }
}

int Database::ready(Use use, Lock& lock) {
  if (!m_open) return SQLITE_MISUSE;
  if (m_readOnly) {
    if (use == Use::kRead) return SQLITE_OK;
    return ErrorA(SQLITE_READONLY, "%s: is open read-only, nothing can be written to it",
                  m_configuration.databaseFile.c_str());
  }
  if (m_lost) {
    return ErrorA(SQLITE_IOERR,
                  "%s: calls that had returned were lost when a flush failed; restart the program",
                  m_configuration.databaseFile.c_str());
  }
  const bool usable = m_writer && !m_writer->suspect() && (use == Use::kRead || !m_walSuspect);
  return usable ? SQLITE_OK : recover(use, lock);
}

OrbDB::CTable* Database::table(const char* name) {
  if (name == nullptr) return nullptr;
  OrbDB::CTable* handle = nullptr;
  call(Use::kRead, {name, "cannot be looked up"}, [&] {
    Table* table = m_catalogue->find(name, connection());
    if (table == nullptr) return SQLITE_OK;
    if (!table->handle) {
      auto impl = std::make_unique<OrbDB::CTable::Impl>(weak_from_this(), table->definition);
      table->handle = std::make_unique<OrbDB::CTable>(impl.get());
      static_cast<void>(impl.release());  // the handle's now
    }
    handle = table->handle.get();
    return SQLITE_OK;
  });
  return handle;
}

int Database::addTable(const char* name, const char* iniPath) {
  if (name == nullptr || iniPath == nullptr) return SQLITE_MISUSE;
  const Task task{name, "the table was not created"};
  return call(Use::kWrite, task, [&]() -> int {
    const Definitions definitions = loadDefinitions(iniPath);
    const auto defined = definitions.find(name);
    if (defined == definitions.end()) {
      throw HostError(std::string(iniPath) + ": has no section [" + name + "]");
    }
    const TableDefinition& definition = defined->second;
    if (existsAsDefined(definition, iniPath, connection())) {
      // Tables of other definitions than orbdb.ini's are known from here on.
      if (m_catalogue->find(name, connection()) == nullptr) m_catalogue->add(definition);
      return SQLITE_OK;
    }
    const std::uint64_t before = m_writer->commits();
    // A table is not seen without its initial rows: they are inserted by a call of their own.
    const auto when =
        definition.initialRows.empty() ? Writer::Commit::kNow : Writer::Commit::kWithNextWrite;
    const int status = write(when, Writer::Kind::kAny, task,
                             [&] { return connection().execute(createTableSql(definition)); });
    if (status == SQLITE_OK) m_catalogue->add(definition).createdAfter = before;
    return status;
  });
}

int Database::insertInitialRows(const char* name, const char* iniPath) {
  if (name == nullptr || iniPath == nullptr) return SQLITE_MISUSE;
  const Task task{name, "the initial rows were not added"};
  return call(Use::kWrite, task, [&]() -> int {
    Table& table = require(name);
    const Definitions definitions = loadDefinitions(iniPath);
    const auto defined = definitions.find(name);
    if (defined == definitions.end()) {
      throw HostError(std::string(iniPath) + ": has no section [" + name + "]");
    }
    return write(Writer::Commit::kNow, Writer::Kind::kAny, task, [&]() -> int {
      for (const std::string& row : defined->second.initialRows) {
        const int status = queries(table).insert(parseRecord(*table.definition, row));
        if (status != SQLITE_OK) return status;
      }
      return SQLITE_OK;
    });
  });
}

int Database::read(const TableDefinition& definition, const char* key, Row& row) {
  return call(Use::kRead, {definition.name.c_str(), "the record was not read"}, [&] {
    const Value number = parseKey(definition, key);
    const int status = queries(require(definition.name)).select(definition.key, number, row);
    if (status == SQLITE_ROW) return SQLITE_OK;
    if (status == SQLITE_DONE) return SQLITE_NOTFOUND;
    throw SqliteError(status, connection().errorText());
  });
}

int Database::add(const TableDefinition& definition, const char* record, int* key) {
  const Task task{definition.name.c_str(), "the record was not added"};
  return call(Use::kWrite, task, [&] {
    const auto values = parseRecord(definition, record == nullptr ? "" : record);
    Table& table = require(definition.name);
    std::int64_t number = 0;
    const auto when = definition.deferrable ? Writer::Commit::kWithNextWrite : Writer::Commit::kNow;
    // The number that the table gives may be refused after the insert.
    const auto kind =
        definition.keyColumn().automatic ? Writer::Kind::kAny : Writer::Kind::kOneStatement;
    const int status = write(when, kind, task, [&] {
      const int inserted = queries(table).insert(values);
      if (inserted != SQLITE_OK || !definition.keyColumn().automatic) return inserted;
      number = sqlite3_last_insert_rowid(connection().get());
      return refuseKeyBeyondInt(definition, number, key);
    });
    if (status == SQLITE_OK && key != nullptr && definition.keyColumn().automatic) {
      *key = static_cast<int>(number);
    }
    return status;
  });
}

int Database::update(const TableDefinition& definition, const char* key, const char* assignments) {
  const Task task{definition.name.c_str(), "the record was not updated"};
  return call(Use::kWrite, task, [&] {
    const std::int64_t number = parseKey(definition, key);
    const auto values = parseAssignments(definition, assignments == nullptr ? "" : assignments);
    Table& table = require(definition.name);
    return write(definition.deferrable ? Writer::Commit::kWithNextWrite : Writer::Commit::kNow,
                 Writer::Kind::kOneStatement, task,
                 [&] { return queries(table).update(number, values); });
  });
}

int Database::remove(const TableDefinition& definition, const char* key) {
  const Task task{definition.name.c_str(), "the record was not deleted"};
  return call(Use::kWrite, task, [&] {
    const std::int64_t number = parseKey(definition, key);
    Table& table = require(definition.name);
    return write(Writer::Commit::kNow, Writer::Kind::kOneStatement, task,
                 [&] { return queries(table).remove(number); });
  });
}

int Database::startWalk(const TableDefinition& definition, const char* filter,
                        std::unique_ptr<Walk>& walk, Row& row) {
  return call(Use::kRead, {definition.name.c_str(), "no rows are listed"}, [&]() -> int {
    std::optional<Assignment> wanted;
    if (filter != nullptr) wanted = parseFilter(definition, filter);
    Table& table = require(definition.name);
    if (wanted && definition.columns[wanted->column].selectsOneRow()) {
      const int status = queries(table).select(wanted->column, wanted->value, row);
      if (status == SQLITE_ROW) return SQLITE_OK;
      if (status == SQLITE_DONE) return SQLITE_NOTFOUND;
      throw SqliteError(status, connection().errorText());
    }
    // Other connections see what is committed.
    if (m_writer) {
      const int status = commitPending();
      if (status != SQLITE_OK) return status;
    }
    auto started = std::make_unique<Walk>(m_pool, *table.definition, std::move(wanted));
    const int status = started->next(row);
    if (status == SQLITE_DONE) return SQLITE_NOTFOUND;
    if (status != SQLITE_ROW) throw SqliteError(status, sqlite3_errstr(status));
    m_walks.insert(started.get());
    walk = std::move(started);
    return SQLITE_OK;
  });
}

int Database::nextRow(Walk& walk, Row& row) {
  const Lock lock(m_mutex);
  const int status = walk.next(row);
  if (status == SQLITE_ROW) return SQLITE_OK;
  if (status == SQLITE_DONE) return SQLITE_NOTFOUND;
  return logFailure(status, {walk.table().c_str(), "a walk ended before its last row"},
                    sqlite3_errstr(status));
}

void Database::endWalk(std::unique_ptr<Walk> walk) {
  const Lock lock(m_mutex);
  m_walks.erase(walk.get());
  walk.reset();
  // The walk may have kept a checkpoint from reaching the WAL's end.
  if (m_writer && m_walks.empty() && m_walPages >= kCheckpointPages) {
    m_checkpointAt = kCheckpointPages;
    m_checkpointDue = true;
    m_maintenance->wake(maintenanceDue());
  }
}

void Database::endAllWalks() {
  for (Walk* walk : m_walks) walk->abandon();
  m_walks.clear();
}

bool Database::hasDataSelection(unsigned int dsid) {
  bool found = false;
  call(Use::kRead, {"dataselection", "cannot be read"}, [&] {
    Table* table = m_catalogue->find("dataselection", connection());
    if (table == nullptr) return SQLITE_OK;
    // Tables have no unsigned numbers; the upper half of the ids stands there as negative ones.
    const Value key = static_cast<std::int64_t>(static_cast<std::int32_t>(dsid));
    Row row;
    const int status = queries(*table).select(table->definition->key, key, row);
    found = status == SQLITE_ROW;
    if (!found && status != SQLITE_DONE) throw SqliteError(status, connection().errorText());
    return SQLITE_OK;
  });
  return found;
}

int Database::write(Writer::Commit when, Writer::Kind kind, const Task& task, const Work& body) {
  const bool hadPending = m_writer->pending();
  const std::uint64_t commitsBefore = m_writer->commits();
  const int status = m_writer->write(when, kind, body);
  if (status != SQLITE_OK) logFailure(status, task, m_writer->failure());
  if (hadPending && m_writer->commits() == commitsBefore) {
    WarningA(status, "%s: a write that waited to be stored with this one is lost, too",
             m_configuration.databaseFile.c_str());
  }
  if (!hadPending && m_writer->pending()) m_pendingSince = Maintenance::Clock::now();
  afterWrite();
  // Threads that write all the time may not let the maintenance in.
  if (m_checkpointDue && m_walPages >= kMaxWalPages && !m_writer->pending()) checkpoint();
  return status;
}

int Database::commitPending() {
  if (!m_writer->pending()) return SQLITE_OK;
  const int status = m_writer->commitPending();
  if (status != SQLITE_OK) {
    ErrorA(status, "%s: a write was not stored: %s", m_configuration.databaseFile.c_str(),
           m_writer->failure().c_str());
    noteDamage(status, nullptr, m_writer->failure());
  }
  afterWrite();
  return status;
}

void Database::afterWrite() {
  const int pages = m_writer->walPages();
  if (pages < m_walPages) m_checkpointAt = kCheckpointPages;  // the WAL started over
  if (m_commits != m_writer->commits()) m_unsavedPages = pages;
  m_commits = m_writer->commits();
  m_walPages = pages;
  if (pages >= m_checkpointAt) m_checkpointDue = true;
  if (!m_writer->pending()) forgetTablesTakenBack();
  if (m_maintenance) m_maintenance->wake(maintenanceDue());
}

void Database::forgetTablesTakenBack() {
  auto& tables = m_catalogue->tables();
  for (auto entry = tables.begin(); entry != tables.end();) {
    Table& table = entry->second;
    const bool takenBack = table.createdAfter && *table.createdAfter == m_commits;
    table.createdAfter.reset();
    entry = takenBack ? tables.erase(entry) : std::next(entry);
  }
}

int Database::waitDurable() {
  Lock lock(m_mutex);
  if (m_readOnly) return SQLITE_OK;
  int status = ready(Use::kWrite, lock);
  if (status == SQLITE_OK) status = std::exchange(m_unreported, SQLITE_OK);
  if (status == SQLITE_OK) status = commitPending();
  if (status != SQLITE_OK || m_configuration.durability == Durability::kStrict) return status;
  status = m_sync.waitFor(m_writer->commits(), *m_writer, lock);
  if (status != SQLITE_OK) {
    ErrorA(status, "%s: a flush failed, the newest calls may not survive power loss",
           m_configuration.databaseFile.c_str());
  }
  return status;
}

}  // namespace EventSystemHost
