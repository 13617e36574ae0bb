// An eventd that is a member of a cluster, in a home of its own.
//
// Thread safety: as DaemonHome.

#ifndef EVENTSYSTEM_TESTS_EVENTD_CLUSTER_MEMBERDAEMON_H
#define EVENTSYSTEM_TESTS_EVENTD_CLUSTER_MEMBERDAEMON_H

#include <string>
#include <vector>

#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {

class MemberDaemon : public DaemonHome {
 public:
  MemberDaemon(const std::string& member, const std::vector<std::string>& endpoints,
               int deadlineMilliseconds = 8000) {
    std::string all;
    for (const std::string& each : endpoints) all += (all.empty() ? "" : ",") + each;
    write("host.ini", "[cluster]\ncluster_mode = 1\nmember = " + member + "\nendpoints = " + all +
                          "\ndeadline_ms = " + std::to_string(deadlineMilliseconds) + "\n");
    start();
  }

  using DaemonHome::add;
  using DaemonHome::eventctl;
  using DaemonHome::get;
  using DaemonHome::home;
  using DaemonHome::ids;
  using DaemonHome::post;
  using DaemonHome::socket;

  Reply remove(unsigned long id) const {
    return request({.method = "DELETE", .path = "/v1/queues/0/events/" + std::to_string(id)});
  }

  // Of the page that a request with these parameters shows.
  std::vector<unsigned long> page(const std::string& parameters) const {
    std::vector<unsigned long> found;
    const json read = jsonOf(get("/v1/queues/0/events?" + parameters));
    for (const json& event : read["events"]) found.push_back(event["id"].get<unsigned long>());
    return found;
  }

 private:
  void TestBody() override {}
};

}  // namespace EventSystemTest

#endif
