#include "bench/stores/BenchHome.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace EventSystemBench {

BenchHome::BenchHome(const std::string& durability, const std::string& logLevel, int ageLimit) {
  std::string pattern = (std::filesystem::temp_directory_path() / "storebench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
  m_path = pattern;
  std::ofstream(m_path / "host.ini")
      << "[database]\ndurability = " << durability << "\n[log]\nlevel = " << logLevel << "\n";
  std::ofstream(m_path / "OrbCentral.ini")
      << "[events]\ncount_limit = 0\nage_limit_days = " << ageLimit << "\n";
}

BenchHome::~BenchHome() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

void BenchHome::addAuditFile() const {
  std::filesystem::create_directories(audit().parent_path());
  sqlite3* database = nullptr;
  const int opened = sqlite3_open(audit().c_str(), &database);
  const int made = sqlite3_exec(database,
                                "create table event (_id integer primary key, date_created text, "
                                "content text, etype integer)",
                                nullptr, nullptr, nullptr);
  sqlite3_close(database);
  if (opened != SQLITE_OK || made != SQLITE_OK) throw std::runtime_error("no audit database");
}

EventSystemHost::HostOptions optionsFor(const std::filesystem::path& home) {
  EventSystemHost::HostOptions options;
  options.home = home;
  return options;
}

}  // namespace EventSystemBench
