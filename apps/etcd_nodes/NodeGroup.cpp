#include "apps/etcd_nodes/NodeGroup.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace EtcdNodes {
namespace {

constexpr const char* kLoopback = "127.0.0.1:";

// etcd on PATH, or where servers are installed.
std::string findEtcd() {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(std::string(path == nullptr ? "" : path) +
                             ":/usr/local/sbin:/usr/sbin:/sbin");
  for (std::string folder; std::getline(folders, folder, ':');) {
    std::string file = (folder.empty() ? "." : folder) + "/etcd";
    if (std::filesystem::is_regular_file(file) && ::access(file.c_str(), X_OK) == 0) return file;
  }
  throw std::runtime_error(
      "there is no etcd, which keeps the queues in cluster mode: install the Debian package "
      "etcd-server");
}

std::string peerUrl(unsigned short port) {
  return std::string("http://") + kLoopback + std::to_string(port);
}

}  // namespace

NodeGroup::NodeGroup(const NodeGroupOptions& options) : m_options(options), m_program(findEtcd()) {
  const int count = static_cast<int>(options.names.size());
  auto ports = freePorts(2 * count);
  for (std::size_t i = 0; i < options.names.size(); ++i) {
    m_nodes.push_back(
        {options.names[i], std::move(ports[2 * i]), std::move(ports[2 * i + 1]), Subprocess()});
  }
}

std::vector<std::string> NodeGroup::commandOf(int node) const {
  std::string peers;
  for (const Node& each : m_nodes) {
    peers += (peers.empty() ? "" : ",") + each.name + "=" + peerUrl(each.peerPort.number);
  }
  const std::string own = peerUrl(at(node).peerPort.number);
  std::vector<std::string> command{m_program,
                                   "--name=" + name(node),
                                   "--data-dir=" + (m_options.directory / name(node)).string(),
                                   "--listen-client-urls=" + clientUrl(node),
                                   "--advertise-client-urls=" + clientUrl(node),
                                   "--listen-peer-urls=" + own,
                                   "--initial-advertise-peer-urls=" + own,
                                   "--initial-cluster=" + peers,
                                   "--initial-cluster-token=" + m_options.directory.string(),
                                   "--heartbeat-interval=100",
                                   "--election-timeout=1000",
                                   "--logger=zap",
                                   "--log-level=warn"};
  command.insert(command.end(), m_options.arguments.begin(), m_options.arguments.end());
  return command;
}

void NodeGroup::start(int node) {
  at(node).process = Subprocess(commandOf(node), logFile(at(node)));
}

std::string NodeGroup::endpoint(int node) const {
  return kLoopback + std::to_string(at(node).clientPort.number);
}

std::vector<std::string> NodeGroup::endpoints() const {
  std::vector<std::string> all;
  all.reserve(m_nodes.size());
  for (int i = 0; i < size(); ++i) all.push_back(endpoint(i));
  return all;
}

std::string NodeGroup::clientUrl(int node) const {
  return m_options.clientScheme + "://" + endpoint(node);
}

std::string NodeGroup::lastWords(int node) const {
  std::ifstream log(logFile(at(node)));
  std::string last;
  for (std::string line; std::getline(log, line);) {
    if (!line.empty()) last = line;
  }
  return last;
}

std::filesystem::path NodeGroup::logFile(const Node& node) const {
  return m_options.directory / (node.name + ".log");
}

}  // namespace EtcdNodes
