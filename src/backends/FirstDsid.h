// The first data selection of the type that queues begin with. It is looked up in the host's
// database whichever store serves.
//
// Thread safety: none; used under EventManager's mutex.

#ifndef EVENTSYSTEM_SRC_BACKENDS_FIRSTDSID_H
#define EVENTSYSTEM_SRC_BACKENDS_FIRSTDSID_H

namespace EventSystem {

// 0; 67 when the database or its table is unavailable; 72 when there is no data selection of that
// type. `dsid` is 0 after a failure.
int findFirstDsid(unsigned int& dsid);

}  // namespace EventSystem

#endif
