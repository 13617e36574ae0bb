// A home directory for one measurement, on the disk that holds the temporary directory, removed
// with all that is in it.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_STORES_BENCHHOME_H
#define EVENTSYSTEM_BENCH_STORES_BENCHHOME_H

#include <filesystem>
#include <string>

#include "host/Host.h"

namespace EventSystemBench {

class BenchHome {
 public:
  // Limits are off unless an age limit in days is given; `logLevel` is as in host.ini.
  explicit BenchHome(const std::string& durability, const std::string& logLevel = "info",
                     int ageLimit = 0);
  ~BenchHome();
  BenchHome(const BenchHome&) = delete;
  BenchHome& operator=(const BenchHome&) = delete;

  const std::filesystem::path& path() const { return m_path; }
  std::filesystem::path database() const { return m_path / "events.db"; }

  std::filesystem::path audit() const { return m_path / "audit" / "audit.db"; }

  // An audit database with its table and no row.
  void addAuditFile() const;

 private:
  std::filesystem::path m_path;
};

EventSystemHost::HostOptions optionsFor(const std::filesystem::path& home);

}  // namespace EventSystemBench

#endif
