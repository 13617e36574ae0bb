// Which member of the etcd cluster is asked next: one after the other, passing by those that have
// failed to answer until they are known to answer again.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_MEMBERCHOICE_H
#define EVENTSYSTEM_HOST_CLUSTER_MEMBERCHOICE_H

#include <cstddef>
#include <mutex>
#include <vector>

namespace EventSystemHost {

class MemberChoice {
 public:
  explicit MemberChoice(std::size_t members) : m_avoided(members, false) {}

  // The next member by its number from 0. When all have failed, they are asked in turn anyway.
  std::size_t next();

  void avoid(std::size_t member);
  void forgive(std::size_t member);

  std::vector<std::size_t> avoided() const;
  bool allAvoided() const;

 private:
  void advance();

  mutable std::mutex m_mutex;
  std::vector<bool> m_avoided;
  std::size_t m_last = 0;
};

}  // namespace EventSystemHost

#endif
