#include "apps/eventctl/Consumer.h"

#include "apps/eventctl/EventTable.h"

namespace EventApps {

Consumer::Consumer(const GlobalOptions& global, const ConsumeOptions& options)
    : m_global(global), m_options(options), m_table(eventTable(m_output, Overflow::kWrap)) {}

void Consumer::drain(QueueSession& session, const StopAsked& stop) {
  finishPrinted(session);
  while (!reachedLimit() && !stop()) {
    const auto event = session.queues().next(m_after, m_global.dsid);
    if (!event) break;
    print(*event);
    m_printed = event->getId();
    ++m_count;
    finishPrinted(session);
  }
  session.queues().makeDurable();
}

// Until this returns, the event is not known to have been handed over.
void Consumer::print(EventSystem::Event& event) {
  const EventView view = viewOf(event, m_global.dsid);
  if (m_global.json) {
    m_output.line(jsonLine(jsonOf(view)));
  } else {
    m_table.row(tableRow(view));
  }
  m_output.sync();
}

void Consumer::finishPrinted(QueueSession& session) {
  if (m_printed == 0) return;
  if (m_options.keep) {
    m_after = m_printed;
  } else {
    session.queues().remove(m_printed, m_global.dsid);
  }
  m_printed = 0;
}

}  // namespace EventApps
