// Reads table definitions from orbdb.ini; the comments of that file say how it is written.
//
// Thread safety: pure functions of the file.

#ifndef EVENTSYSTEM_HOST_DATABASE_DEFINITIONFILE_H
#define EVENTSYSTEM_HOST_DATABASE_DEFINITIONFILE_H

#include <filesystem>
#include <map>
#include <string>

#include "host/database/TableDefinition.h"

namespace EventSystemHost {

using Definitions = std::map<std::string, TableDefinition, std::less<>>;

// Throw HostError naming file, section, entry and what is allowed. A file that does not exist
// defines nothing.
Definitions loadDefinitions(const std::filesystem::path& file);
Definitions parseDefinitions(const std::string& text, const std::string& name);

// The text of the orbdb.ini that this library was built with.
const char* builtInDefinitions();

}  // namespace EventSystemHost

#endif
