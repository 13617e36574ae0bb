#include "host/database/DefinitionFile.h"

#include <strings.h>

#include <algorithm>
#include <sstream>

#include "host/Host.h"
#include "host/config/IniFile.h"
#include "host/database/Record.h"
#include "host/database/Value.h"

namespace EventSystemHost {

namespace {

constexpr std::size_t kMaxNameLength = 64;
constexpr const char* kAllowedColumn =
    "allowed is NAME int|bigint|text, then key, auto (after key), unique or optional";

// Letters by their ASCII codes: what is a letter must not depend on the locale.
bool isIdentifier(std::string_view name) {
  const auto letter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  const auto letterOrDigit = [&](char c) { return letter(c) || (c >= '0' && c <= '9'); };
  return !name.empty() && name.size() <= kMaxNameLength && letter(name[0]) &&
         std::all_of(name.begin(), name.end(), letterOrDigit);
}

// The words that follow a column's name and type.
void readAttributes(std::istringstream& words, ColumnDefinition& column, const std::string& where) {
  for (std::string word; words >> word;) {
    if (word == "key" && !column.key) {
      column.key = true;
    } else if (word == "auto" && column.key && !column.automatic) {
      column.automatic = true;
    } else if (word == "unique" && !column.unique) {
      column.unique = true;
    } else if (word == "optional" && !column.optional) {
      column.optional = true;
    } else {
      throw HostError(where + quotedForLog(word) + " cannot stand there; " + kAllowedColumn);
    }
  }
  if (column.key && column.optional) throw HostError(where + "a key cannot be optional");
  if (column.key && column.type == ColumnType::kText) {
    throw HostError(where + "a key is an int or a bigint");
  }
}

ColumnDefinition parseColumn(const std::string& text, const std::string& where) {
  std::istringstream words(text);
  ColumnDefinition column;
  std::string type;
  words >> column.name >> type;
  if (!isIdentifier(column.name)) {
    throw HostError(where + quotedForLog(column.name) +
                    " is not a name: letters, digits and underscores, not a digit first, at most "
                    "64 characters");
  }
  if (type == "int") {
    column.type = ColumnType::kInt;
  } else if (type == "bigint") {
    column.type = ColumnType::kBigInt;
  } else if (type != "text") {
    throw HostError(where + quotedForLog(type) + " is not a type; " + kAllowedColumn);
  }
  readAttributes(words, column, where);
  return column;
}

// "column.3" is number 3 of "column"; the numbers count from 1 without gaps, in order.
bool isNumbered(const std::string& entry, const std::string& kind, std::size_t already,
                const std::string& where) {
  if (!entry.starts_with(kind + ".")) return false;
  if (entry == kind + "." + std::to_string(already + 1)) return true;
  throw HostError(where + "expected is " + kind + "." + std::to_string(already + 1) +
                  "; the numbers count from 1 without gaps");
}

void addColumn(TableDefinition& table, ColumnDefinition column, const std::string& where) {
  for (const ColumnDefinition& other : table.columns) {
    if (strcasecmp(other.name.c_str(), column.name.c_str()) == 0) {
      throw HostError(where + "the table has a column of this name already");
    }
    if (other.key && column.key) throw HostError(where + "a table has one key");
  }
  if (column.key) table.key = table.columns.size();
  table.columns.push_back(std::move(column));
}

void readEntry(TableDefinition& table, const IniFile::Entry& entry, const std::string& where) {
  if (isNumbered(entry.name, "column", table.columns.size(), where)) {
    addColumn(table, parseColumn(entry.value, where), where);
  } else if (isNumbered(entry.name, "row", table.initialRows.size(), where)) {
    table.initialRows.push_back(entry.value);
  } else if (entry.name == "deferrable") {
    if (entry.value != "yes" && entry.value != "no") {
      throw HostError(where + "allowed is yes or no");
    }
    table.deferrable = entry.value == "yes";
  } else {
    throw HostError(where + "unknown entry; allowed are column.N, row.N and deferrable");
  }
}

// What can only be judged when all entries of the section are known.
void checkTable(const TableDefinition& table, const std::string& file) {
  const std::string where = file + ": [" + table.name + "]: ";
  if (table.columns.empty() || !table.keyColumn().key) {
    throw HostError(where + "the table has no key; one column must be marked key");
  }
  for (std::size_t i = 0; i < table.initialRows.size(); ++i) {
    try {
      parseRecord(table, table.initialRows[i]);
    } catch (const RefusedRecord& problem) {
      throw HostError(file + ": [" + table.name + "] row." + std::to_string(i + 1) + ": " +
                      problem.what() + "; allowed is one field for each column");
    }
  }
}

// SQLite's names are the same in capitals and in small letters.
void requireNewName(const Definitions& definitions, const std::string& name,
                    const std::string& where) {
  for (const auto& [known, table] : definitions) {
    if (known == name || strcasecmp(known.c_str(), name.c_str()) != 0) continue;
    throw HostError(where + "[" + known + "] is the same table name, in other letters; keep one");
  }
}

Definitions read(const IniFile& ini, const std::string& name) {
  Definitions definitions;
  for (const IniFile::Entry& entry : ini.entries()) {
    const std::string where = describe(name, entry);
    if (!isIdentifier(entry.section) || strncasecmp(entry.section.c_str(), "sqlite_", 7) == 0) {
      throw HostError(where +
                      "the section is not a table name: letters, digits and underscores, "
                      "not a digit or sqlite_ first, at most 64 characters");
    }
    requireNewName(definitions, entry.section, where);
    TableDefinition& table = definitions[entry.section];
    table.name = entry.section;
    readEntry(table, entry, where);
  }
  for (const auto& [tableName, table] : definitions) checkTable(table, name);
  return definitions;
}

}  // namespace

Definitions loadDefinitions(const std::filesystem::path& file) {
  return read(IniFile::load(file), file.string());
}

Definitions parseDefinitions(const std::string& text, const std::string& name) {
  return read(IniFile::parse(text, name), name);
}

}  // namespace EventSystemHost
