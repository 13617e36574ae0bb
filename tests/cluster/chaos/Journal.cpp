#include "tests/cluster/chaos/Journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <sstream>
#include <stdexcept>
#include <string_view>

namespace EventSystemTest {
namespace {

constexpr std::string_view kKinds = "sekwWxrdDf";
constexpr const char* kNoText = "-";

long number(JournalEntry::Time time) {
  return std::chrono::nanoseconds(time.time_since_epoch()).count();
}

JournalEntry::Time timeOf(long number) {
  return JournalEntry::Time(std::chrono::nanoseconds(number));
}

}  // namespace

std::string toLine(const JournalEntry& entry) {
  std::ostringstream line;
  line << static_cast<char>(entry.kind) << ' ' << number(entry.begin) << ' ' << number(entry.end)
       << ' ' << entry.dsid << ' ' << entry.id << ' ' << entry.afterId << ' '
       << (entry.text.empty() ? kNoText : entry.text) << " .";
  return line.str();
}

std::optional<JournalEntry> parseLine(const std::string& line) {
  std::istringstream stream(line);
  JournalEntry entry;
  char kind = 0;
  long begin = 0;
  long end = 0;
  std::string stop;
  stream >> kind >> begin >> end >> entry.dsid >> entry.id >> entry.afterId >> entry.text >> stop;
  if (stop != "." || kKinds.find(kind) == kKinds.npos) return std::nullopt;
  entry.kind = static_cast<JournalEntry::Kind>(kind);
  entry.begin = timeOf(begin);
  entry.end = timeOf(end);
  if (entry.text == kNoText) entry.text.clear();
  return entry;
}

// The line that an earlier life has left unfinished ends here.
JournalWriter::JournalWriter(const std::filesystem::path& file)
    : m_file(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {
  append("\n");
}

void JournalWriter::write(const JournalEntry& entry) {
  append(toLine(entry) + "\n");
}

void JournalWriter::append(const std::string& text) {
  const ssize_t written = ::write(m_file.get(), text.data(), text.size());
  if (written != static_cast<ssize_t>(text.size())) {
    throw std::runtime_error("the journal cannot be written");
  }
}

std::vector<JournalEntry> JournalReader::more() {
  std::ifstream file(m_file, std::ios::binary);
  file.seekg(m_offset);
  std::vector<JournalEntry> entries;
  for (std::string line; std::getline(file, line) && !file.eof();) {
    m_offset += static_cast<std::streamoff>(line.size()) + 1;
    if (auto entry = parseLine(line)) entries.push_back(std::move(*entry));
  }
  return entries;
}

}  // namespace EventSystemTest
