// What a worker process tells its driver through a pipe: what it is about to do, and what has
// returned. A message is written in one piece, so that a death leaves none cut short and threads
// mix none.
//
// Thread safety: any thread may send(); a MessageReader belongs to one.

#ifndef EVENTSYSTEM_TESTS_DEATH_MESSAGE_H
#define EVENTSYSTEM_TESTS_DEATH_MESSAGE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ForkedProcess.h"

namespace EventSystemTest {

// How far a worker has come.
enum class Stage : unsigned char {
  kBorn,        // nothing is open yet
  kHostOpen,    // the host is; the manager is next: repair, import, check
  kQueueOpen,   // the queue can be used; what is in it will be told
  kWorking,     // the threads are about to start
  kClosing,     // the threads have ended
  kQueueClosed  // host and database are closed
};

struct Message {
  enum class Kind : unsigned char {
    kStage,        // number: the Stage
    kContents,     // an event that the queue held at the start: queue, id, text
    kContentsEnd,  // no more of these
    kProblems,     // number: what a consistency check counted
    kWillAdd,      // queue, number of the event, its text, with id 0
    kAdded,        // number, id and result of the call
    kWillDelete,   // queue, id and text of what getNextEvent gave
    kDeleted,      // queue, id
    kRefused       // a call other than newEvent failed: number is the result, text the call
  };

  Kind kind = Kind::kStage;
  std::uint32_t queue = 0;
  std::uint64_t number = 0;
  std::uint64_t id = 0;
  std::int64_t result = 0;
  std::string text{};
};

void send(int output, const Message& message);

class MessageReader {
 public:
  explicit MessageReader(const ForkedProcess& process) : m_process(process) {}

  // The next one; nothing when the process has ended and all was read.
  std::optional<Message> next();

 private:
  bool readMore();

  const ForkedProcess& m_process;
  std::vector<char> m_bytes;
  std::size_t m_used = 0;
};

}  // namespace EventSystemTest

#endif
