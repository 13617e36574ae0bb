#include "tests/cluster/EtcdCluster.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include "host/cluster/MemberProbe.h"

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

EtcdNodes::NodeGroupOptions nodeOptions(const EtcdOptions& options,
                                        const std::filesystem::path& directory) {
  EtcdNodes::NodeGroupOptions nodes;
  nodes.directory = directory;
  for (int i = 0; i < options.members; ++i) nodes.names.push_back("node" + std::to_string(i));
  if (options.certificates != nullptr) {
    nodes.clientScheme = "https";
    nodes.arguments = options.certificates->serverArguments();
  }
  nodes.arguments.insert(nodes.arguments.end(), options.arguments.begin(), options.arguments.end());
  return nodes;
}

}  // namespace

EtcdCluster::EtcdCluster(const EtcdOptions& options)
    : m_directory(options.directory),
      m_options(options),
      m_nodes(nodeOptions(options, m_directory.path())) {
  for (int i = 0; i < size(); ++i) start(i);
  waitUntilServing();
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
    if (members.at(static_cast<std::size_t>(i)).leader) return i;
  }
  throw std::runtime_error("no leader");
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
  for (int i = 0; i < size(); ++i) urls += (i == 0 ? "" : ",") + m_nodes.clientUrl(i);
  command.push_back("--endpoints=" + urls);
  command.insert(command.end(), arguments.begin(), arguments.end());
  return EtcdNodes::runProgram(command, m_directory.path() / "etcdctl.log");
}

}  // namespace EventSystemTest
