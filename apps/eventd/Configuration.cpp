#include "apps/eventd/Configuration.h"

#include <vector>

#include "apps/common/Failure.h"
#include "apps/common/Numbers.h"
#include "host/Host.h"
#include "host/config/EntryReader.h"

namespace EventApps {
namespace {

using EventSystemHost::choiceEntry;
using EventSystemHost::durationEntry;
using EventSystemHost::EntryReader;
using EventSystemHost::KnownEntry;
using EventSystemHost::NotAllowed;
using EventSystemHost::numberEntry;
using EventSystemHost::pathEntry;
using EventSystemHost::switchEntry;
using EventSystemHost::textEntry;

constexpr std::size_t kLongestGroup = 255;
constexpr std::size_t kMostConnections = 1000000;
constexpr std::size_t kMostWaiting = 1000000;
constexpr double kMostRequests = 1e9;
constexpr std::size_t kMostBatch = 1000000;
constexpr std::size_t kLeastBytes = 1024;
constexpr std::size_t kLeastBacklog = 131072;  // any event must fit into half of it
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

EntryReader modeEntry(unsigned int& target) {
  return [&target](const std::string& value) {
    const auto mode = parseNumber<unsigned int>(value, 8);
    if (!mode || *mode > 0777) throw NotAllowed{"an octal mode from 0 to 0777"};
    target = *mode;
  };
}

EntryReader listenEntry(std::optional<ListenAddress>& target) {
  return [&target](const std::string& value) {
    target.reset();
    if (value.empty()) return;
    target = parseListenAddress(value);
    if (!target) {
      throw NotAllowed{"an address and a port, as 127.0.0.1:8780 or [::1]:8780, or nothing"};
    }
  };
}

std::vector<KnownEntry> entriesInto(Configuration& to) {
  auto& limits = to.limits;
  return {
      {"unix", "enabled", switchEntry(to.unixSocket.enabled)},
      {"unix", "path", pathEntry(to.unixSocket.path, to.home)},
      {"unix", "mode", modeEntry(to.unixSocket.mode)},
      {"unix", "group", textEntry(to.unixSocket.group, kLongestGroup)},
      {"unix", "role", choiceEntry(to.unixSocket.role, kRoles)},
      {"tcp", "listen", listenEntry(to.tcp.listen)},
      {"tls", "listen", listenEntry(to.tls.listen)},
      {"tls", "certificate_file", pathEntry(to.tls.certificateFile, to.home)},
      {"tls", "key_file", pathEntry(to.tls.keyFile, to.home)},
      {"tls", "client_ca_file", pathEntry(to.tls.clientAuthority, to.home)},
      {"tls", "client_role", choiceEntry(to.tls.clientRole, kRoles)},
      {"access", "tokens_file", pathEntry(to.tokensFile, to.home)},
      {"metrics", "public", switchEntry(to.publicMetrics)},
      {"limits", "body_bytes", numberEntry(limits.bodyBytes, kLeastBytes, kMostBytes)},
      {"limits", "connections", numberEntry(limits.connections, std::size_t{1}, kMostConnections)},
      {"limits", "connections_per_address",
       numberEntry(limits.connectionsPerAddress, std::size_t{1}, kMostConnections)},
      {"limits", "waiting", numberEntry(limits.waiting, std::size_t{1}, kMostWaiting)},
      {"limits", "requests_per_second", numberEntry(limits.requestsPerSecond, 0.0, kMostRequests)},
      {"limits", "burst", numberEntry(limits.burst, 1.0, kMostRequests)},
      {"limits", "batch_events", numberEntry(limits.batchEvents, std::size_t{1}, kMostBatch)},
      {"limits", "idempotency_hours", durationEntry(limits.idempotency, 1, 8760)},
      {"limits", "stream_backlog_bytes",
       numberEntry(limits.streamBacklogBytes, kLeastBacklog, kMostBytes)},
      {"limits", "heartbeat_ms", durationEntry(limits.heartbeat, 50, 3600000)},
      {"limits", "grace_seconds", durationEntry(limits.grace, 0, 3600)},
  };
}

std::string place(const Configuration& configuration, const char* section, const char* entry) {
  return configuration.file.string() + ": [" + section + "] " + entry + ": ";
}

std::string howToMakeToken(const Configuration& configuration) {
  return "make a token with: eventctl --home " + configuration.home.string() +
         " token add NAME --role write (they are looked for in " +
         configuration.tokensFile.string() + ")";
}

[[noreturn]] void leavesMachineInTheClear(const std::string& place, const ListenAddress& address) {
  throw Failure(place + textOf(address) +
                " is not a loopback address, and whoever listens on the way would read tokens and "
                "events; use [tls] listen, or 127.0.0.1");
}

void requireSafeTls(const Configuration& configuration, const TokenFile& tokens) {
  const auto& tls = configuration.tls;
  if (!tls.listen) return;
  if (tls.certificateFile.empty() || tls.keyFile.empty()) {
    throw Failure(place(configuration, "tls", "listen") +
                  "TLS needs certificate_file and key_file in the same section");
  }
  if (!tokens.tokens().empty() || !tls.clientAuthority.empty()) return;
  throw Failure(place(configuration, "tls", "listen") +
                "there are neither tokens nor a client_ca_file, so that nobody could be told from "
                "anybody; " +
                howToMakeToken(configuration));
}

}  // namespace

Configuration loadConfiguration(const std::filesystem::path& home,
                                const std::filesystem::path& file) {
  Configuration configuration;
  configuration.home = std::filesystem::absolute(home);
  configuration.file =
      file.empty() ? configuration.home / "eventd.ini" : std::filesystem::absolute(file);
  configuration.unixSocket.path = configuration.home / "eventd.sock";
  configuration.tokensFile = configuration.home / "eventd.tokens";
  std::error_code ignored;
  if (!file.empty() && !std::filesystem::exists(configuration.file, ignored)) {
    throw Failure(configuration.file.string() + ": there is no such file; name one that exists, " +
                  "or leave --config out");
  }
  try {
    EventSystemHost::readEntries(configuration.file, entriesInto(configuration));
  } catch (const EventSystemHost::HostError& problem) {
    throw Failure(problem.what());
  }
  return configuration;
}

void requireSafe(const Configuration& configuration, const TokenFile& tokens) {
  if (configuration.tcp.listen) requireSafe(*configuration.tcp.listen, configuration, tokens);
  requireSafeTls(configuration, tokens);
}

void requireSomewhere(const Configuration& configuration, bool hasSockets) {
  const bool listens = configuration.unixSocket.enabled || configuration.tcp.listen ||
                       configuration.tls.listen || hasSockets;
  if (listens) return;
  throw Failure(configuration.file.string() +
                ": the daemon would listen nowhere; set [unix] enabled = 1 or [tcp] listen");
}

void requireSafe(const ListenAddress& adopted, const Configuration& configuration,
                 const TokenFile& tokens) {
  const std::string where = place(configuration, "tcp", "listen");
  if (!adopted.isLoopback) leavesMachineInTheClear(where, adopted);
  if (!tokens.tokens().empty()) return;
  throw Failure(where + "there are no tokens, and any user of the machine can connect to " +
                textOf(adopted) + "; " + howToMakeToken(configuration));
}

}  // namespace EventApps
