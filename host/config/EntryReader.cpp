#include "host/config/EntryReader.h"

#include <algorithm>

#include "host/Host.h"
#include "host/config/IniFile.h"

namespace EventSystemHost {

namespace {

constexpr std::size_t kMaxPath = 4095;

std::string sectionsOf(const std::vector<KnownEntry>& known) {
  std::string sections;
  for (const KnownEntry& candidate : known) {
    if (sections.find("[" + candidate.section + "]") != std::string::npos) continue;
    sections.append(" [").append(candidate.section).append("]");
  }
  return sections;
}

std::string entriesOf(const std::vector<KnownEntry>& known, const std::string& section) {
  std::string entries;
  for (const KnownEntry& candidate : known) {
    if (candidate.section == section) entries.append(" ").append(candidate.name);
  }
  return entries;
}

std::string whyUnknown(const std::vector<KnownEntry>& known, const std::string& section) {
  const std::string entries = entriesOf(known, section);
  return entries.empty() ? "unknown section; the sections are" + sectionsOf(known)
                         : "unknown entry; the entries of this section are" + entries;
}

}  // namespace

void readEntries(const std::filesystem::path& file, const std::vector<KnownEntry>& known) {
  const IniFile ini = IniFile::load(file);
  for (const IniFile::Entry& entry : ini.entries()) {
    const auto found = std::find_if(known.begin(), known.end(), [&](const KnownEntry& candidate) {
      return candidate.section == entry.section && candidate.name == entry.name;
    });
    if (found == known.end()) {
      throw HostError(describe(file, entry) + whyUnknown(known, entry.section));
    }
    try {
      found->read(entry.value);
    } catch (const NotAllowed& problem) {
      throw HostError(describe(file, entry) + "allowed is " + problem.allowed);
    }
  }
}

EntryReader switchEntry(bool& target) {
  return [&target](const std::string& value) {
    int number = 0;
    numberEntry(number, 0, 1)(value);
    target = number == 1;
  };
}

EntryReader textEntry(std::string& target, std::size_t maxLength) {
  return [&target, maxLength](const std::string& value) {
    if (value.empty() || value.size() > maxLength) {
      throw NotAllowed{"a text of 1 to " + std::to_string(maxLength) + " bytes"};
    }
    target = value;
  };
}

EntryReader pathEntry(std::filesystem::path& target, const std::filesystem::path& home) {
  return [&target, home](const std::string& value) {
    if (value.empty() || value.size() > kMaxPath) throw NotAllowed{"a path"};
    target = home / value;
  };
}

}  // namespace EventSystemHost
