// The commands of eventctl, one file each. Every function adds its command to `parent`.
//
// Thread safety: called and run by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_COMMANDS_H
#define EVENTSYSTEM_APPS_EVENTCTL_COMMANDS_H

#include "apps/eventctl/CommandLine.h"

namespace EventApps {

void defineAdd(Command parent);
void defineImport(Command parent);
void defineList(Command parent);
void defineShow(Command parent);
void defineStats(Command parent);
void defineNext(Command parent);
void defineConsume(Command parent);
void defineDelete(Command parent);
void definePurge(Command parent);
void defineExport(Command parent);
void defineBackup(Command parent);
void defineRestore(Command parent);
void defineCheck(Command parent);
void defineDataSelection(Command parent);
void defineToken(Command parent);
void defineDemo(Command parent);

}  // namespace EventApps

#endif
