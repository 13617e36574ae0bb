// The commands of eventctl, one file each. Every function adds its subcommand to `app`; choosing
// it on the command line sets `line.run`.
//
// Thread safety: called and run by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_COMMANDS_H
#define EVENTSYSTEM_APPS_EVENTCTL_COMMANDS_H

#include "apps/eventctl/CommandLine.h"

namespace EventApps {

void defineAdd(CLI::App& app, CommandLine& line);
void defineImport(CLI::App& app, CommandLine& line);
void defineList(CLI::App& app, CommandLine& line);
void defineShow(CLI::App& app, CommandLine& line);
void defineStats(CLI::App& app, CommandLine& line);
void defineNext(CLI::App& app, CommandLine& line);
void defineConsume(CLI::App& app, CommandLine& line);
void defineDelete(CLI::App& app, CommandLine& line);
void definePurge(CLI::App& app, CommandLine& line);
void defineExport(CLI::App& app, CommandLine& line);
void defineBackup(CLI::App& app, CommandLine& line);
void defineRestore(CLI::App& app, CommandLine& line);
void defineCheck(CLI::App& app, CommandLine& line);
void defineDataSelection(CLI::App& app, CommandLine& line);
void defineToken(CLI::App& app, CommandLine& line);
void defineDemo(CLI::App& app, CommandLine& line);

}  // namespace EventApps

#endif
