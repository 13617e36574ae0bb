// One host of the cluster from outside: its home, its process, life after life, and its journal.
//
// Thread safety: none; used by the main thread, whose end the processes share.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_MEMBER_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_MEMBER_H

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/etcd_nodes/Subprocess.h"
#include "tests/cluster/chaos/Journal.h"

namespace EventSystemTest {

struct MemberOptions {
  std::filesystem::path directory;  // for all that it keeps
  std::string name;                 // without blanks
  std::vector<std::string> endpoints;
  std::chrono::milliseconds deadline;
  bool serves = false;  // its traffic goes through what a daemon puts before the library
};

class Member {
 public:
  explicit Member(MemberOptions options);

  const std::string& name() const { return m_options.name; }

  // Begins a life of traffic that follows from the seed. Its events carry the epoch in their names.
  void start(std::uint64_t seed, std::uint64_t epoch);
  bool running() { return m_process.running(); }
  // The exit status of the last life, which is over.
  int status() { return m_process.wait(); }

  void kill() { m_process.kill(); }
  void signal(int number) const { m_process.signal(number); }

  // Without the cluster: adds rows to its database. It does not run. Throws std::runtime_error.
  void addRows(int count, std::uint64_t epoch);
  // A life that starts, copies its database to the cluster, and ends. Throws std::runtime_error
  // with its last words when that fails.
  void copyRows(std::uint64_t epoch);

  // What its journal has got since the last call.
  std::vector<JournalEntry> more() { return m_reader.more(); }

 private:
  std::vector<std::string> command(const std::string& task, std::uint64_t number,
                                   std::uint64_t epoch);
  void configure(bool clusterMode) const;
  void runToItsEnd(const std::string& task, std::uint64_t number, std::uint64_t epoch);

  const MemberOptions m_options;
  const std::filesystem::path m_home;
  const std::filesystem::path m_journal;
  const std::filesystem::path m_output;
  JournalReader m_reader;
  EtcdNodes::Subprocess m_process;
  int m_life = 0;
};

}  // namespace EventSystemTest

#endif
