// SQLite's own allocations as part of what FailingNew counts and fails.
//
// Thread safety: before SQLite is used.

#ifndef EVENTSYSTEM_TESTS_FAULT_FAILINGSQLITE_H
#define EVENTSYSTEM_TESTS_FAULT_FAILINGSQLITE_H

namespace EventSystemTest {

// From now on, for the whole process. The small blocks that SQLite keeps at hand for each
// connection, and which cannot fail, are switched off.
void includeSqlitesAllocations();

}  // namespace EventSystemTest

#endif
