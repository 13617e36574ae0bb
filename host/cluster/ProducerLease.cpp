#include "host/cluster/ProducerLease.h"

#include <unistd.h>

#include <algorithm>
#include <random>
#include <utility>

#include "EventSystem/platform/HostLog.h"

namespace EventSystemHost {
namespace {

constexpr std::chrono::seconds kShortestRest{1};
constexpr std::chrono::seconds kLongestRest{10};
constexpr std::chrono::seconds kFarewell{2};

std::uint64_t randomNumber() {
  std::random_device device;
  return (std::uint64_t{device()} << 32) | device();
}

std::string producerName() {
  return std::to_string(getpid()) + "-" + std::to_string(randomNumber());
}

// Positive, and never one that was used before, so that asking twice is asking once.
std::int64_t newLeaseId() {
  return static_cast<std::int64_t>(randomNumber() & INT64_MAX) | 1;
}

}  // namespace

ProducerLease::ProducerLease(EtcdChannel& channel, const ClusterConfiguration& configuration)
    : m_channel(channel),
      m_deadline(configuration.deadline),
      m_ttl(configuration.leaseTtl),
      m_producer(producerName()),
      m_keeper(std::in_place, std::clamp(m_ttl / 3, kShortestRest, kLongestRest),
               [this] { keepAlive(); }) {}

ProducerLease::~ProducerLease() {
  m_keeper.reset();
  if (m_id == 0) return;
  const EtcdResult result = m_channel.revokeLease(m_id, Deadline(kFarewell));
  if (result.ok() || result.failure == EtcdFailure::kLeaseGone) return;
  InfoA(0, "%s the tokens of this process stay at etcd for up to %lld s: %s", __func__,
        static_cast<long long>(m_ttl.count()), result.message.c_str());
}

std::int64_t ProducerLease::current() const {
  const std::lock_guard lock(m_mutex);
  return m_id;
}

EtcdResult ProducerLease::use(std::int64_t& id, const Deadline& deadline) {
  id = current();
  if (id != 0) return {};
  const Gate::Pass pass(m_grantGate, deadline);
  if (!pass) return {EtcdFailure::kUnsettled, "getting a lease from etcd takes too long", false};
  id = current();
  if (id != 0) return {};
  const std::int64_t asked = newLeaseId();
  EtcdResult result = m_channel.grantLease(asked, m_ttl, deadline);
  if (!result.ok()) return result;
  const std::lock_guard lock(m_mutex);
  m_id = id = asked;
  return result;
}

void ProducerLease::lost(std::int64_t id) {
  const std::lock_guard lock(m_mutex);
  if (m_id == id) m_id = 0;
}

void ProducerLease::keepAlive() {
  const std::int64_t id = current();
  if (id == 0) return;
  bool alive = false;
  const EtcdResult result = m_channel.keepLeaseAlive(id, alive, Deadline(m_deadline));
  if (!result.ok()) {
    WarningA(4, "%s the lease of this process was not renewed: %s", __func__,
             result.message.c_str());
  } else if (!alive) {
    lost(id);
  }
}

}  // namespace EventSystemHost
