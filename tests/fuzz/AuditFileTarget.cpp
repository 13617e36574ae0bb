// The audit database as any bytes: whatever the file says, a run of the import ends, says how, and
// queues events only that read as they were queued.

#include <fstream>

#include "EventSystem/Event.h"
#include "tests/fuzz/AuditStore.h"
#include "tests/fuzz/Target.h"

namespace EventSystemTest {
namespace {

void write(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void requireAuditEvents(const AuditStore& store) {
  for (const std::string& text : store.events()) {
    EventSystem::Event* parsed = nullptr;
    EventSystem::Event::fromString(text.c_str(), &parsed);
    const std::unique_ptr<EventSystem::Event> event(parsed);
    require(event != nullptr && event->getType() == EventSystem::kAuditEvent, "no audit event",
            text);
  }
}

// Where the file ends and the one beside it begins, in units of 512 bytes, is in the first byte
// when it is not 0.
void writeFiles(const AuditStore& store, std::string_view input) {
  const auto layout = static_cast<unsigned char>(input.empty() ? 0 : input[0]);
  input.remove_prefix(input.empty() ? 0 : 1);
  const std::size_t end = layout == 0 ? input.size() : (layout >> 1) * std::size_t{512};
  write(store.file(), input.substr(0, end));
  if (end < input.size())
    write((layout & 1) != 0 ? store.wal() : store.journal(), input.substr(end));
}

}  // namespace

void runTarget(std::string_view input) {
  static AuditStore store;
  store.removeFiles();
  writeFiles(store, input);
  // A second run meets what the first has left.
  for (int run = 0; run < 2; ++run) {
    const unsigned int result = store.run();
    require(result == 0 || result == 4 || result == 9, "another result", std::to_string(result));
    requireAuditEvents(store);
  }
}

}  // namespace EventSystemTest
