// Hands the events of a queue to standard output and then deletes them.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CONSUMER_H
#define EVENTSYSTEM_APPS_EVENTCTL_CONSUMER_H

#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/Table.h"
#include "apps/eventctl/CommandLine.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"

namespace EventApps {

struct ConsumeOptions {
  unsigned long limit = 0;  // 0: no limit
  bool keep = false;
  bool follow = false;
};

class Consumer {
 public:
  Consumer(const GlobalOptions& global, const ConsumeOptions& options);

  // Whether as much is done as was asked for.
  bool finished() const { return reachedLimit() && m_printed == 0; }
  unsigned long count() const { return m_count; }
  // What it has behind it, where it keeps what it prints; else 0.
  unsigned long after() const { return m_after; }

  // Prints and deletes until the queue is empty, the limit is reached or `stop` says so. After a
  // failure it can be called again: what was printed is not printed again.
  void drain(WritableQueues& queues, const StopAsked& stop);

 private:
  bool reachedLimit() const { return m_options.limit != 0 && m_count == m_options.limit; }
  void print(const EventView& event);
  void finishPrinted(WritableQueues& queues);

  Output& m_output = standardOutput();
  const GlobalOptions& m_global;
  const ConsumeOptions& m_options;
  Table m_table;
  unsigned long m_after = 0;
  unsigned long m_count = 0;
  unsigned long m_printed = 0;  // the event that is printed and not deleted yet
};

}  // namespace EventApps

#endif
