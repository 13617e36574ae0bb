// `eventctl backup FILE` and `eventctl restore FILE`: copies of the database file.

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DaemonFiles.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/ProgressBar.h"
#include "apps/eventctl/Session.h"
#include "host/backup/Backup.h"

namespace EventApps {
namespace {

using EventSystemHost::DatabaseContent;
using EventSystemHost::HostConfiguration;

struct CopyOptions {
  std::string file;
  bool force = false;
  bool keepIds = true;
};

HostConfiguration configurationOf(const GlobalOptions& global) {
  return EventSystemHost::effectiveConfiguration(
      hostOptions(global, EventSystemHost::Access::kReadOnly));
}

class CopyBar {
 public:
  void operator()(std::size_t done, std::size_t total) {
    if (!m_bar) m_bar.emplace(total);
    m_bar->update(done);
  }

 private:
  std::optional<ProgressBar> m_bar;
};

nlohmann::ordered_json jsonOf(const DatabaseContent& content) {
  auto queues = nlohmann::ordered_json::array();
  for (const auto& [dsid, count] : content.events) {
    queues.push_back({{"dsid", dsid}, {"count", count}});
  }
  return {{"bytes", content.bytes}, {"highestId", content.highestId}, {"queues", queues}};
}

void printContent(const DatabaseContent& content) {
  Output& output = standardOutput();
  for (const auto& [dsid, count] : content.events) {
    output.line("  " + displayCount(count) + (count == 1 ? " event in " : " events in ") +
                queueName(dsid));
  }
  output.line("  highest id of the global queue: " + std::to_string(content.highestId));
}

void printClusterNote(const HostConfiguration& configuration, const char* note) {
  if (configuration.clusterMode) standardOutput().line(note);
}

int runBackup(const GlobalOptions& global, const CopyOptions& options) {
  std::error_code error;
  if (!options.force && std::filesystem::exists(options.file, error)) {
    throw Failure(options.file + ": exists already; --force replaces it");
  }
  requireFreeForOutput(options.file, global);
  const HostConfiguration configuration = configurationOf(global);
  CopyBar bar;
  const DatabaseContent content =
      EventSystemHost::backUpDatabase(configuration, options.file, options.force, std::ref(bar));
  Output& output = standardOutput();
  if (global.json) {
    auto object = jsonOf(content);
    object["file"] = options.file;
    object["database"] = configuration.databaseFile.string();
    object["clusterMode"] = configuration.clusterMode;
    output.line(jsonLine(object));
  } else {
    output.line("Backed up " + displayText(configuration.databaseFile.string()) + " to " +
                displayText(options.file) + ", " + displayCount(content.bytes) + " bytes:");
    printContent(content);
    printClusterNote(
        configuration,
        "The queues are at the cluster service, and their events there are not in the\n"
        "backup: it is of the fall-back copy and the data selections.");
  }
  output.flush();
  return kDone;
}

void printIds(const EventSystemHost::Restored& restored, bool keepIds) {
  if (restored.highestIdBefore <= restored.highestId) return;
  standardOutput().line((keepIds
                             ? "  raised from " + std::to_string(restored.highestId) +
                                   ", so that no id that was handed out since is given again"
                             : "  ids from " + std::to_string(restored.highestId + 1) + " to " +
                                   std::to_string(restored.highestIdBefore) +
                                   " were handed out since the backup and will be given again"));
}

void printRestored(const HostConfiguration& configuration, const CopyOptions& options,
                   const EventSystemHost::Restored& restored) {
  Output& output = standardOutput();
  output.line("Restored " + displayText(configuration.databaseFile.string()) + " from " +
              displayText(options.file) + ":");
  printContent(restored.content);
  printIds(restored, options.keepIds);
  if (!restored.kept.empty()) {
    output.line("The database that it replaces is " + displayText(restored.kept.string()) + ".");
  }
  printClusterNote(configuration,
                   "The queues are at the cluster service, which this does not change. The next\n"
                   "start copies the restored rows there that it has not seen, or no longer\n"
                   "remembers: delete those that were consumed, with cluster_mode = 0, before it.");
}

int runRestore(const GlobalOptions& global, const CopyOptions& options) {
  const HostConfiguration configuration = configurationOf(global);
  CopyBar bar;
  const auto restored =
      EventSystemHost::restoreDatabase(configuration, options.file, options.keepIds, std::ref(bar));
  if (global.json) {
    auto object = jsonOf(restored.content);
    object["database"] = configuration.databaseFile.string();
    object["kept"] = restored.kept.string();
    object["highestIdOfBackup"] = restored.highestId;
    object["highestIdBefore"] = restored.highestIdBefore;
    object["clusterMode"] = configuration.clusterMode;
    standardOutput().line(jsonLine(object));
  } else {
    printRestored(configuration, options, restored);
  }
  standardOutput().flush();
  return kDone;
}

}  // namespace

void defineBackup(Command parent) {
  Command command = parent.add(
      "backup", "copy the database to a file while it is in use",
      "backup /backup/events-monday.db\n\n"
      "The copy is the database at one moment, checked and durable, in one file that is\n"
      "there when it is complete. Configuration and audit records that wait in\n"
      "audit.db are not in it; in cluster mode, nor are the events at the service.");
  const auto options = std::make_shared<CopyOptions>();
  command.text("FILE", "", "the file to make", options->file, Need::kRequired);
  command.flag("--force", "replace FILE where it exists", options->force);
  command.runs([&global = command.global(), options] { return runBackup(global, *options); });
}

void defineRestore(Command parent) {
  Command command = parent.add(
      "restore", "put a backup in the place of the database",
      "restore /backup/events-monday.db\n\n"
      "Refuses while a process writes to the database. The backup is checked first. The\n"
      "present database is kept beside it as NAME.before-restore-TIME; restoring that\n"
      "file undoes this. The highest ids handed out so far stay in force: a consumer\n"
      "never meets an id that it has seen on another event. --no-keep-ids gives that\n"
      "up, for a database that can no longer be read.");
  const auto options = std::make_shared<CopyOptions>();
  command.text("FILE", "", "the backup", options->file, Need::kRequired);
  command.flag("--keep-ids,!--no-keep-ids",
               "give no id again that was handed out since\nthe backup (default)",
               options->keepIds);
  command.runs([&global = command.global(), options] { return runRestore(global, *options); });
}

}  // namespace EventApps
