#include "host/config/IniFile.h"

// Bytes are taken as they are; the converters of SimpleIni need sources that Debian leaves out.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "host/Host.h"

namespace EventSystemHost {

namespace {

std::string readWhole(const std::filesystem::path& file) {
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) {
    throw HostError(file.string() + ": is a directory; an ini file is expected there");
  }
  // A pipe would block.
  if (std::filesystem::exists(file, ignored) && !std::filesystem::is_regular_file(file, ignored)) {
    throw HostError(file.string() + ": is not a regular file; an ini file is expected there");
  }
  errno = 0;
  std::ifstream input(file, std::ios::binary);
  if (!input && errno == ENOENT) return {};
  std::string text{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  if (!input || input.bad()) {
    throw HostError(file.string() + ": cannot be read: " + std::strerror(errno));
  }
  return text;
}

}  // namespace

IniFile IniFile::load(const std::filesystem::path& file) {
  return parse(readWhole(file), file.string());
}

IniFile IniFile::parse(const std::string& text, const std::string& name) {
  CSimpleIniCaseA source;
  source.SetMultiKey(true);
  source.SetAllowKeyOnly(true);
  if (source.LoadData(text) < 0) throw HostError(name + ": is not an ini file");

  IniFile file;
  CSimpleIniCaseA::TNamesDepend sections;
  source.GetAllSections(sections);
  sections.sort(CSimpleIniCaseA::Entry::LoadOrder());
  for (const auto& section : sections) {
    CSimpleIniCaseA::TNamesDepend keys;
    source.GetAllKeys(section.pItem, keys);
    keys.sort(CSimpleIniCaseA::Entry::LoadOrder());
    for (const auto& key : keys) {
      CSimpleIniCaseA::TNamesDepend values;
      source.GetAllValues(section.pItem, key.pItem, values);
      Entry entry{section.pItem, key.pItem, values.front().pItem};
      if (values.size() > 1) {
        throw HostError(describe(name, entry) + "the entry stands there twice; keep one");
      }
      file.m_entries.push_back(std::move(entry));
    }
  }
  return file;
}

const std::string* IniFile::find(std::string_view section, std::string_view name) const {
  for (const Entry& entry : m_entries) {
    if (entry.section == section && entry.name == name) return &entry.value;
  }
  return nullptr;
}

void IniFile::set(std::string_view section, std::string_view name, std::string_view value) {
  for (Entry& entry : m_entries) {
    if (entry.section == section && entry.name == name) {
      entry.value = value;
      return;
    }
  }
  m_entries.push_back({std::string(section), std::string(name), std::string(value)});
}

std::string describe(const std::string& file, const IniFile::Entry& entry) {
  return file + ": [" + entry.section + "] " + entry.name + " = \"" + entry.value + "\": ";
}

}  // namespace EventSystemHost
