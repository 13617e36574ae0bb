#include "tests/fuzz/AuditStore.h"

#include "tests/fuzz/Target.h"
#include "tests/support/FakeHost.h"

namespace EventSystemTest {

class AuditStore::Store : public EventSystem::OrbDBEventStorage {
 public:
  int writeEvent(EventSystem::Event* event) override {
    constexpr std::size_t kTooMany = 100000;
    require(events.size() < kTooMany, "the import does not end");
    char text[32768];
    event->toString(text, sizeof text);
    events.emplace_back(text);
    return events.size() == refused ? 50 : 0;
  }

  std::vector<std::string> events;
  unsigned int refused = 0;
};

AuditStore::AuditStore() : m_file(m_directory.path() / "audit.db") {
  host().reset();
  FakeConfiguration configuration;
  configuration.auditDirectory = m_directory.path().string();
  host().configure(configuration);
  m_store = std::make_unique<Store>();
}

AuditStore::~AuditStore() = default;

void AuditStore::removeFiles() const {
  std::error_code ignored;
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
    std::filesystem::remove(m_file.string() + suffix, ignored);
  }
}

unsigned int AuditStore::run(unsigned int refused) {
  host().clearCalls();
  m_store->events.clear();
  m_store->refused = refused;
  return m_store->PopuAuditEventDB(false);
}

const std::vector<std::string>& AuditStore::events() const {
  return m_store->events;
}

}  // namespace EventSystemTest
