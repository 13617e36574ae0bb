// The tables: their definitions, and which of them the database file has.
//
// Thread safety: none; the database's mutex guards it.

#ifndef EVENTSYSTEM_HOST_DATABASE_CATALOGUE_H
#define EVENTSYSTEM_HOST_DATABASE_CATALOGUE_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "EventSystem/platform/OrbDB.h"
#include "host/database/DefinitionFile.h"
#include "host/database/TableQueries.h"

namespace EventSystemHost {

struct Table {
  std::shared_ptr<const TableDefinition> definition;
  std::optional<TableQueries> queries;  // on the connection in use
  std::unique_ptr<OrbDB::CTable> handle;
  // While the transaction that creates the table is open: how many were committed before it.
  std::optional<std::uint64_t> createdAfter;
};

class Catalogue {
 public:
  // Throws HostError when orbdb.ini in `directory` is wrong. Without the file, the definitions
  // that this library was built with.
  explicit Catalogue(const std::filesystem::path& directory);

  // The table, when the file has it. Tables that appear in the file later are found, too. Throws
  // HostError when the file's table and its definition disagree.
  Table* find(std::string_view name, const Connection& connection);

  // All definitions agree with the file's tables, or HostError is thrown.
  void check(const Connection& connection);

  // Adds a table that was just created.
  Table& add(TableDefinition definition);

  std::map<std::string, Table, std::less<>>& tables() { return m_tables; }

 private:
  std::string m_source;
  Definitions m_definitions;
  std::map<std::string, Table, std::less<>> m_tables;
};

// Whether the file has the table; throws HostError when it differs from its definition, which
// `source` gave.
bool existsAsDefined(const TableDefinition& definition, const std::string& source,
                     const Connection& connection);

}  // namespace EventSystemHost

#endif
