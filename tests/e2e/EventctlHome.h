// A home directory for the eventctl of one test, and what tests do with it time and again.
//
// Thread safety: none; used by the thread of the test.

#ifndef EVENTSYSTEM_TESTS_E2E_EVENTCTLHOME_H
#define EVENTSYSTEM_TESTS_E2E_EVENTCTLHOME_H

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/e2e/Program.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

using Arguments = std::vector<std::string>;
using Ids = std::vector<unsigned long>;
using nlohmann::json;

// Every line as JSON; fails the test for a line that is none.
std::vector<json> jsonLines(const std::string& text);

// A complete event string, as producers write it.
std::string serverStatus(const std::string& server, unsigned long date = 1700000000);
std::string activity(const std::string& message);

class EventctlHome : public ::testing::Test {
 protected:
  std::filesystem::path home() const { return m_directory.path() / "home"; }
  std::filesystem::path database() const { return home() / "events.db"; }
  std::filesystem::path auditDatabase() const { return home() / "audit" / "audit.db"; }

  // The arguments with this home.
  virtual Arguments at(Arguments arguments) const;
  Outcome run(const Arguments& arguments, const Surroundings& surroundings = {}) const;

  // The same, where nothing else than status 0 is expected; what was printed.
  std::string output(const Arguments& arguments, const Surroundings& surroundings = {}) const;

  // Adds an event to a queue; its id.
  unsigned long add(const std::string& server, unsigned int dsid = 0) const;
  void addDataSelection(unsigned int dsid) const;

  // The ids that a list shows.
  Ids ids(unsigned int dsid = 0) const;

  // What eventctl consume --follow does wherever the queues are.
  void followAndKeep() const;
  void followToItsLimit(unsigned int dsid = 0) const;
  void followUntilItsReaderGoes() const;
  void followAnUnknownDataSelection() const;

  // A file beside the home.
  std::filesystem::path write(const std::string& name, const std::string& text) const;

  // Runs SQL on a database file that no host has open.
  static void execute(const std::filesystem::path& file, const std::string& sql);

  // The number that a query finds in such a file.
  static long number(const std::filesystem::path& file, const std::string& sql);

  // Makes the audit database with these messages.
  void leaveAuditRecords(const std::vector<std::string>& messages) const;

 private:
  TempDir m_directory;
};

}  // namespace EventSystemTest

#endif
