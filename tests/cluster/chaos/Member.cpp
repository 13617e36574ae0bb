#include "tests/cluster/chaos/Member.h"

#include <fstream>
#include <stdexcept>

namespace EventSystemTest {

Member::Member(MemberOptions options)
    : m_options(std::move(options)),
      m_home(m_options.directory / m_options.name),
      m_journal(m_options.directory / (m_options.name + ".journal")),
      m_output(m_options.directory / (m_options.name + ".output")),
      m_reader(m_journal) {
  std::filesystem::create_directories(m_home);
  configure(true);
}

void Member::configure(bool clusterMode) const {
  std::string endpoints;
  for (const std::string& endpoint : m_options.endpoints) {
    endpoints += (endpoints.empty() ? "" : ",") + endpoint;
  }
  std::ofstream(m_home / "host.ini")
      << "[cluster]\ncluster_mode = " << (clusterMode ? 1 : 0) << "\nmember = " << name()
      << "\nendpoints = " << endpoints << "\ndeadline_ms = " << m_options.deadline.count()
      << "\n[database]\ndurability = relaxed\n[log]\nlevel = warning\n";
}

std::vector<std::string> Member::command(const std::string& task, std::uint64_t number,
                                         std::uint64_t epoch) {
  const std::string label =
      "epoch" + std::to_string(epoch) + "." + name() + ".life" + std::to_string(++m_life) + ".";
  return {CHAOS_HOST, m_home.string(), m_journal.string(), label, task, std::to_string(number)};
}

void Member::start(std::uint64_t seed, std::uint64_t epoch) {
  m_process = EtcdNodes::Subprocess(command(m_options.serves ? "serve" : "work",
                                            seed + static_cast<std::uint64_t>(m_life), epoch),
                                    m_output);
}

void Member::runToItsEnd(const std::string& task, std::uint64_t number, std::uint64_t epoch) {
  EtcdNodes::runProgram(command(task, number, epoch), m_output.string() + ".last");
}

void Member::addRows(int count, std::uint64_t epoch) {
  configure(false);
  runToItsEnd("rows", static_cast<std::uint64_t>(count), epoch);
  configure(true);
}

void Member::copyRows(std::uint64_t epoch) {
  runToItsEnd("start", 0, epoch);
}

}  // namespace EventSystemTest
