// One ini file in memory: its entries in the order of the file.
//
// Thread safety: a loaded file is a plain value.

#ifndef EVENTSYSTEM_HOST_CONFIG_INIFILE_H
#define EVENTSYSTEM_HOST_CONFIG_INIFILE_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "EventSystem/Export.h"

namespace EventSystemHost {

class EVENTSYSTEM_HOST_API IniFile {
 public:
  struct Entry {
    std::string section;
    std::string name;
    std::string value;
  };

  IniFile() = default;

  // A file that does not exist is an empty one. Throws HostError when it cannot be read or names
  // an entry twice.
  static IniFile load(const std::filesystem::path& file);

  // `name` stands for the file in messages.
  static IniFile parse(const std::string& text, const std::string& name);

  const std::vector<Entry>& entries() const { return m_entries; }

  // NULL when there is no such entry.
  const std::string* find(std::string_view section, std::string_view name) const;

  // Adds the entry or replaces its value.
  void set(std::string_view section, std::string_view name, std::string_view value);

 private:
  std::vector<Entry> m_entries;
};

// "FILE: [SECTION] NAME = "VALUE": ", the opening of every message about an entry.
EVENTSYSTEM_HOST_API std::string describe(const std::string& file, const IniFile::Entry& entry);

}  // namespace EventSystemHost

#endif
