#include "bench/cluster/LibraryQueue.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <stdexcept>

#include "EventSystem/ImageRepEvent.h"

namespace Bench {
namespace {

constexpr unsigned int kGlobal = 0;

void check(int result, const char* call) {
  if (result != 0) throw std::runtime_error(std::string(call) + " failed");
}

}  // namespace

std::unique_ptr<EventSystem::Event> sampleEvent() {
  std::string path = "/var/lib/eventsystem/replication/images/2026-11-21/catalog_00001234.img";
  return std::make_unique<EventSystem::ImageRepEvent>(path.data(), 4096, 0, "VolumeOfTheBenchmark");
}

std::string sampleText() {
  std::array<char, 2048> text{};
  sampleEvent()->toString(text.data(), text.size());
  return text.data();
}

LibraryQueue::LibraryQueue(const std::vector<std::string>& endpoints, const std::string& queue)
    : m_event(sampleEvent()) {
  std::ofstream configuration(m_home.path() / "host.ini");
  configuration << "[cluster]\ncluster_mode = 1\nqueue = " << queue << "\nmember = " << kMember
                << getpid() << "\nendpoints = ";
  for (const std::string& endpoint : endpoints) configuration << endpoint << ',';
  configuration.seekp(-1, std::ios::cur);
  configuration << "\n";
  configuration.close();
  EventSystemHost::HostOptions options;
  options.home = m_home.path();
  m_host = std::make_unique<EventSystemHost::Host>(options);
  m_manager = std::make_unique<EventSystem::EventManager>();
}

void LibraryQueue::add() {
  check(m_manager->newEvent(m_event.get(), kGlobal), "newEvent");
}

unsigned long LibraryQueue::nextOf(unsigned int dsid, unsigned long afterId) {
  EventSystem::Event* found = nullptr;
  check(m_manager->getNextEvent(afterId, &found, dsid), "getNextEvent");
  const std::unique_ptr<EventSystem::Event> owned(found);
  return owned ? owned->getId() : 0;
}

void LibraryQueue::remove(unsigned long id) {
  m_manager->deleteEvent(id, kGlobal);
}

}  // namespace Bench
