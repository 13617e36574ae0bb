// What one line of `eventctl import` says: which event is to go into which queue, or why none is.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_APPS_COMMON_IMPORTLINE_H
#define EVENTSYSTEM_APPS_COMMON_IMPORTLINE_H

#include <functional>
#include <memory>
#include <string>

#include "EventSystem/Event.h"
#include "apps/common/EventLimits.h"

namespace EventApps {

struct ImportedEvent {
  std::unique_ptr<EventSystem::Event> event;  // with id 0; null when there is a problem
  unsigned int dsid = 0;
  std::string problem;
};

class ImportLines {
 public:
  // Whether a data selection exists, and where the next event of a queue goes.
  using Exists = std::function<bool(unsigned int dsid)>;
  using DestinationOf = std::function<Destination(unsigned int dsid)>;

  // `dsid` is that of lines that name none.
  ImportLines(unsigned int dsid, Exists exists, DestinationOf destinationOf)
      : m_dsid(dsid), m_exists(std::move(exists)), m_destinationOf(std::move(destinationOf)) {}

  // Blank lines, blanks and tabs included, and comments carry nothing.
  static bool carriesEvent(const std::string& line) {
    return line.find_first_not_of(" \t") != std::string::npos && line[0] != '#';
  }

  // An event that is returned is stored whole, and as the line has it.
  ImportedEvent read(std::string line) const;

 private:
  std::string takeDataSelection(std::string& line, unsigned int& dsid) const;

  unsigned int m_dsid;
  Exists m_exists;
  DestinationOf m_destinationOf;
};

}  // namespace EventApps

#endif
