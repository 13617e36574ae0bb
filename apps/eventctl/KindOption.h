// The option --type, which names a kind of events.
//
// Thread safety: used while the command line is read, by one thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_KINDOPTION_H
#define EVENTSYSTEM_APPS_EVENTCTL_KINDOPTION_H

#include <string>

#include "apps/common/EventKinds.h"
#include "apps/eventctl/CommandLine.h"

namespace EventApps {

// `kind` stays as it is without the option, and lives until the command has run.
inline void addKindOption(Command& command, const EventKind*& kind) {
  command.value("--type", "TYPE", "only events of this type, by name or number",
                [&kind](const std::string& text) {
                  kind = kindNamed(text);
                  return kind != nullptr ? ""
                                         : "'" + text + "' is no type; see eventctl add --help";
                });
}

}  // namespace EventApps

#endif
