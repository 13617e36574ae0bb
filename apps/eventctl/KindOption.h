// The option --type, which names a kind of events.
//
// Thread safety: used while the command line is read, by one thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_KINDOPTION_H
#define EVENTSYSTEM_APPS_EVENTCTL_KINDOPTION_H

#include <CLI/CLI.hpp>
#include <string>

#include "apps/common/EventKinds.h"

namespace EventApps {

// `kind` stays as it is without the option, and lives until the command line has been read.
inline void addKindOption(CLI::App& command, const EventKind*& kind) {
  command
      .add_option_function<std::string>(
          "--type",
          [&kind](const std::string& text) {
            kind = kindNamed(text);
            if (kind != nullptr) return;
            throw CLI::ValidationError("--type",
                                       "'" + text + "' is no type; see eventctl add --help");
          },
          "only events of this type, by name or number")
      ->type_name("TYPE");
}

}  // namespace EventApps

#endif
