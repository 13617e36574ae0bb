// A home directory with an eventd for one test, and what tests ask it.
//
// Thread safety: the thread of the test; request() from several threads.

#ifndef EVENTSYSTEM_TESTS_EVENTD_PROGRAM_DAEMONHOME_H
#define EVENTSYSTEM_TESTS_EVENTD_PROGRAM_DAEMONHOME_H

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/Role.h"
#include "tests/e2e/Program.h"
#include "tests/eventd/http/RawClient.h"
#include "tests/eventd/program/NotifySocket.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

using nlohmann::json;

// One request; what is left empty is not sent.
struct Ask {
  std::string method = "GET";
  std::string path = "/";
  std::string body = {};
  std::string contentType = {};
  std::string token = {};
  std::vector<std::pair<std::string, std::string>> headers = {};

  std::string text() const;
};

class DaemonHome : public ::testing::Test {
 protected:
  DaemonHome();

  std::filesystem::path home() const { return m_directory.path() / "home"; }
  std::filesystem::path socket() const { return home() / "eventd.sock"; }
  void write(const std::string& name, const std::string& text) const;
  std::string log() const;

  // A token of that name and role, in force when the daemon is started.
  std::string makeToken(const std::string& name, EventApps::Role role) const;

  // Starts the daemon and waits until it says that it is ready.
  void start(const std::vector<std::string>& arguments = {},
             const std::vector<std::string>& environment = {});
  // The same as a service manager does it, which has made a socket that listens.
  void startWith(int socket);
  // The same with standard error as the service manager makes it, which leads to its journal.
  void startUnderAJournal();
  // Starts it where it is to end by itself.
  Outcome run(const std::vector<std::string>& arguments = {}) const;
  Outcome runWith(int socket) const;
  // Runs eventctl to its end, in this home.
  Outcome eventctl(const std::vector<std::string>& arguments) const;
  // Ends it in good order; its exit status and what it said.
  Outcome stop();
  void kill();
  Program& program() { return *m_program; }
  NotifySocket& notifications() { return m_notifications; }

  // The port of the address that its status names after "http://" or "https://".
  std::uint16_t port(const std::string& scheme = "http") const;

  // Over the Unix socket, a connection for each.
  Reply request(const Ask& ask) const;
  Reply requestTcp(const Ask& ask) const;
  Reply get(const std::string& path) const { return request({.path = path}); }
  Reply post(const std::string& path, const std::string& body,
             const std::string& contentType = "application/json") const;

  // Stores an event of kind serverstatus; its id.
  unsigned long add(const std::string& server, unsigned int dsid = 0) const;
  void addDataSelection(unsigned int dsid) const;
  std::vector<unsigned long> ids(unsigned int dsid = 0) const;

 private:
  void launch(const std::vector<std::string>& arguments, Surroundings surroundings);
  bool hasEnded() const;

  TempDir m_directory;
  NotifySocket m_notifications;
  std::unique_ptr<Program> m_program;
  std::string m_status;
};

// The body as JSON; fails the test when it is none.
json jsonOf(const Reply& reply);

// The name at the end of a problem's type, after checking that it is a problem as it should be.
std::string problemName(const Reply& reply);

// {"kind":"serverstatus",...}
std::string statusEvent(const std::string& server);

}  // namespace EventSystemTest

#endif
