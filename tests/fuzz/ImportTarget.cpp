// The lines of `eventctl import`: what is taken is stored, and read back as the line has it.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "EventSystem/EventManager.h"
#include "apps/common/EventView.h"
#include "apps/common/ImportLine.h"
#include "apps/common/LineReader.h"
#include "apps/common/QueueNames.h"
#include "tests/fuzz/Target.h"
#include "tests/oracle/events/EventMembers.h"
#include "tests/support/FakeHost.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;

constexpr std::size_t kLongestLine = 4096;

// An input as a file that can be opened by its name.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view content) : m_descriptor(memfd_create("import", 0)) {
    while (!content.empty()) {
      const ssize_t written = ::write(m_descriptor, content.data(), content.size());
      require(written > 0, "the input cannot be written");
      content.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  ~MemoryFile() { ::close(m_descriptor); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string name() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

 private:
  int m_descriptor;
};

// The lines as they are plainly understood: ended by a line feed, the last one perhaps not; empty
// where one is too long.
std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    if (line.size() > kLongestLine) line.clear();
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

void replaceField(std::string& text, const char* key, const char* value) {
  const std::size_t start = text.find(key) + std::char_traits<char>::length(key);
  text.replace(start, text.find(';', start) - start, value);
}

// A text without what may look different and means the same: blanks, plus signs, leading zeros,
// small letters, the envelope's version and id, and the parts that a reader does without.
std::string essence(std::string text) {
  replaceField(text, "EVENT{version:", "");
  replaceField(text, ";id:", "");
  const std::size_t tag = text.find(";IMAGEREPEVENT");
  const std::size_t unit = text.find(";lsu:TarnwellVolume;IMAGEREPEVENT");
  if (unit < tag && tag == unit + 19) text.erase(unit, 19);
  const std::size_t activity = text.find("ACTIVITYEVENT");
  if (activity != std::string::npos && text[activity - 1] == '{') text.erase(activity - 1, 1);
  std::string found;
  bool inNumber = false;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == ' ' || c == '\t' || c == '+' || (c == '0' && !inNumber)) continue;
    inNumber = std::isxdigit(byte) != 0;
    found += static_cast<char>(std::toupper(byte));
  }
  return found;
}

class Queues {
 public:
  Queues()
      : m_lines(
            0, [](unsigned int dsid) { return dsid < 100000; },
            [this](unsigned int dsid) { return destination(dsid); }) {}

  void take(const std::string& line) {
    EventApps::ImportedEvent imported = m_lines.read(line);
    require((imported.event == nullptr) == !imported.problem.empty(), "taken and refused", line);
    if (imported.event == nullptr) return;
    const std::string text = line.starts_with("dsid=") ? line.substr(line.find(' ') + 1) : line;
    const auto stored = throughTheStore(*imported.event, imported.dsid);
    require(stored != nullptr, "what was taken is not stored", line);
    const auto meant = EventApps::parseEvent(text);
    setEnvelope(*meant, stored->getId(), meant->getDate());
    require(sameMembers(*meant, *stored), "stored as another event", line);
    require(essence(EventApps::eventStringOf(*stored)) == essence(text), "stored with a loss",
            line);
  }

 private:
  EventApps::Destination destination(unsigned int dsid) const {
    return {dsid, EventApps::isGlobalQueue(dsid) ? m_next : m_nextOfSelections, true};
  }

  // Stores it, reads it and removes it.
  std::unique_ptr<Event> throughTheStore(Event& event, unsigned int dsid) {
    const bool written = m_manager.newEvent(&event, dsid) == 0;
    host().clearCalls();
    if (!written) return nullptr;
    const unsigned long id = event.getId();
    (EventApps::isGlobalQueue(dsid) ? m_next : m_nextOfSelections) = id + 1;
    Event* read = nullptr;
    m_manager.getNextEvent(id - 1, &read, dsid);
    m_manager.deleteEvent(id, dsid);
    host().clearCalls();
    return std::unique_ptr<Event>(read);
  }

  // The manager finds the host as it is at the start.
  bool m_isReset = (host().reset(), true);
  EventSystem::EventManager m_manager;
  EventApps::ImportLines m_lines;
  unsigned long m_next = 1;
  unsigned long m_nextOfSelections = 1;
};

void import(EventApps::LineReader& reader, const std::vector<std::string>& lines) {
  static Queues queues;
  std::string line;
  std::size_t number = 0;
  for (auto result = reader.next(line); result != EventApps::LineReader::Result::kEnd;
       result = reader.next(line)) {
    require(number < lines.size(), "more lines than there are");
    const bool tooLong = result == EventApps::LineReader::Result::kTooLong;
    require((tooLong ? std::string() : line) == lines[number++], "another line", line);
    if (!tooLong && EventApps::ImportLines::carriesEvent(line)) queues.take(line);
  }
  require(number == lines.size(), "fewer lines than there are");
}

}  // namespace

void runTarget(std::string_view input) {
  host().clearCalls();
  const MemoryFile file(input);
  EventApps::LineReader reader(file.name(), kLongestLine);
  import(reader, linesOf(input));
}

}  // namespace EventSystemTest
