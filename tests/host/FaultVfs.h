// The fault model: a disk below SQLite that counts what it is asked to do and fails on order.
//
// Every file operation passes through it, to the real files of the operating system. On order
//   - a flush fails: it reports an error and flushes nothing; the kernel then calls the pages
//     clean, so the flush after it succeeds without having flushed them, too;
//   - a failed flush loses what was written to its file since the last good one, as a kernel may
//     do that drops pages it could not write;
//   - the disk is full: writes that make a file longer fail, those inside a file do not; it may be
//     full for as long as another file takes its space;
//   - a read of the database file reports an error;
//   - a flush takes until it is let go.
// Nothing is torn: a write happens as a whole or not at all.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_HOST_FAULTVFS_H
#define EVENTSYSTEM_TESTS_HOST_FAULTVFS_H

#include <filesystem>

namespace EventSystemTest::FaultVfs {

// Makes it SQLite's default; again: forgets all orders and counts.
void install();

int walFlushes();
int databaseFlushes();

// The n-th flush from now on fails, 1 being the next; all from then on until lifted with `count`.
void failFlush(int n, int count = 1);
void loseUnflushed(bool lose);
void setDiskFull(bool full);
void setDiskFullWhileThereIs(const std::filesystem::path& file);  // and it is not empty

// Reads of the database file fail; those of the WAL do not.
void failReads(bool fail);

// Flushes wait between these; waitForHeldFlush() returns when one does.
void holdFlushes();
void waitForHeldFlush();
void letFlushesGo();

}  // namespace EventSystemTest::FaultVfs

#endif
