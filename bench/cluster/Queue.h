// A queue at etcd, whoever keeps it there.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_QUEUE_H
#define EVENTSYSTEM_BENCH_CLUSTER_QUEUE_H

namespace Bench {

// The member that writes all events.
constexpr char kMember[] = "bench";

// The functions throw std::runtime_error when the call fails.
class Queue {
 public:
  Queue() = default;
  virtual ~Queue() = default;
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;

  virtual void add() = 0;
  // The id of the first event after this one, 0 at the end of the queue.
  virtual unsigned long next(unsigned long afterId) = 0;
  virtual void remove(unsigned long id) = 0;
};

}  // namespace Bench

#endif
