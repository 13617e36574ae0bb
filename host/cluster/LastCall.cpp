#include "host/cluster/LastCall.h"

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

void noteClusterCall(const std::string& failure) {
  callOfThisThread() = {0, failure};
}

void noteNewEvent(unsigned long id) {
  callOfThisThread() = {id, ""};
}

}  // namespace EventSystemHost
