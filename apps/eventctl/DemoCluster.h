// The tour of the cluster mode: `eventctl demo --cluster`.
//
// Thread safety: used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOCLUSTER_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOCLUSTER_H

#include <filesystem>

namespace EventApps {

struct DemoClusterOptions {
  std::filesystem::path home;  // empty: in the host's default home
  bool keep = false;           // the directory, with all that is in it
};

// Runs the tour: its exit status. Throws Failure.
int runDemoCluster(const DemoClusterOptions& options);

}  // namespace EventApps

#endif
