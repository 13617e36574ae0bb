// Stores for the manager's tests: every operation is noted and does what the test says.
//
// Thread safety: none beyond what the manager's mutex gives.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_SCRIPTEDSTORES_H
#define EVENTSYSTEM_TESTS_SUPPORT_SCRIPTEDSTORES_H

#include <functional>
#include <string>
#include <vector>

#include "EventSystem/DSEventStorage.h"
#include "EventSystem/EventStorage.h"

namespace EventSystemTest {

// What both stores of one manager share.
struct StoreScript {
  std::vector<std::string> calls;       // "global writeEvent", "ds deleteEvent 5 7", ...
  std::function<int()> onCall;          // result of the operation; may throw; empty: 0
  std::function<int()> onDSCheck;       // of the data-selection store's check; empty: onCall
  EventSystem::Event* given = nullptr;  // what getNextEvent gives

  int play(const std::string& call) {
    calls.push_back(call);
    return onCall ? onCall() : 0;
  }
};

class ScriptedGlobalStore : public EventSystem::EventStorage {
 public:
  explicit ScriptedGlobalStore(StoreScript& script) : m_script(script) {}
  ~ScriptedGlobalStore() override { m_script.calls.push_back("global deleted"); }

  int readEvent(unsigned long, EventSystem::Event**) override { return 0; }
  int getNextEvent(unsigned long afterId, EventSystem::Event** event) override {
    *event = m_script.given;
    return m_script.play("global getNextEvent " + std::to_string(afterId));
  }
  int writeEvent(EventSystem::Event*) override { return m_script.play("global writeEvent"); }
  void deleteEvent(unsigned long id) override {
    m_script.play("global deleteEvent " + std::to_string(id));
  }
  int checkConsistency(bool fix) override {
    return m_script.play(fix ? "global fix" : "global check");
  }
  int populateIdCache() override { return 0; }

 private:
  StoreScript& m_script;
};

class ScriptedDSStore : public EventSystem::DSEventStorage {
 public:
  explicit ScriptedDSStore(StoreScript& script) : m_script(script) {}
  ~ScriptedDSStore() override { m_script.calls.push_back("ds deleted"); }

  int readEvent(unsigned long, EventSystem::Event**, unsigned int) override { return 0; }
  int getNextEvent(unsigned long afterId, EventSystem::Event** event, unsigned int dsid) override {
    *event = m_script.given;
    return m_script.play("ds getNextEvent " + std::to_string(afterId) + " " + std::to_string(dsid));
  }
  int writeEvent(EventSystem::Event*, unsigned int dsid) override {
    return m_script.play("ds writeEvent " + std::to_string(dsid));
  }
  void deleteEvent(unsigned long id, unsigned int dsid) override {
    m_script.play("ds deleteEvent " + std::to_string(id) + " " + std::to_string(dsid));
  }
  void deleteDataSelection(unsigned int) override {}
  int checkConsistency(bool fix) override {
    const std::string call = fix ? "ds fix" : "ds check";
    if (!m_script.onDSCheck) return m_script.play(call);
    m_script.calls.push_back(call);
    return m_script.onDSCheck();
  }
  int getFirstDsid(unsigned int& dsid) override { return static_cast<int>(dsid = 0); }
  int populateIdCache() override { return 0; }

 private:
  StoreScript& m_script;
};

}  // namespace EventSystemTest

#endif
