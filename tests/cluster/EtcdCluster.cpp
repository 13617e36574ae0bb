#include "tests/cluster/EtcdCluster.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include "host/cluster/MemberProbe.h"
#include "tests/cluster/Ports.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using EventSystemHost::ClusterMember;

constexpr std::chrono::seconds kPatience{60};

// Empty when a majority works, else why not.
std::string whyNoMajority(const ClusterConfiguration& configuration) {
  try {
    const ClusterClient client(configuration);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "";
}

// Empty when all members serve, else why not.
std::string whyNotServing(const ClusterConfiguration& configuration) {
  bool led = false;
  for (const ClusterMember& member : EventSystemHost::probeMembers(configuration)) {
    if (!member.reachable) return member.failure;
    led = led || member.leader;
  }
  return led ? whyNoMajority(configuration) : "no leader";
}

void waitUntilFine(ClusterConfiguration configuration,
                   std::string (*whyNot)(const ClusterConfiguration&)) {
  configuration.deadline = std::chrono::milliseconds(2000);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  std::string failure = whyNot(configuration);
  while (!failure.empty()) {
    if (std::chrono::steady_clock::now() > end) {
      throw std::runtime_error("etcd does not serve: " + failure);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    failure = whyNot(configuration);
  }
}

}  // namespace

EtcdCluster::EtcdCluster(const EtcdOptions& options) : m_options(options) {
  const auto ports = freePorts(2 * options.members);
  for (int i = 0; i < options.members; ++i) {
    m_members.push_back(
        {"node" + std::to_string(i), ports[index(2 * i)], ports[index(2 * i + 1)], Subprocess()});
  }
  for (int i = 0; i < options.members; ++i) start(i);
  waitUntilServing();
}

std::string EtcdCluster::clientUrl(const Member& member) const {
  return (m_options.certificates == nullptr ? "http://127.0.0.1:" : "https://127.0.0.1:") +
         std::to_string(member.clientPort);
}

std::vector<std::string> EtcdCluster::commandOf(const Member& member) const {
  std::string peers;
  for (const Member& each : m_members) {
    peers += (peers.empty() ? "" : ",") + each.name +
             "=http://127.0.0.1:" + std::to_string(each.peerPort);
  }
  const std::string peerUrl = "http://127.0.0.1:" + std::to_string(member.peerPort);
  std::vector<std::string> command{"etcd",
                                   "--name=" + member.name,
                                   "--data-dir=" + (m_directory.path() / member.name).string(),
                                   "--listen-client-urls=" + clientUrl(member),
                                   "--advertise-client-urls=" + clientUrl(member),
                                   "--listen-peer-urls=" + peerUrl,
                                   "--initial-advertise-peer-urls=" + peerUrl,
                                   "--initial-cluster=" + peers,
                                   "--initial-cluster-token=" + m_directory.path().string(),
                                   "--heartbeat-interval=100",
                                   "--election-timeout=1000",
                                   "--logger=zap",
                                   "--log-level=warn"};
  if (m_options.certificates != nullptr) {
    const auto certificates = m_options.certificates->serverArguments();
    command.insert(command.end(), certificates.begin(), certificates.end());
  }
  command.insert(command.end(), m_options.arguments.begin(), m_options.arguments.end());
  return command;
}

void EtcdCluster::start(int member) {
  Member& started = m_members.at(index(member));
  started.process = Subprocess(commandOf(started), m_directory.path() / (started.name + ".log"));
}

void EtcdCluster::kill(int member) {
  m_members.at(index(member)).process.kill();
}

void EtcdCluster::waitUntilServing(const ClusterConfiguration& configuration) const {
  waitUntilFine(configuration, whyNotServing);
}

void EtcdCluster::waitUntilMajority() const {
  waitUntilFine(configuration(), whyNoMajority);
}

int EtcdCluster::leader() const {
  const auto members = EventSystemHost::probeMembers(configuration());
  for (int i = 0; i < size(); ++i) {
    if (members[index(i)].leader) return i;
  }
  throw std::runtime_error("no leader");
}

std::string EtcdCluster::endpoint(int member) const {
  return "127.0.0.1:" + std::to_string(m_members.at(index(member)).clientPort);
}

std::vector<std::string> EtcdCluster::endpoints() const {
  std::vector<std::string> all;
  for (int i = 0; i < size(); ++i) all.push_back(endpoint(i));
  return all;
}

ClusterConfiguration EtcdCluster::configuration() const {
  ClusterConfiguration configuration;
  configuration.endpoints = endpoints();
  if (m_options.certificates != nullptr) m_options.certificates->configure(configuration);
  return configuration;
}

std::string EtcdCluster::etcdctl(const std::vector<std::string>& arguments) const {
  std::vector<std::string> command{"env", "ETCDCTL_API=3", "etcdctl"};
  std::string urls;
  for (const Member& member : m_members) urls += (urls.empty() ? "" : ",") + clientUrl(member);
  command.push_back("--endpoints=" + urls);
  command.insert(command.end(), arguments.begin(), arguments.end());
  return runProgram(command, m_directory.path() / "etcdctl.log");
}

}  // namespace EventSystemTest
