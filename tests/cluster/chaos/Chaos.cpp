#include "tests/cluster/chaos/Chaos.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "host/cluster/MemberProbe.h"
#include "tests/cluster/Eventually.h"
#include "tests/cluster/chaos/Queues.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using std::chrono::milliseconds;

constexpr milliseconds kLook{10};
constexpr long kProgress = 5;  // events of each host after each storm
constexpr char kQueue[] = "events";

// What one call of a host may take: one that hardly rides out an election, one that does, one that
// does not.
constexpr std::array<milliseconds, 3> kDeadlines = {milliseconds(2500), milliseconds(6000),
                                                    milliseconds(900)};

// As an operator is advised to run it, with so little history that much of it is dropped.
EtcdOptions etcdOptions(int nodes) {
  EtcdOptions options;
  options.members = nodes;
  options.arguments = {"--auto-compaction-mode=revision", "--auto-compaction-retention=500",
                       "--experimental-initial-corrupt-check=true"};
  options.directory = TempDir::inMemory();
  return options;
}

// What the event was named by its writer.
std::string nameIn(const std::string& eventString) {
  constexpr std::string_view kBegin = "payload:";
  const std::size_t begin = eventString.find(kBegin);
  if (begin == eventString.npos) return eventString;
  const std::size_t from = begin + kBegin.size();
  return eventString.substr(from, eventString.find(';', from) - from);
}

}  // namespace

Chaos::Chaos(std::uint64_t seed, const ScheduleLimits& limits)
    : m_seed(seed),
      m_limits(limits),
      m_directory(TempDir::inMemory()),
      m_etcd(etcdOptions(limits.nodes)),
      m_links(m_etcd.endpoints(), limits.hosts) {
  for (int i = 0; i < limits.hosts; ++i) {
    m_hosts.emplace_back(
        MemberOptions{m_directory.path(), "host" + std::to_string(i), m_links.endpointsFor(i),
                      kDeadlines.at(static_cast<std::size_t>(i) % kDeadlines.size()), i > 0});
  }
}

std::vector<Storm> Chaos::schedule(std::uint64_t epoch) const {
  return makeSchedule(m_seed, epoch, m_limits);
}

HistoryVerdict Chaos::run(std::uint64_t epoch) {
  m_epoch = epoch;
  for (Host& host : m_hosts) startHost(host);
  for (const Storm& each : schedule(epoch)) {
    storm(each);
    heal();
    waitForProgress();
  }
  stopHosts();
  copyRows();
  takeJournals();
  readTheRest();
  return m_ledger.close();
}

// Lateness moves the faults that follow but leaves none out.
void Chaos::storm(const Storm& storm) {
  const auto start = Clock::now();
  auto next = storm.begin();
  while (next != storm.end() || !m_active.empty()) {
    const auto time = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
    for (; next != storm.end() && next->begin <= time; ++next) begin(*next);
    const auto over = std::partition(m_active.begin(), m_active.end(),
                                     [&](const Active& each) { return each.step.end > time; });
    const std::vector<Active> ended(over, m_active.end());
    m_active.erase(over, m_active.end());
    for (const Active& each : ended) end(each);
    superviseHosts();
    std::this_thread::sleep_for(kLook);
  }
}

void Chaos::begin(const Step& step) {
  ++m_figures.faults.at(static_cast<std::size_t>(step.fault));
  const Active active{step, step.leader ? leaderOr(step.node) : step.node};
  switch (step.fault) {
    case Fault::kKillHost:
    case Fault::kStopHost:
    case Fault::kCopy:
      beginAtHost(step);
      break;
    case Fault::kRefuse:
    case Fault::kSwallow:
    case Fault::kSilence:
    case Fault::kLoseAnswers:
      m_links.harm(step.fault, step.host, active.node);
      break;
    default:
      beginAtNodes(step.fault, active.node);
  }
  m_active.push_back(active);
}

void Chaos::end(const Active& active) {
  switch (active.step.fault) {
    case Fault::kKillHost:
    case Fault::kStopHost:
    case Fault::kCopy:
      return endAtHost(active.step);
    case Fault::kRefuse:
    case Fault::kSwallow:
    case Fault::kSilence:
    case Fault::kLoseAnswers:
      return m_links.mend(active.step.fault, active.step.host, active.node);
    default:
      return endAtNodes(active.step.fault, active.node);
  }
}

std::vector<int> Chaos::nodesOf(Fault fault, int node) const {
  int count = 1;
  if (fault == Fault::kKillMajority || fault == Fault::kStopMajority)
    count = m_limits.nodes / 2 + 1;
  if (fault == Fault::kKillAllNodes) count = m_limits.nodes;
  std::vector<int> nodes;
  for (int i = 0; i < count; ++i) nodes.push_back((node + i) % m_limits.nodes);
  return nodes;
}

void Chaos::beginAtNodes(Fault fault, int node) {
  const bool stop = fault == Fault::kStopNode || fault == Fault::kStopMajority;
  for (const int each : nodesOf(fault, node)) {
    if (stop) {
      m_etcd.pause(each);
    } else {
      m_etcd.kill(each);
    }
  }
}

void Chaos::endAtNodes(Fault fault, int node) {
  const bool stopped = fault == Fault::kStopNode || fault == Fault::kStopMajority;
  for (const int each : nodesOf(fault, node)) {
    if (stopped) {
      m_etcd.resume(each);
    } else if (!m_etcd.running(each)) {
      m_etcd.start(each);
    }
  }
}

void Chaos::beginAtHost(const Step& step) {
  Host& host = *std::next(m_hosts.begin(), step.host);
  if (step.fault == Fault::kStopHost) return host.member.signal(SIGSTOP);
  host.member.kill();
  host.alive = false;
  ++host.held;
  if (step.fault == Fault::kCopy) host.member.addRows(step.rows, m_epoch);
}

void Chaos::endAtHost(const Step& step) {
  Host& host = *std::next(m_hosts.begin(), step.host);
  if (step.fault == Fault::kStopHost) return host.member.signal(SIGCONT);
  --host.held;
}

// Asked for at the nodes, past the links.
int Chaos::leaderOr(int node) {
  ClusterConfiguration configuration = m_etcd.configuration();
  configuration.deadline = milliseconds(400);
  const auto members = EventSystemHost::probeMembers(configuration);
  const auto leader = std::find_if(members.begin(), members.end(), [](const auto& member) {
    return member.reachable && member.leader;
  });
  if (leader == members.end()) return node;
  ++m_figures.leaders;
  return static_cast<int>(leader - members.begin());
}

void Chaos::startHost(Host& host) {
  host.member.start(m_seed + 1000 * m_epoch, m_epoch);
  host.alive = true;
}

// A host that was not let in tries again, as a service manager would have it.
void Chaos::superviseHosts() {
  for (Host& host : m_hosts) {
    if (host.held > 0 || host.member.running()) continue;
    if (host.alive) {
      const int status = host.member.status();
      if (status != kRefusedStart) {
        throw std::runtime_error(host.member.name() + " has ended with status " +
                                 std::to_string(status));
      }
      ++m_figures.refusedStarts;
    }
    startHost(host);
  }
}

void Chaos::heal() {
  m_links.mendAll();
  for (int node = 0; node < m_limits.nodes; ++node) {
    m_etcd.resume(node);
    if (!m_etcd.running(node)) m_etcd.start(node);
  }
  for (const Host& host : m_hosts) host.member.signal(SIGCONT);
  m_etcd.waitUntilServing();
}

void Chaos::waitForProgress() {
  takeJournals();
  std::vector<long> goals;
  for (const Host& host : m_hosts) {
    goals.push_back(m_ledger.writtenBy(host.member.name()) + kProgress);
  }
  const auto reached = [&] {
    superviseHosts();
    takeJournals();
    return std::equal(goals.begin(), goals.end(), m_hosts.begin(),
                      [&](long goal, const Host& host) {
                        return m_ledger.writtenBy(host.member.name()) >= goal;
                      });
  };
  if (!eventually(reached)) throw std::runtime_error("all is healed, and a host writes nothing");
}

void Chaos::stopHosts() {
  for (Host& host : m_hosts) host.member.signal(SIGTERM);
  const auto over = [this] {
    return std::none_of(m_hosts.begin(), m_hosts.end(),
                        [](Host& host) { return host.member.running(); });
  };
  if (!eventually(over)) throw std::runtime_error("a host does not end when it is told to");
  for (Host& host : m_hosts) {
    host.alive = false;
    const int status = host.member.status();
    // Told so before it had taken note of who may tell it.
    if (status == 0 || status == -SIGTERM) continue;
    throw std::runtime_error(host.member.name() + " has ended with status " +
                             std::to_string(status));
  }
}

void Chaos::copyRows() {
  for (Host& host : m_hosts) host.member.copyRows(m_epoch);
}

void Chaos::takeJournals() {
  for (Host& host : m_hosts) m_ledger.take(host.member.name(), host.member.more());
}

void Chaos::readTheRest() {
  ClusterClient client(m_etcd.configuration());
  for (const unsigned int dsid : std::set(kChaosQueues.begin(), kChaosQueues.end())) {
    std::vector<unsigned long> ids;
    for (unsigned long last = 0;;) {
      unsigned long id = 0;
      std::string member;
      std::string text;
      if (client.getNextEvent(kQueue, last, id, member, text, dsid) != 0) {
        throw std::runtime_error("all is healed, and the rest cannot be read");
      }
      if (id == 0) break;
      m_ledger.left(dsid, id, nameIn(text));
      ids.push_back(last = id);
    }
    for (const unsigned long id : ids) {
      if (client.deleteEventById(kQueue, id, dsid) != 0) {
        throw std::runtime_error("all is healed, and an event cannot be deleted");
      }
    }
  }
}

}  // namespace EventSystemTest
