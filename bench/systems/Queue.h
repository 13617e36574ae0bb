// What every system in the comparison is asked to do: keep texts in order, hand them out, forget
// them again.
//
// Thread safety: a System may be asked for queues from one thread at a time; each Queue belongs to
// one thread, and the queues of one system may be used at the same time.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_QUEUE_H
#define EVENTSYSTEM_BENCH_SYSTEMS_QUEUE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace EventSystemBench {

class SystemError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Thrown where a system is started with a setting that the installed release does not have.
class NotOffered : public SystemError {
 public:
  using SystemError::SystemError;
};

struct QueuedText {
  std::uint64_t id;
  std::string text;
};

// One producer's or consumer's connection. Every call throws SystemError when it fails.
class Queue {
 public:
  Queue() = default;
  virtual ~Queue() = default;
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;

  // Returns when the system says that the text is stored, as durable as it was set up to be.
  virtual std::uint64_t produce(const std::string& text) = 0;

  // The first text after `after` (0: from the start), or nothing at the end. A system that hands
  // texts out instead of being walked passes over `after` and gives what nobody has got yet.
  virtual std::optional<QueuedText> next(std::uint64_t after) = 0;

  // Whether next() can go back to a text that has been read.
  virtual bool walks() const { return true; }

  // Returns when the system says that the text is gone, as durable as a produce.
  virtual void remove(std::uint64_t id) = 0;
};

// A system that has been started, with an empty queue. Its end stops it.
class System {
 public:
  System() = default;
  virtual ~System() = default;
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  // The system must outlive the queue.
  virtual std::unique_ptr<Queue> connect() = 0;
};

}  // namespace EventSystemBench

#endif
