#include "host/cluster/LastCall.h"

#include <utility>

namespace EventSystemHost {
namespace {

ClusterCall& callOfThisThread() {
  thread_local ClusterCall call;
  return call;
}

}  // namespace

const ClusterCall& lastClusterCall() {
  return callOfThisThread();
}

void noteClusterCall(ClusterCall call) {
  callOfThisThread() = std::move(call);
}

}  // namespace EventSystemHost
