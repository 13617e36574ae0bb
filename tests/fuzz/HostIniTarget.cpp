// host.ini and OrbCentral.ini: refused with a message, or a configuration within its limits; and
// the same texts as an ini file that the library's calls read.

#include <charconv>
#include <cstring>
#include <fstream>
#include <vector>

#include "EventSystem/platform/HostConfig.h"
#include "host/Host.h"
#include "host/config/ConfigurationLoader.h"
#include "host/config/IniFile.h"
#include "tests/fuzz/Target.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using namespace EventSystemHost;

bool within(const HostConfiguration& values) {
  const bool limits = values.ageLimitDays >= 0 && values.ageLimitDays <= 24855 &&
                      values.countLimit >= 0 && values.logMaxBytes >= 1024 &&
                      values.logMaxFiles >= 1 && values.logMaxFiles <= 1000;
  const bool texts = !values.clusterQueue.empty() && values.clusterQueue.size() <= 128 &&
                     !values.serverName.empty() && values.serverName.size() <= 1023;
  const auto milliseconds = values.cluster.deadline.count();
  return limits && texts && !values.cluster.endpoints.empty() && milliseconds >= 100 &&
         milliseconds <= 600000;
}

std::string valueOf(const IniFile::Entry& entry, const char* path, unsigned int size) {
  std::vector<char> value(size, 'x');
  InifileGetValueA(entry.section.c_str(), entry.name.c_str(), value.data(), size, "", path);
  require(std::memchr(value.data(), '\0', size) != nullptr, "a value without its end");
  return value.data();
}

int numberOf(const IniFile::Entry& entry, const char* path) {
  int number = 0;
  InifileGetIntegerA(entry.section.c_str(), entry.name.c_str(), &number, -77, path);
  return number;
}

// What a strict reader makes of the text.
int numberIn(const std::string& text) {
  std::size_t at = text.starts_with('-') ? 1 : 0;
  long number = 0;
  if (at == text.size()) return -77;
  for (; at < text.size(); ++at) {
    if (text[at] < '0' || text[at] > '9') return -77;
    number = 10 * number + (text[at] - '0');
    if (number > (1l << 31)) return -77;
  }
  if (text[0] == '-') number = -number;
  return number == (1l << 31) ? -77 : static_cast<int>(number);
}

void checkEntries(const std::filesystem::path& file) {
  std::vector<IniFile::Entry> entries;
  bool refused = false;
  try {
    entries = IniFile::load(file).entries();
  } catch (const HostError&) {
    refused = true;
  }
  require((InifileLoadA(file.c_str()) == 0) != refused, "two readings of one file differ");
  for (const IniFile::Entry& entry : entries) {
    require(valueOf(entry, file.c_str(), 65536) == entry.value.substr(0, 65535),
            "a value that is not in the file", entry.name);
    require(valueOf(entry, file.c_str(), 5) == entry.value.substr(0, 4), "a cut value");
    require(numberOf(entry, file.c_str()) == numberIn(entry.value), "a number", entry.value);
  }
  InifileReleaseA(file.c_str());
}

}  // namespace

// The text of host.ini, a NUL, the text of OrbCentral.ini.
void runTarget(std::string_view input) {
  static const TempDir home(TempDir::inMemory());
  const std::filesystem::path hostFile = home.path() / "host.ini";
  const std::filesystem::path limitsFile = home.path() / "OrbCentral.ini";
  std::ofstream(hostFile, std::ios::binary) << takeText(input);
  std::ofstream(limitsFile, std::ios::binary) << input;
  checkEntries(hostFile);
  checkEntries(limitsFile);
  try {
    const auto configuration = loadConfiguration(home.path(), Durability::kStrict);
    require(within(configuration), "a configuration beyond its limits");
  } catch (const HostError&) {
  }
}

}  // namespace EventSystemTest
