// A group of etcd servers that form one cluster, on free loopback ports. They end with this object,
// and with the process that holds it, however that ends.
//
// Thread safety: none; clients may use the servers from any thread.

#ifndef EVENTSYSTEM_APPS_ETCD_NODES_NODEGROUP_H
#define EVENTSYSTEM_APPS_ETCD_NODES_NODEGROUP_H

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/etcd_nodes/Ports.h"
#include "apps/etcd_nodes/Subprocess.h"

namespace EtcdNodes {

struct NodeGroupOptions {
  std::vector<std::string> names;      // of the nodes
  std::filesystem::path directory;     // of all: each node's data is in NAME, its log in NAME.log
  std::string clientScheme = "http";   // or "https", with more arguments
  std::vector<std::string> arguments;  // more of etcd's command line
};

class NodeGroup {
 public:
  // Starts none yet. Throws std::runtime_error, in words for a person, when there is no etcd.
  explicit NodeGroup(const NodeGroupOptions& options);

  // Node by node, from 0. A start does not wait until the node serves.
  void start(int node);  // with the data that it has
  void kill(int node) { at(node).process.kill(); }
  void pause(int node) { at(node).process.signal(SIGSTOP); }
  void resume(int node) { at(node).process.signal(SIGCONT); }
  bool running(int node) { return at(node).process.running(); }

  int size() const { return static_cast<int>(m_nodes.size()); }
  const std::string& name(int node) const { return at(node).name; }
  std::string endpoint(int node) const;  // for clients: "127.0.0.1:port"
  std::vector<std::string> endpoints() const;
  std::string clientUrl(int node) const;  // the endpoint with its scheme

  // The end of a node's log, to tell why it has ended.
  std::string lastWords(int node) const;

 private:
  struct Node {
    std::string name;
    ClaimedPort clientPort;
    ClaimedPort peerPort;
    Subprocess process;
  };

  Node& at(int node) { return m_nodes.at(static_cast<std::size_t>(node)); }
  const Node& at(int node) const { return m_nodes.at(static_cast<std::size_t>(node)); }
  std::filesystem::path logFile(const Node& node) const;
  std::vector<std::string> commandOf(int node) const;

  NodeGroupOptions m_options;
  std::string m_program;
  std::vector<Node> m_nodes;
};

}  // namespace EtcdNodes

#endif
