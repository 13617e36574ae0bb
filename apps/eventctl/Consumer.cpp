#include "apps/eventctl/Consumer.h"

#include <nlohmann/json.hpp>

#include "apps/eventctl/EventTable.h"

namespace EventApps {

Consumer::Consumer(const GlobalOptions& global, const ConsumeOptions& options)
    : m_global(global), m_options(options), m_table(eventTable(m_output, Overflow::kWrap)) {}

void Consumer::drain(WritableQueues& queues, const StopAsked& stop) {
  finishPrinted(queues);
  while (!reachedLimit() && !stop()) {
    const auto event = queues.next(m_after, m_global.dsid);
    if (!event) break;
    print(*event);
    m_printed = event->id;
    ++m_count;
    finishPrinted(queues);
  }
  queues.makeDurable();
}

// Until this returns, the event is not known to have been handed over.
void Consumer::print(const EventView& event) {
  if (m_global.json) {
    m_output.line(jsonLine(jsonOf(event)));
  } else {
    m_table.row(tableRow(event));
  }
  m_output.sync();
}

void Consumer::finishPrinted(WritableQueues& queues) {
  if (m_printed == 0) return;
  if (m_options.keep) {
    m_after = m_printed;
  } else {
    queues.discard(m_printed, m_global.dsid);
  }
  m_printed = 0;
}

}  // namespace EventApps
