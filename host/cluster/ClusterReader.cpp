#include "host/cluster/ClusterReader.h"

#include <algorithm>
#include <climits>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"
#include "host/cluster/GrpcLog.h"
#include "host/cluster/MemberProbe.h"
#include "host/cluster/PageReader.h"
#include "host/cluster/PeriodicTask.h"

namespace EventSystemHost {
namespace {

constexpr std::chrono::seconds kProbeInterval{1};

// The last id of a span that begins with `first`, not above `most`.
unsigned long endOfSpan(unsigned long first, unsigned long span, unsigned long most) {
  return first + std::min(span - 1, most - first);
}

}  // namespace

struct ClusterReader::Parts {
  explicit Parts(const ClusterConfiguration& values)
      : configuration(values),
        channel(configuration),
        watch(kProbeInterval, [this] { channel.probeAvoided(); }) {}

  EventPage page(const EtcdKeys& keys, unsigned long first, unsigned long last) {
    EventPage page;
    require(PageReader(channel).read(keys, first, last, kPageEvents, deadline(), page));
    return page;
  }

  // The first key of a range.
  std::optional<std::string> firstKey(const std::string& begin, const std::string& end) {
    etcdserverpb::RangeRequest request;
    request.set_key(begin);
    request.set_range_end(end);
    request.set_limit(1);
    request.set_keys_only(true);
    etcdserverpb::RangeResponse answer;
    require(channel.range(request, answer, deadline()));
    if (answer.kvs_size() == 0) return std::nullopt;
    return answer.kvs(0).key();
  }

  Deadline deadline() const { return Deadline(configuration.deadline); }

  static void require(const EtcdResult& result) {
    if (result.failure == EtcdFailure::kNoMajority) throw ClusterWithoutMajority(result.message);
    if (!result.ok()) throw ClusterError(result.message);
  }

  const GrpcLog grpcLog;
  const ClusterConfiguration configuration;
  EtcdChannel channel;
  PeriodicTask watch;  // for members that have failed
};

ClusterReader::ClusterReader(const ClusterConfiguration& configuration, const std::string& queue)
    : m_configuration(configuration), m_queue(queue) {}

ClusterReader::~ClusterReader() = default;

ClusterReader::Parts& ClusterReader::parts() const {
  try {
    const std::lock_guard lock(m_mutex);
    if (!m_parts) m_parts = std::make_unique<Parts>(m_configuration);
    return *m_parts;
  } catch (const std::runtime_error& problem) {
    throw ClusterError(problem.what());
  }
}

// Endpoints of two clusters would be read in turn, so the first one asks each who it is.
ClusterReader::Parts& ClusterReader::checkedParts() {
  Parts& opened = parts();
  const std::lock_guard lock(m_mutex);
  if (m_checked) return opened;
  try {
    checkMembers(m_configuration);
  } catch (const std::runtime_error& problem) {
    throw ClusterError(problem.what());
  }
  m_checked = true;
  return opened;
}

void ClusterReader::forEach(unsigned int dsid, unsigned long afterId, const Visitor& visit) {
  if (afterId == ULONG_MAX) return;
  Parts& opened = checkedParts();
  const EtcdKeys keys(m_queue, dsid);
  std::optional<unsigned long> end;
  unsigned long span = kPageEvents;
  for (unsigned long first = afterId + 1;;) {
    const EventPage page =
        opened.page(keys, first, endOfSpan(first, span, end.value_or(ULONG_MAX)));
    for (const ClusterEvent& event : page.events) {
      if (!visit(event)) return;
    }
    if (!end) end = page.highest;
    if (page.last >= *end) return;
    first = page.last + 1;
    span = nextSpan(span, page.events.size());
  }
}

std::optional<ClusterEvent> ClusterReader::find(unsigned long id, unsigned int dsid) {
  const EventPage page = checkedParts().page(EtcdKeys(m_queue, dsid), id, id);
  if (page.events.empty()) return std::nullopt;
  return page.events.front();
}

unsigned long ClusterReader::highestId(unsigned int dsid) {
  // Nothing has the id 0.
  return checkedParts().page(EtcdKeys(m_queue, dsid), 0, 0).highest;
}

// Small steps where data selections are, because etcd gathers all keys of a range; wide ones over
// the numbers that have none.
std::vector<unsigned int> ClusterReader::dataSelections() {
  constexpr unsigned long kGrowth = 16;
  Parts& opened = checkedParts();
  std::vector<unsigned int> found;
  unsigned long span = 1;
  for (unsigned long first = 0; first <= UINT_MAX;) {
    const unsigned long last = endOfSpan(first, span, UINT_MAX);
    const auto key =
        opened.firstKey(EtcdKeys(m_queue, static_cast<unsigned int>(first)).prefix(),
                        behindPrefix(EtcdKeys(m_queue, static_cast<unsigned int>(last)).prefix()));
    const auto dsid = key ? dsidOfKey(m_queue, *key) : std::nullopt;
    if (key && !dsid) throw ClusterError("the key " + *key + " was not written by this system");
    if (dsid) found.push_back(*dsid);
    span = dsid ? 1 : span * kGrowth;
    first = dsid ? *dsid + 1UL : last + 1;
  }
  return found;
}

ClusterReport ClusterReader::report() {
  try {
    return makeReport(m_configuration, parts().channel);
  } catch (const ClusterError& problem) {
    ClusterReport report;
    report.failure = problem.what();
    return report;
  }
}

unsigned long ClusterReader::roundTrips() const {
  return parts().channel.roundTrips();
}

}  // namespace EventSystemHost
