#include "apps/eventctl/DemoCluster.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"
#include "apps/common/Table.h"
#include "apps/etcd_nodes/NodeGroup.h"
#include "apps/eventctl/DemoHome.h"
#include "apps/eventctl/DemoMembers.h"
#include "apps/eventctl/DemoProof.h"
#include "apps/eventctl/DemoStage.h"
#include "apps/eventctl/DemoTraffic.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/StopSignals.h"
#include "host/Host.h"

namespace EventApps {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;

constexpr unsigned long kOwnEvents = 20;    // of each host before the cluster
constexpr unsigned long kManyEvents = 200;  // enough to see that a host writes
constexpr milliseconds kMoment(2000);
constexpr std::array<unsigned int, 3> kQueues = {0, 4, 7};

std::string queueTitle(unsigned int dsid) {
  return dsid == 0 ? "global" : "selection " + std::to_string(dsid);
}

// The name under which a host's events from before the cluster are known.
std::string databaseOf(const std::string& host) {
  return host + "-database";
}

DemoStage::Arguments inHome(const std::string& home, const DemoStage::Arguments& arguments) {
  DemoStage::Arguments command = {"--home", home};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

EtcdNodes::NodeGroup makeNodes(const std::filesystem::path& directory) {
  EtcdNodes::NodeGroupOptions options;
  options.names = DemoHome::nodes();
  options.directory = directory;
  try {
    return EtcdNodes::NodeGroup(options);
  } catch (const std::runtime_error& error) {
    throw Failure(error.what());
  }
}

class ClusterTour {
 public:
  explicit ClusterTour(const DemoClusterOptions& options)
      : m_home(options.home, options.keep), m_nodes(makeNodes(m_home.path())) {}

  int run();

 private:
  void fillDatabases();
  void startCluster();
  void joinCluster();
  void writeThroughFault();
  void letBothWrite(DemoTraffic& traffic, const std::string& since);
  void killLeader(DemoTraffic& traffic);
  void bringBack(DemoTraffic& traffic);
  void tellWriting(DemoTraffic& traffic);
  void prove();
  void consumeAndRestart();

  // Starts a host for a moment, which shows the first events of the global queue.
  void startHost(const std::string& host) {
    m_stage.show(inHome(host, {"consume", "--keep", "--limit", "2"}));
  }
  void waitForMembers();
  void configure(const std::string& host, const std::vector<std::string>& endpoints);
  std::vector<DemoFound> readQueue(unsigned int dsid);
  void tabulate(const std::vector<DemoProof>& proofs);
  void judge(const std::vector<DemoProof>& proofs);

  StopSignals m_stop;
  DemoHome m_home;
  EtcdNodes::NodeGroup m_nodes;
  DemoStage m_stage{m_stop, m_home.path()};
  std::vector<DemoRecord> m_records;  // of the hosts' databases, then of the hosts
  int m_killed = -1;                  // the node that led
};

int ClusterTour::run() {
  m_stage.say(
      "A tour of the cluster mode: two hosts write to the same queues, which three etcd " +
      std::string("nodes keep, and the leading node is killed meanwhile. All of it is in ") +
      m_home.path().string() +
      (m_home.isKept() ? ", which is kept." : ", which is removed at the end."));
  fillDatabases();
  startCluster();
  joinCluster();
  writeThroughFault();
  prove();
  consumeAndRestart();
  return m_stage.finish();
}

void ClusterTour::fillDatabases() {
  m_stage.heading("Two hosts, each with a database of its own");
  for (const std::string& host : DemoHome::hosts()) {
    DemoRecord record{databaseOf(host), {}};
    std::string lines;
    for (unsigned long number = 1; number <= kOwnEvents; ++number) {
      lines += demoEventString(record.writer, number, 0) + "\n";
      record.events.push_back({0, true, 0});
    }
    m_home.write(host + ".events", lines);
    m_stage.show(inHome(host, {"import", host + ".events"}));
    m_records.push_back(std::move(record));
  }
  for (const std::string& host : DemoHome::hosts()) {
    m_stage.show(inHome(host, {"dataselection", "add", "4", "--name", "mail servers"}));
    m_stage.show(inHome(host, {"dataselection", "add", "7", "--name", "file servers"}));
  }
}

void ClusterTour::configure(const std::string& host, const std::vector<std::string>& endpoints) {
  std::string all;
  for (const std::string& endpoint : endpoints) all += (all.empty() ? "" : ",") + endpoint;
  m_home.write(std::filesystem::path(host) / "host.ini",
               "[cluster]\ncluster_mode = 1\nqueue = events\nmember = " + host +
                   "\nendpoints = " + all + "\n");
}

void ClusterTour::startCluster() {
  m_stage.heading("Three etcd nodes");
  for (int node = 0; node < m_nodes.size(); ++node) {
    m_nodes.start(node);
    m_stage.say(m_nodes.name(node) + " at " + m_nodes.endpoint(node));
  }
  for (const std::string& host : DemoHome::hosts()) configure(host, m_nodes.endpoints());
  const std::string& host = DemoHome::hosts().front();
  m_stage.say("Each host now has in its host.ini (" + host + "/host.ini):");
  for (const std::string& line :
       {std::string("[cluster]"), std::string("cluster_mode = 1"), std::string("queue = events"),
        "member = " + host, std::string("endpoints = (the three above)")}) {
    m_stage.output().line("    " + line);
  }
  m_stage.output().flush();
  waitForMembers();
}

void ClusterTour::waitForMembers() {
  constexpr std::chrono::seconds kPatience(60);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  DemoMembers members;
  while (!members.allReachable() || members.leader() < 0) {
    for (int node = 0; node < m_nodes.size(); ++node) {
      if (m_nodes.running(node)) continue;
      throw Failure(m_nodes.name(node) + " has ended: " + m_nodes.lastWords(node));
    }
    if (std::chrono::steady_clock::now() > end) throw Failure("the etcd nodes do not serve");
    members = DemoMembers(m_stage.ask(inHome(DemoHome::hosts().front(), {"stats", "--json"})));
  }
}

void ClusterTour::joinCluster() {
  m_stage.heading("The hosts join: what their databases hold is copied");
  for (const std::string& host : DemoHome::hosts()) startHost(host);
  m_stage.show(inHome(DemoHome::hosts().front(), {"stats"}));
  const unsigned long expected = DemoHome::hosts().size() * kOwnEvents;
  const DemoProof proof = proveQueue(m_records, 0, readQueue(0));
  m_stage.note(proof.holds() && proof.found == expected,
               "all " + displayCount(expected) + " events are there, each once");
}

void ClusterTour::writeThroughFault() {
  m_stage.heading("Both hosts write, and the leader is killed");
  const std::string& observer = DemoHome::hosts().front();
  DemoTraffic traffic(m_stage, DemoHome::hosts(), observer, DemoHome::nodes());
  letBothWrite(traffic, "at all");
  killLeader(traffic);
  traffic.show(inHome(observer, {"stats"}));
  letBothWrite(traffic, "after the leader was killed");
  bringBack(traffic);
  letBothWrite(traffic, "after the node was back");
  traffic.finish();
  m_stage.show(inHome(observer, {"stats"}));
  tellWriting(traffic);
}

void ClusterTour::letBothWrite(DemoTraffic& traffic, const std::string& since) {
  const unsigned long seen = traffic.least();
  traffic.flowFor(kMoment);
  traffic.flowUntil([&] { return traffic.least() >= seen + kManyEvents; },
                    "both hosts were acknowledged events " + since);
}

void ClusterTour::killLeader(DemoTraffic& traffic) {
  traffic.flowUntil([&] { return traffic.members().leader() >= 0; }, "a leader was known");
  m_killed = traffic.members().leader();
  m_nodes.kill(m_killed);
  traffic.forgetMembers();
  traffic.tell(m_nodes.name(m_killed) + " is killed");
  const auto anotherLeads = [&] {
    const int leader = traffic.members().leader();
    return leader >= 0 && leader != m_killed;
  };
  traffic.flowUntil(anotherLeads, "another node led");
  traffic.tell("a new leader");
}

void ClusterTour::bringBack(DemoTraffic& traffic) {
  m_nodes.start(m_killed);
  traffic.tell(m_nodes.name(m_killed) + " is started");
  traffic.flowUntil([&] { return traffic.members().allReachable(); }, "the node was back");
  traffic.tell(m_nodes.name(m_killed) + " is back");
}

void ClusterTour::tellWriting(DemoTraffic& traffic) {
  Table table(m_stage.output(),
              {{"host", 6, Align::kLeft, Style::kBold},
               {"events", 7, Align::kRight},
               {"acknowledged", 12, Align::kRight},
               {"refused", 7, Align::kRight},
               {"no answer", 9, Align::kRight},
               {"longest wait", 0, Align::kLeft}},
              Overflow::kCut);
  for (const auto& writer : traffic.writers()) {
    writer->status();  // of one that was refused something it is 1
    const DemoRecord& record = writer->record();
    const unsigned long answered = writer->acknowledged() + writer->refused();
    table.row({writer->name(), displayCount(record.events.size()),
               displayCount(writer->acknowledged()), displayCount(writer->refused()),
               displayCount(record.events.size() - answered),
               displayCount(static_cast<unsigned long>(writer->longestGap().count())) + " ms"});
    m_records.push_back(record);
  }
  for (const auto& writer : traffic.writers()) {
    for (const std::string& complaint : writer->complaints()) m_stage.echo(complaint);
  }
  m_stage.say("The longest wait is the time between two acknowledgements.");
}

std::vector<DemoFound> ClusterTour::readQueue(unsigned int dsid) {
  std::vector<DemoFound> found;
  const std::string& home = m_killed < 0 ? DemoHome::hosts().front() : DemoHome::reader();
  const int status =
      m_stage.run(inHome(home, {"list", "--json", "--dsid", std::to_string(dsid)}),
                  [&](const std::string& line) {
                    const json event = json::parse(line, nullptr, false);
                    if (!event.is_object()) throw Failure("the queue cannot be read: " + line);
                    found.push_back({event["id"].get<unsigned long>(), event["eventString"]});
                  });
  if (status != kDone) throw Failure("the queue cannot be read");
  return found;
}

void ClusterTour::prove() {
  m_stage.heading("The proof");
  m_stage.say("A third process reads every queue, and asks only " + m_nodes.name(m_killed) +
              ", the node that was killed. Every event carries who wrote it and its number, so it "
              "is known again.");
  configure(DemoHome::reader(), {m_nodes.endpoint(m_killed)});
  for (const char* const dsid : {"4", "7"}) {
    m_stage.run(inHome(DemoHome::reader(), {"dataselection", "add", dsid}), [](const auto&) {});
  }
  std::vector<DemoProof> proofs;
  proofs.reserve(kQueues.size());
  for (const unsigned int dsid : kQueues) {
    proofs.push_back(proveQueue(m_records, dsid, readQueue(dsid)));
  }
  tabulate(proofs);
  judge(proofs);
}

void ClusterTour::tabulate(const std::vector<DemoProof>& proofs) {
  m_stage.say("Acknowledged to the databases (by the first import) and to the hosts, and found:");
  Table table(m_stage.output(),
              {{"queue", 11, Align::kLeft, Style::kBold},
               {"databases", 9, Align::kRight},
               {"host-a", 7, Align::kRight},
               {"host-b", 7, Align::kRight},
               {"found", 7, Align::kRight},
               {"lost", 4, Align::kRight},
               {"doubled", 7, Align::kRight},
               {"out of order", 0, Align::kLeft}},
              Overflow::kCut);
  for (std::size_t i = 0; i < proofs.size(); ++i) {
    const DemoProof& proof = proofs[i];
    const auto& acknowledged = proof.acknowledged;
    table.row({queueTitle(kQueues[i]), displayCount(acknowledged[0] + acknowledged[1]),
               displayCount(acknowledged[2]), displayCount(acknowledged[3]),
               displayCount(proof.found), displayCount(proof.lost), displayCount(proof.doubled),
               displayCount(proof.disordered)});
  }
}

void ClusterTour::judge(const std::vector<DemoProof>& proofs) {
  DemoProof sum;
  unsigned long acknowledged = 0;
  for (const DemoProof& proof : proofs) {
    for (const unsigned long count : proof.acknowledged) acknowledged += count;
    sum.found += proof.found;
    sum.unanswered += proof.unanswered;
    sum.lost += proof.lost;
    sum.doubled += proof.doubled;
    sum.disordered += proof.disordered;
    sum.misnumbered += proof.misnumbered;
    sum.foreign += proof.foreign;
  }
  m_stage.note(sum.lost == 0, displayCount(acknowledged - sum.lost) + " of " +
                                  displayCount(acknowledged) + " acknowledged events are there");
  m_stage.note(sum.doubled == 0, displayCount(sum.doubled) + " are there more than once");
  m_stage.note(sum.disordered == 0,
               displayCount(sum.disordered) +
                   " are out of order: ids grow, each host's events stand as it wrote them");
  m_stage.note(sum.misnumbered == 0,
               displayCount(sum.misnumbered) + " have another id than their host was told");
  m_stage.note(sum.foreign == 0,
               displayCount(sum.foreign) + " are foreign or changed: every text is as written");
  if (sum.unanswered == 0) return;
  m_stage.say("Of the events that were not acknowledged, " + displayCount(sum.unanswered) +
              " are there: such an event may be stored or not.");
}

void ClusterTour::consumeAndRestart() {
  m_stage.heading("Half is consumed, and both hosts are started again");
  m_stage.say(
      "A start copies the host's database to the cluster, but no event twice, also when "
      "the copy was consumed since.");
  const auto before = readQueue(0);
  const std::size_t half = before.size() / 2;
  const auto command =
      inHome(DemoHome::hosts().front(), {"consume", "--json", "--limit", std::to_string(half)});
  m_stage.echoCommand(command);
  std::size_t count = 0;
  m_stage.run(command, [&](const std::string&) { ++count; });
  m_stage.say("(" + displayCount(count) + " lines)");
  for (const std::string& host : DemoHome::hosts()) startHost(host);
  const auto after = readQueue(0);
  const bool rest =
      std::equal(after.begin(), after.end(), before.begin() + static_cast<std::ptrdiff_t>(half),
                 before.end(), [](const DemoFound& one, const DemoFound& other) {
                   return one.id == other.id && one.eventString == other.eventString;
                 });
  m_stage.note(count == half && rest,
               "exactly the other half is there: " + displayCount(after.size()) + " events");
}

}  // namespace

int runDemoCluster(const DemoClusterOptions& options) {
  DemoClusterOptions chosen = options;
  if (chosen.home.empty()) chosen.home = EventSystemHost::defaultHome() / "cluster-tour";
  return ClusterTour(chosen).run();
}

}  // namespace EventApps
