// In cluster mode every start copies the rows of the database's global queue to the cluster
// service, which keeps a marker for each of them to know it again. The markers of rows that are
// gone are given up here.
//
// Thread safety: called by the thread that starts the host.

#ifndef EVENTSYSTEM_HOST_COPIEDROWS_H
#define EVENTSYSTEM_HOST_COPIEDROWS_H

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Needs the database and the cluster service running. What fails is logged and left for the next
// start; a marker of a row that is still there is never given up.
void forgetCopiesOfGoneRows(const HostConfiguration& configuration);

}  // namespace EventSystemHost

#endif
