#include "tests/eventd/program/DaemonHome.h"

#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "apps/common/TokenFile.h"

namespace EventSystemTest {
namespace {

constexpr int kOften = 50;  // milliseconds between looks
constexpr const char* kShell = "/bin/bash";

// What makes a shell become the daemon, with the socket as its first one.
std::vector<std::string> withSocket(int socket, const std::filesystem::path& home) {
  constexpr const char* kFirst = "3";
  const std::string given = std::to_string(socket);
  std::string script = "LISTEN_PID=$$ LISTEN_FDS=1 exec \"$@\"";
  if (given != kFirst) script.append(" 3<&").append(given).append(" ").append(given).append("<&-");
  return {"-c", script, kShell, EVENTCTL_PROGRAM, "--home", home.string()};
}

}  // namespace

std::string Ask::text() const {
  std::string head = method + " " + path + " HTTP/1.1\r\nHost: test\r\n";
  if (!token.empty()) head += "Authorization: Bearer " + token + "\r\n";
  if (!contentType.empty()) head += "Content-Type: " + contentType + "\r\n";
  for (const auto& [name, value] : headers) head += name + ": " + value + "\r\n";
  if (!body.empty() || method == "POST") {
    head += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  }
  return head + "\r\n" + body;
}

DaemonHome::DaemonHome() : m_notifications(m_directory.path() / "notify") {
  std::filesystem::create_directories(home());
}

void DaemonHome::write(const std::string& name, const std::string& text) const {
  std::ofstream(home() / name, std::ios::binary) << text;
}

std::string DaemonHome::log() const {
  std::ostringstream text;
  text << std::ifstream(home() / "log" / "eventsystem.log", std::ios::binary).rdbuf();
  return text.str();
}

std::string DaemonHome::makeToken(const std::string& name, EventApps::Role role) const {
  std::string token;
  EventApps::TokenFile::change(home() / "eventd.tokens", [&](EventApps::TokenFile& tokens) {
    token = tokens.add(name, role);
  });
  return token;
}

void DaemonHome::start(const std::vector<std::string>& arguments,
                       const std::vector<std::string>& environment) {
  std::vector<std::string> all = {"--home", home().string()};
  all.insert(all.end(), arguments.begin(), arguments.end());
  launch(all, {.environment = environment});
}

void DaemonHome::startWith(int socket) {
  launch(withSocket(socket, home()), {.program = kShell});
}

void DaemonHome::startUnderAJournal() {
  const std::string names = "JOURNAL_STREAM=$(stat -L -c %d:%i /proc/self/fd/2)";
  const std::string script = names + "; export JOURNAL_STREAM; exec \"$@\"";
  launch({"-c", script, kShell, EVENTCTL_PROGRAM, "--home", home().string()}, {.program = kShell});
}

void DaemonHome::launch(const std::vector<std::string>& arguments, Surroundings surroundings) {
  surroundings.environment.push_back("NOTIFY_SOCKET=" + m_notifications.path().string());
  while (!m_notifications.next(0).empty()) {  // of the one before
  }
  m_program = std::make_unique<Program>(arguments, surroundings);
  do {
    m_status = m_notifications.next(kOften);
  } while (m_status.empty() && !hasEnded());
  if (!m_status.starts_with("READY=1\n")) {
    throw std::runtime_error("eventd does not start: " + m_status + m_program->wait().err);
  }
}

bool DaemonHome::hasEnded() const {
  siginfo_t info{};
  ::waitid(P_PID, static_cast<id_t>(m_program->pid()), &info, WEXITED | WNOHANG | WNOWAIT);
  return info.si_pid != 0;
}

Outcome DaemonHome::run(const std::vector<std::string>& arguments) const {
  std::vector<std::string> all = {"--home", home().string()};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return runProgram(all);
}

Outcome DaemonHome::runWith(int socket) const {
  Surroundings surroundings;
  surroundings.program = kShell;
  return runProgram(withSocket(socket, home()), surroundings);
}

Outcome DaemonHome::eventctl(const std::vector<std::string>& arguments) const {
  std::vector<std::string> all = {"--home", home().string()};
  all.insert(all.end(), arguments.begin(), arguments.end());
  Surroundings surroundings;
  surroundings.program = EVENTCTL;
  return runProgram(all, surroundings);
}

Outcome DaemonHome::stop() {
  m_program->signal(SIGTERM);
  Outcome outcome = m_program->wait();
  m_program.reset();
  return outcome;
}

void DaemonHome::kill() {
  m_program->signal(SIGKILL);
  m_program->wait();
  m_program.reset();
}

std::uint16_t DaemonHome::port(const std::string& scheme) const {
  const std::size_t at = m_status.find(" " + scheme + "://");
  if (at == std::string::npos) throw std::runtime_error("no " + scheme + " in " + m_status);
  const std::size_t end = m_status.find_first_of(",\n", at);
  const std::size_t colon = m_status.rfind(':', end);
  return static_cast<std::uint16_t>(std::stoul(m_status.substr(colon + 1)));
}

Reply DaemonHome::request(const Ask& ask) const {
  RawClient client(socket());
  client.send(ask.text());
  return client.reply(ask.method == "HEAD");
}

Reply DaemonHome::requestTcp(const Ask& ask) const {
  RawClient client(port());
  client.send(ask.text());
  return client.reply(ask.method == "HEAD");
}

Reply DaemonHome::post(const std::string& path, const std::string& body,
                       const std::string& contentType) const {
  return request({.method = "POST", .path = path, .body = body, .contentType = contentType});
}

unsigned long DaemonHome::add(const std::string& server, unsigned int dsid) const {
  const Reply reply = post("/v1/queues/" + std::to_string(dsid) + "/events", statusEvent(server));
  EXPECT_EQ(reply.status, 201U) << reply.body;
  return reply.status == 201 ? jsonOf(reply)["ids"][0].get<unsigned long>() : 0;
}

void DaemonHome::addDataSelection(unsigned int dsid) const {
  const Reply reply = request({.method = "PUT", .path = "/v1/queues/" + std::to_string(dsid)});
  EXPECT_EQ(reply.status, 201U) << reply.body;
}

std::vector<unsigned long> DaemonHome::ids(unsigned int dsid) const {
  std::vector<unsigned long> found;
  const json read = jsonOf(get("/v1/queues/" + std::to_string(dsid) + "/events?limit=1000"));
  for (const json& event : read["events"]) found.push_back(event["id"].get<unsigned long>());
  return found;
}

json jsonOf(const Reply& reply) {
  json parsed = json::parse(reply.body, nullptr, false);
  EXPECT_FALSE(parsed.is_discarded()) << reply.status << ": " << reply.body;
  return parsed;
}

std::string problemName(const Reply& reply) {
  EXPECT_EQ(reply.headers.count("content-type"), 1U);
  if (reply.headers.count("content-type") == 0) return "";
  EXPECT_EQ(reply.headers.at("content-type"), "application/problem+json");
  const json problem = jsonOf(reply);
  if (!problem.is_object()) return "";
  EXPECT_EQ(problem.value("status", 0U), reply.status);
  EXPECT_FALSE(problem.value("title", "").empty());
  EXPECT_FALSE(problem.value("detail", "").empty());
  const std::string type = problem.value("type", "");
  EXPECT_TRUE(type.starts_with("/problems/")) << type;
  return type.substr(type.rfind('/') + 1);
}

std::string statusEvent(const std::string& server) {
  return json{{"kind", "serverstatus"}, {"fields", {{"server", server}, {"state", 1}}}}.dump();
}

}  // namespace EventSystemTest
