#include "apps/eventd/Daemon.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "apps/common/Failure.h"
#include "apps/eventd/Ticker.h"
#include "apps/eventd/Version.h"
#include "apps/eventd/Workers.h"
#include "apps/eventd/access/AccessControl.h"
#include "apps/eventd/access/TokenStore.h"
#include "apps/eventd/api/Api.h"
#include "apps/eventd/api/EventStreams.h"
#include "apps/eventd/http/Server.h"
#include "apps/eventd/metrics/Metrics.h"
#include "apps/eventd/metrics/Rates.h"
#include "apps/eventd/queue/QueueService.h"
#include "host/logging/Log.h"

namespace EventApps {
namespace {

using std::chrono::milliseconds;

constexpr unsigned kWorkers = 2;
constexpr std::size_t kMostTasks = 256;
constexpr milliseconds kStreamTick(25);
constexpr milliseconds kSecond(1000);

// Network threads do little but move bytes.
unsigned networkThreads() {
  return std::clamp(std::thread::hardware_concurrency(), 2U, 8U);
}

ServiceLimits serviceLimits(const Configuration& configuration) {
  ServiceLimits limits;
  limits.waiting = configuration.limits.waiting;
  limits.keyLife = configuration.limits.idempotency;
  return limits;
}

Http::Limits httpLimits(const Configuration& configuration) {
  Http::Limits limits;
  limits.bodyBytes = configuration.limits.bodyBytes;
  limits.connections = configuration.limits.connections;
  limits.connectionsOfOnePeer = configuration.limits.connectionsPerAddress;
  limits.streamBacklog = configuration.limits.streamBacklogBytes;
  return limits;
}

// A start that failed may not leave the descriptors to somebody else.
class Adopted {
 public:
  explicit Adopted(const std::vector<int>& sockets) : m_sockets(sockets) {}
  ~Adopted() {
    for (const int socket : m_sockets) ::close(socket);
  }
  Adopted(const Adopted&) = delete;
  Adopted& operator=(const Adopted&) = delete;

  bool isEmpty() const { return m_sockets.empty(); }
  int first() const { return m_sockets.front(); }
  int take() {
    const int socket = m_sockets.front();
    m_sockets.erase(m_sockets.begin());
    return socket;
  }

 private:
  std::vector<int> m_sockets;
};

sockaddr_storage boundAddress(int socket) {
  sockaddr_storage bound{};
  socklen_t size = sizeof bound;
  if (::getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &size) != 0) {
    throw Failure("descriptor " + std::to_string(socket) +
                  " of the service manager is no socket; look at the socket unit");
  }
  return bound;
}

}  // namespace

class Daemon::Parts {
 public:
  Parts(const Configuration& configuration, const EventSystemHost::HostOptions& options,
        const std::vector<int>& sockets)
      : m_configuration(configuration),
        m_tokens(configuration.tokensFile),
        m_host(options),
        m_access(m_configuration, m_tokens),
        m_streams(configuration.limits.heartbeat),
        m_queues(std::make_unique<QueueService>(m_host, serviceLimits(configuration), &m_metrics)),
        m_workers(kWorkers, kMostTasks),
        m_services{.configuration = m_configuration,
                   .host = m_host,
                   .queues = *m_queues,
                   .access = m_access,
                   .metrics = m_metrics,
                   .rates = m_rates,
                   .workers = m_workers,
                   .streams = m_streams,
                   .connections = [this] { return m_server.figures(); }},
        m_api(m_services),
        m_server(
            httpLimits(configuration),
            [this](const std::shared_ptr<Http::Exchange>& exchange) { m_api.handle(exchange); },
            networkThreads()) {
    Adopted adopted(sockets);
    requireSafe(m_configuration, *m_tokens.tokens());
    attach();
    listen(adopted);
    startTasks();
    m_server.start();
    InfoA(0, "eventd %s listens on %s; home %s", kVersion, m_addresses.c_str(),
          m_host.configuration().home.c_str());
  }

  ~Parts() {
    m_services.stopping = true;
    InfoA(0, "eventd stops: no new requests, what was accepted is finished");
    m_server.stop(m_configuration.limits.grace);
    m_ticker.stop();
    m_workers.stop();
    m_queues.reset();  // what it finishes is still answered and logged
  }

  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  void reload() {
    m_tokens.reload();
    try {
      m_server.reloadTls();
      InfoA(0, "eventd: tokens and certificates were read again");
    } catch (const Http::ServerError& problem) {
      ErrorA(4, "eventd: the TLS certificates stay as they were: %s", problem.what());
    }
  }

  bool makesProgress() { return m_queues->makesProgress(); }

  const std::string& addresses() const { return m_addresses; }

 private:
  void attach() {
    m_server.onAdmission([this](const Http::Request& head) { return m_api.admit(head); });
    m_server.onRefusal([this](unsigned status, const std::string& detail) {
      return m_api.refuse(status, detail);
    });
    m_server.onComplaint(
        [](const std::string& message) { WarningA(0, "eventd: %s", message.c_str()); });
  }

  // A Unix socket of the service manager stands for that of the configuration.
  void listen(Adopted& adopted) {
    bool hasUnix = false;
    while (!adopted.isEmpty()) hasUnix = adopt(adopted) || hasUnix;
    const auto& local = m_configuration.unixSocket;
    if (local.enabled && !hasUnix) {
      m_server.listenUnix(local.path, local.mode, local.group);
      add(local.path.string());
    }
    if (auto address = m_configuration.tcp.listen) {
      address->port = m_server.listenTcp(address->host, address->port);
      add("http://" + textOf(*address));
    }
    if (auto address = m_configuration.tls.listen) {
      const auto& tls = m_configuration.tls;
      address->port = m_server.listenTls(address->host, address->port,
                                         {tls.certificateFile, tls.keyFile, tls.clientAuthority});
      add("https://" + textOf(*address));
    }
  }

  // Whether it is a Unix socket.
  bool adopt(Adopted& adopted) {
    const sockaddr_storage bound = boundAddress(adopted.first());
    const auto address = addressOf(bound);
    if (address) requireSafe(*address, m_configuration, *m_tokens.tokens());
    m_server.adopt(adopted.take());
    add(address ? "http://" + textOf(*address) : "the socket of the service manager");
    return bound.ss_family == AF_UNIX;
  }

  void add(const std::string& address) {
    m_addresses.append(m_addresses.empty() ? "" : ", ").append(address);
  }

  void startTasks() {
    m_rates.sample(m_queues->counters());
    m_ticker.every(kStreamTick, [this] { m_streams.tick(); });
    m_ticker.every(kSecond, [this] {
      m_rates.sample(m_queues->counters());
      m_tokens.reloadIfChanged();
      EventSystemHost::flushLog();
    });
  }

  // In the order in which each needs those before it.
  const Configuration m_configuration;
  TokenStore m_tokens;
  EventSystemHost::Host m_host;
  AccessControl m_access;
  Metrics m_metrics;
  Rates m_rates;
  Api::EventStreams m_streams;
  std::unique_ptr<QueueService> m_queues;
  Workers m_workers;
  Api::Services m_services;
  Api::Api m_api;
  Http::Server m_server;
  Ticker m_ticker;
  std::string m_addresses;
};

Daemon::Daemon(const Configuration& configuration, const EventSystemHost::HostOptions& options,
               const std::vector<int>& sockets)
    : m_parts(std::make_unique<Parts>(configuration, options, sockets)) {}

Daemon::~Daemon() = default;

void Daemon::reload() {
  m_parts->reload();
}

bool Daemon::makesProgress() {
  return m_parts->makesProgress();
}

std::string Daemon::addresses() const {
  return m_parts->addresses();
}

}  // namespace EventApps
