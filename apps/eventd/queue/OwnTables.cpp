#include "apps/eventd/queue/OwnTables.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "apps/common/Failure.h"
#include "host/files/PrivateFiles.h"

namespace EventApps {
namespace {

constexpr const char* kKeys = "eventdkeys";
constexpr const char* kProbe = "eventdprobe";
constexpr const char* kProbeRow = "1";
constexpr const char* kDefinitions =
    "; The tables that eventd keeps for itself; written at each start.\n"
    "\n"
    "; The idempotency keys of requests.\n"
    "[eventdkeys]\n"
    "deferrable = yes\n"
    "column.1 = id bigint key\n"
    "column.2 = request text\n"
    "column.3 = body text\n"
    "column.4 = position int\n"
    "column.5 = dataselection int\n"
    "column.6 = eventid bigint\n"
    "column.7 = event text\n"
    "column.8 = time bigint\n"
    "column.9 = settled int\n"
    "\n"
    "; One row, written to find out whether writing works: more than an event takes.\n"
    "[eventdprobe]\n"
    "column.1 = id int key\n"
    "column.2 = text text\n";

constexpr std::size_t kProbeBytes = 12u << 10;
constexpr char kFirstLetter = 'a';
constexpr char kLastLetter = 'z';

bool holds(const std::filesystem::path& file, const std::string& text) {
  std::ifstream input(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(input), {}) == text;
}

OrbDB::CTable openTable(const EventSystemHost::Host& host, const char* name) {
  const auto& configuration = host.configuration();
  const std::filesystem::path file = configuration.databaseDirectory / "eventd-tables.ini";
  if (!holds(file, kDefinitions)) EventSystemHost::writePrivateFile(file, kDefinitions);
  auto& database = OrbDB::COrbDatabase::Instance();
  if (database.CheckAddTable(name, file.c_str()) == 0) {
    if (const OrbDB::CTable* const table = database.GetTable(name)) return *table;
  }
  const std::string lack = host.lackOfSpace();
  throw Failure(configuration.databaseFile.string() + ": the table " + name +
                " cannot be created as " + file.string() + " defines it; " +
                (lack.empty() ? "the log says why" : lack));
}

}  // namespace

OrbDB::CTable openKeyTable(const EventSystemHost::Host& host) {
  return openTable(host, kKeys);
}

// Other letters than the last time, because the same text would not be written.
void WriteProbe::write() {
  if (!m_table) m_table.emplace(openTable(m_host, kProbe));
  m_letter = m_letter == kLastLetter ? kFirstLetter : static_cast<char>(m_letter + 1);
  const std::string text = '"' + std::string(kProbeBytes, m_letter) + '"';
  const int status = m_table->readRecord(kProbeRow) == 0
                         ? m_table->updateRecord(kProbeRow, ("text=" + text).c_str())
                         : m_table->addRecord(("1," + text).c_str(), nullptr, 0);
  if (status < 1) return;
  const std::string lack = m_host.lackOfSpace();
  throw Failure(lack.empty() ? m_host.configuration().databaseFile.string() +
                                   ": cannot be written (database status " +
                                   std::to_string(status) + "); the log says why"
                             : lack);
}

}  // namespace EventApps
