// A home of eventctl whose queues are at etcd servers of the test's own.
//
// Thread safety: none; used by the thread of the test.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CLUSTERHOME_H
#define EVENTSYSTEM_TESTS_CLUSTER_CLUSTERHOME_H

#include <fstream>
#include <string>

#include "tests/cluster/EtcdCluster.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {

class ClusterHome : public EventctlHome {
 protected:
  // Takes the home to these members, separated by commas; `more` are lines of its [cluster].
  void joinCluster(const std::string& endpoints, const std::string& more = "") const {
    joinCluster(home(), "node1", endpoints, more);
  }
  void joinCluster(const EtcdCluster& etcd) const {
    joinCluster(endpointsOf(etcd), "deadline_ms = 4000\n");
  }

  // The same for another home, which is known as `member`.
  static void joinCluster(const std::filesystem::path& home, const std::string& member,
                          const std::string& endpoints, const std::string& more = "") {
    std::filesystem::create_directories(home);
    std::ofstream(home / "host.ini") << "[cluster]\ncluster_mode = 1\nmember = " << member
                                     << "\nendpoints = " << endpoints << '\n'
                                     << more;
  }

  static std::string endpointsOf(const EtcdCluster& etcd) {
    std::string all;
    for (const std::string& endpoint : etcd.endpoints()) {
      all += (all.empty() ? "" : ",") + endpoint;
    }
    return all;
  }

  // Back to the queues in the database.
  void leaveCluster() const { std::filesystem::remove(home() / "host.ini"); }

  // How many changes etcd has seen; a reader makes none.
  static std::string revision(const EtcdCluster& etcd) {
    const json header = json::parse(etcd.etcdctl({"get", "none", "-w", "json"}))["header"];
    return header["revision"].dump();
  }

  // Puts a value where the event of an id is, past the service.
  static void putEvent(const EtcdCluster& etcd, const std::string& idAndQueue,
                       const std::string& value) {
    etcd.etcdctl({"put", "/eventsystem/events/" + idAndQueue, value});
  }
};

}  // namespace EventSystemTest

#endif
