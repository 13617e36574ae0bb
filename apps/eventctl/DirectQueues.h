// The queues as this process opens them: beside a writer to read, or as their only writer.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DIRECTQUEUES_H
#define EVENTSYSTEM_APPS_EVENTCTL_DIRECTQUEUES_H

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/QueueReader.h"
#include "apps/eventctl/ChangeWatch.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"

namespace EventApps {

// What both kinds of access read from an open host.
template <class Interface>
class HostReading : public Interface {
 public:
  bool hasQueue(unsigned int dsid) override;
  void forEach(unsigned int dsid, unsigned long after, const EventKind* kind,
               const ReadableQueues::Visitor& visit) override;
  std::optional<EventView> find(unsigned long id, unsigned int dsid) override;
  std::vector<std::pair<DataSelection, unsigned long>> selections() override;
  Statistics statistics() override;
  Woken waitForMore(unsigned int dsid, unsigned long after, const Listener& listener) override;

 protected:
  virtual const EventSystemHost::Host& openedHost() const = 0;
  const QueueReader& reader();
  void forgetReader() { m_reader.reset(); }

 private:
  std::unique_ptr<QueueReader> m_reader;
  std::unique_ptr<ChangeWatch> m_watch;
};

extern template class HostReading<ReadableQueues>;
extern template class HostReading<WritableQueues>;

class DirectReader : public HostReading<ReadableQueues> {
 public:
  explicit DirectReader(const GlobalOptions& options) : m_host(openReader(options)) {}

 private:
  const EventSystemHost::Host& openedHost() const override { return *m_host; }

  OpenHost m_host;
};

// The event manager is built, which repairs the tables and takes in audit records, when a queue is
// first written to or consumed from.
class DirectQueues : public HostReading<WritableQueues> {
 public:
  explicit DirectQueues(OpenHost host) : m_host(std::move(host)) {}

  Destination destination(unsigned int dsid, bool exact) override;
  std::size_t eventsAtOnce() const override { return 1; }
  StoreOutcome store(Events events, unsigned int dsid) override;
  std::optional<EventView> next(unsigned long after, unsigned int dsid) override;
  bool remove(unsigned long id, unsigned int dsid) override;
  void discard(unsigned long id, unsigned int dsid) override;
  unsigned long removeUpTo(unsigned long upTo, unsigned int dsid) override;
  void addSelection(const DataSelection& selection) override;
  void removeSelection(unsigned int dsid) override;
  void makeDurable() override;

  // Cluster mode: frees the database for other processes and goes on at the service. What a start
  // of the manager does is not done again. Throws HostError; the object is then of no use.
  void leaveDatabase(const GlobalOptions& options);

 private:
  const EventSystemHost::Host& openedHost() const override { return *m_host; }
  HostQueues& queues();

  OpenHost m_host;
  std::optional<HostQueues> m_queues;
};

}  // namespace EventApps

#endif
