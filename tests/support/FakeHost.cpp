#include "tests/support/FakeHost.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostText.h"
#include "tests/support/FakeHostInternals.h"

namespace EventSystemTest {

namespace {

bool isLog(const Call& call) {
  return call.kind == CallKind::kLog && call.name != "TraceOn";
}
bool isTrace(const Call& call) {
  return call.name == "__Trace";
}

void throwAs(const Fault& fault) {
  switch (fault.mode) {
    case FaultMode::kFail:
      return;
    case FaultMode::kThrow:
      throw std::runtime_error(fault.what);
    case FaultMode::kThrowOdd:
      throw 42;
    case FaultMode::kThrowBadAlloc:
      throw std::bad_alloc();
  }
}

}  // namespace

FakeHost& host() {
  return FakeHost::instance();
}

FakeHost& FakeHost::instance() {
  static FakeHost theHost;
  return theHost;
}

FakeHost::FakeHost() : m_internals(std::make_unique<Internals>()) {
  m_internals->reset();
}

FakeHost::~FakeHost() = default;

void FakeHost::reset() {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_internals->reset();
  m_calls.clear();
  m_faults.clear();
  m_fired = 0;
  m_hook = nullptr;
  configure(FakeConfiguration());
}

void FakeHost::onCall(std::function<void(const Call&)> hook) {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_hook = std::move(hook);
}

std::optional<int> FakeHost::enter(Call call) {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  if (m_hook) m_hook(call);
  std::optional<int> status;
  std::optional<Fault> thrown;
  for (Armed& armed : m_faults) {
    if (!matches(armed.fault, call)) continue;
    ++armed.seen;
    if (armed.fault.nth != 0 && armed.fault.nth != armed.seen) continue;
    ++m_fired;
    if (armed.fault.mode == FaultMode::kFail) {
      status = armed.fault.status;
    } else {
      thrown = armed.fault;
    }
  }
  m_calls.push_back(std::move(call));
  if (thrown) throwAs(*thrown);
  return status;
}

bool FakeHost::matches(const Fault& fault, const Call& call) const {
  return (fault.call.empty() || fault.call == call.name) &&
         (fault.kinds.empty() || fault.kinds.count(call.kind) != 0) &&
         (fault.arguments.empty() || call.arguments.find(fault.arguments) != std::string::npos);
}

std::vector<Call> FakeHost::calls() const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  return m_calls;
}

std::vector<Call> FakeHost::calls(const std::function<bool(const Call&)>& wanted) const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  std::vector<Call> found;
  std::copy_if(m_calls.begin(), m_calls.end(), std::back_inserter(found), wanted);
  return found;
}

void FakeHost::clearCalls() {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_calls.clear();
}

std::size_t FakeHost::countCalls() const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  return m_calls.size();
}

std::size_t FakeHost::countCalls(CallKind kind) const {
  return countCalls(std::set<CallKind>{kind});
}

std::size_t FakeHost::countCalls(const std::set<CallKind>& kinds) const {
  return calls([&kinds](const Call& call) { return kinds.count(call.kind) != 0; }).size();
}

std::size_t FakeHost::countCalls(const std::string& name) const {
  return calls([&name](const Call& call) { return call.name == name; }).size();
}

std::vector<LogLine> FakeHost::log() const {
  std::vector<LogLine> lines;
  for (const Call& call : calls(isLog)) lines.push_back(call.line);
  return lines;
}

std::vector<std::string> FakeHost::traces() const {
  std::vector<std::string> texts;
  for (const Call& call : calls(isTrace)) texts.push_back(call.line.text);
  return texts;
}

std::vector<LogLine> FakeHost::logAndTraces() const {
  std::vector<LogLine> lines;
  for (const Call& call : calls([](const Call& c) { return isLog(c) || isTrace(c); })) {
    lines.push_back(call.line);
  }
  return lines;
}

std::vector<std::string> FakeHost::databaseCalls() const {
  return callsNamed({"GetTable", "CheckAddTable", "insertRecordsFromIni", "open", "readRecord",
                     "GetValStr", "GetValBigInt", "GetValInt", "addRecord", "updateRecord",
                     "deleteRecord", "ListRecordsStart", "ListRecordsNext"});
}

std::vector<std::string> FakeHost::clusterCalls() const {
  return callsNamed(
      {"ClusterAPI::newEvent", "ClusterAPI::getNextEvent", "ClusterAPI::deleteEventById"});
}

std::vector<std::string> FakeHost::callsNamed(const std::set<std::string>& names) const {
  std::vector<std::string> texts;
  for (const Call& call : calls([&names](const Call& c) { return names.count(c.name) != 0; })) {
    texts.push_back(call.text());
  }
  return texts;
}

void FakeHost::configure(const FakeConfiguration& configuration) {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_internals->configuration = configuration;
  configManager.clusterMode = configuration.clusterMode ? 1 : 0;
  kvrstrcpy(configManager.databaseConfigDirectory, configuration.databaseDirectory.c_str(),
            sizeof configManager.databaseConfigDirectory);
  kvrstrcpy(configManager.clusterQueue, configuration.clusterQueue.c_str(),
            sizeof configManager.clusterQueue);
  kvrstrcpy(configManager.clusterMember, configuration.clusterMember.c_str(),
            sizeof configManager.clusterMember);
  kvrstrcpy(configManager.configFile, configuration.configFile.c_str(),
            sizeof configManager.configFile);
}

FakeConfiguration FakeHost::configuration() const {
  return m_internals->configuration;
}

void FakeHost::setTracing(bool on) {
  m_internals->tracing = on;
}

void FakeHost::setClock(long now) {
  m_internals->clock = now;
}

void FakeHost::setDataSelectionValid(unsigned int dsid, bool valid) {
  if (valid) {
    m_internals->invalidDataSelections.erase(dsid);
  } else {
    m_internals->invalidDataSelections.insert(dsid);
  }
}

int FakeHost::heldConfigurationLocks() const {
  return m_internals->configurationLocks;
}

FakeTable& FakeHost::table(const std::string& name) {
  FakeTable* found = m_internals->find(name);
  if (found == nullptr) throw std::logic_error("the fake host has no table " + name);
  return *found;
}

bool FakeHost::hasTable(const std::string& name) const {
  return m_internals->find(name) != nullptr;
}

void FakeHost::dropTable(const std::string& name) {
  m_internals->tables.erase(name);
}

int FakeHost::liveHandles() const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  return m_internals->liveHandles;
}

std::map<unsigned long, FakeHost::ClusterEvent> FakeHost::clusterQueue(unsigned int dsid) const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  const auto found = m_internals->cluster.find(dsid);
  return found == m_internals->cluster.end() ? std::map<unsigned long, ClusterEvent>()
                                             : found->second;
}

bool FakeHost::isInside() {
  return Guard::depth > 0;
}

void FakeHost::inject(const Fault& fault) {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_faults.push_back(Armed{fault});
}

void FakeHost::clearFaults() {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  m_faults.clear();
}

std::size_t FakeHost::faultsFired() const {
  const std::lock_guard<std::recursive_mutex> lock(m_internals->mutex);
  return m_fired;
}

std::unique_ptr<FakeTable> FakeHost::Internals::define(const std::string& name) {
  const FakeColumn id{"id"};
  const std::vector<FakeColumn> event = {
      id, {"eventid"}, {"type"}, {"date"}, {"eventstring", ColumnType::kText}};
  if (name == "events") return std::make_unique<FakeTable>(name, event, false);
  if (name == "dsevents") {
    std::vector<FakeColumn> columns = event;
    columns.push_back({"dataselection"});
    return std::make_unique<FakeTable>(name, columns, false);
  }
  if (name == "eventproperties") {
    return std::make_unique<FakeTable>(
        name, std::vector<FakeColumn>{id, {"propname", ColumnType::kText}, {"propvalue"}}, true);
  }
  if (name == "dataselection") {
    return std::make_unique<FakeTable>(name, std::vector<FakeColumn>{id, {"dstypeid"}}, false);
  }
  return nullptr;
}

FakeTable* FakeHost::Internals::find(const std::string& name) {
  const auto found = tables.find(name);
  return found == tables.end() ? nullptr : found->second.get();
}

void FakeHost::Internals::reset() {
  tables.clear();
  for (const char* name : {"events", "eventproperties", "dsevents", "dataselection"}) {
    tables[name] = define(name);
  }
  tables["eventproperties"]->put({"1", "maxid", "0"});
  loadedFiles.clear();
  invalidDataSelections.clear();
  tracing = false;
  clock = 0;
  cluster.clear();
  clusterMaxIds.clear();
  clusterCopies.clear();
}

std::ostream& operator<<(std::ostream& out, const Call& call) {
  return out << call.text();
}

}  // namespace EventSystemTest
