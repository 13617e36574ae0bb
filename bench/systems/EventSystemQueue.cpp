// This library on its reference host, in this process.

#include <array>
#include <fstream>
#include <memory>

#include "EventSystem/Event.h"
#include "EventSystem/EventManager.h"
#include "bench/systems/Systems.h"
#include "host/Host.h"

namespace EventSystemBench {
namespace {

// What the stores themselves use; see docs/event-format.md.
constexpr std::size_t kEventStringBytes = 2048;

void require(int result, const char* call) {
  if (result != 0) throw SystemError(std::string(call) + " gave " + std::to_string(result));
}

class LibraryQueue : public Queue {
 public:
  // `host` is null where a call is as durable as wanted when it returns.
  LibraryQueue(EventSystem::EventManager& manager, EventSystemHost::Host* host)
      : m_manager(manager), m_host(host) {}

  std::uint64_t produce(const std::string& text) override {
    EventSystem::Event* parsed = nullptr;
    require(EventSystem::Event::fromString(text.c_str(), &parsed), "Event::fromString");
    const std::unique_ptr<EventSystem::Event> event(parsed);
    require(m_manager.newEvent(event.get(), 0), "newEvent");
    waitDurable();
    return event->getId();
  }

  std::optional<QueuedText> next(std::uint64_t after) override {
    EventSystem::Event* found = nullptr;
    require(m_manager.getNextEvent(after, &found, 0), "getNextEvent");
    const std::unique_ptr<EventSystem::Event> event(found);
    if (event == nullptr) return std::nullopt;
    std::array<char, kEventStringBytes> text;  // NOLINT(*-member-init): toString() fills it
    event->toString(text.data(), text.size());
    return QueuedText{event->getId(), text.data()};
  }

  void remove(std::uint64_t id) override {
    m_manager.deleteEvent(id, 0);
    waitDurable();
  }

 private:
  void waitDurable() {
    if (m_host != nullptr) require(m_host->waitDurable(), "waitDurable");
  }

  EventSystem::EventManager& m_manager;
  EventSystemHost::Host* m_host;
};

EventSystemHost::HostOptions optionsFor(const std::filesystem::path& directory,
                                        const std::string& durability) {
  std::ofstream(directory / "host.ini")
      << "[database]\ndurability = " << durability << "\n[log]\nlevel = warning\n";
  EventSystemHost::HostOptions options;
  options.home = directory;
  return options;
}

class Library : public System {
 public:
  Library(const std::filesystem::path& directory, const std::string& durability)
      : m_host(optionsFor(directory, durability)), m_waits(durability == "group") {}

  std::unique_ptr<Queue> connect() override {
    return std::make_unique<LibraryQueue>(m_manager, m_waits ? &m_host : nullptr);
  }

 private:
  EventSystemHost::Host m_host;
  EventSystem::EventManager m_manager;
  bool m_waits;
};

SystemEntry entry(const std::string& durability, Promise promise, const std::string& settings,
                  const std::string& wait) {
  return {"EventSystem " + durability,
          promise,
          "durability = " + durability + settings + "; log level warning; in this process",
          "Event::fromString, newEvent" + wait,
          "getNextEvent, toString",
          "deleteEvent" + wait,
          [durability](const std::filesystem::path& directory) {
            return std::make_unique<Library>(directory, durability);
          }};
}

}  // namespace

std::vector<SystemEntry> eventSystemEntries() {
  return {entry("strict", Promise::kDurable, " (the default): a flush for each event", ""),
          entry("group", Promise::kDurable, ": calls that wait together share a flush",
                ", waitDurable"),
          entry("relaxed", Promise::kRelaxed, ": no flush; survives the death of the process", "")};
}

}  // namespace EventSystemBench
