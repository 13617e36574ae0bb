// A CLI11 option or argument that takes a decimal number.
//
// Thread safety: used while the command line is read, by one thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_NUMBEROPTION_H
#define EVENTSYSTEM_APPS_EVENTCTL_NUMBEROPTION_H

#include <CLI/CLI.hpp>
#include <limits>
#include <string>

#include "apps/common/Numbers.h"

namespace EventApps {

template <typename Number>
Number readNumber(const std::string& option, const std::string& text, Number least, Number most) {
  const auto value = parseNumber<Number>(text);
  if (value && *value >= least && *value <= most) return *value;
  throw CLI::ValidationError(option, "'" + text + "' is not a whole number from " +
                                         std::to_string(least) + " to " + std::to_string(most));
}

// `target` must live until the command line has been read.
template <typename Number>
CLI::Option* addNumber(CLI::App& app, const std::string& option, Number& target,
                       const std::string& help, Number least = std::numeric_limits<Number>::min(),
                       Number most = std::numeric_limits<Number>::max()) {
  return app
      .add_option_function<std::string>(
          option,
          [&target, option, least, most](const std::string& text) {
            target = readNumber<Number>(option, text, least, most);
          },
          help)
      ->type_name("N");
}

}  // namespace EventApps

#endif
