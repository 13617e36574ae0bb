// eventctl started again, as a process of its own.
//
// Thread safety: used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CHILDPROCESS_H
#define EVENTSYSTEM_APPS_EVENTCTL_CHILDPROCESS_H

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace EventCtl {

// Runs this program with `arguments` in `directory`, and hands every line that it writes to
// standard output or standard error to `line`. Returns its exit status. `environment` is added to
// this process's own. Throws CommandError when it cannot be started or ends by a signal.
int runSelf(const std::vector<std::string>& arguments, const std::filesystem::path& directory,
            const std::vector<std::string>& environment,
            const std::function<void(const std::string&)>& line);

}  // namespace EventCtl

#endif
