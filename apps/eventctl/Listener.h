// What ends a wait for more events: a stop that was asked for, and the end of who reads the output.
//
// Thread safety: plain values; look() from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_LISTENER_H
#define EVENTSYSTEM_APPS_EVENTCTL_LISTENER_H

namespace EventApps {

enum class Woken { kMaybeMore, kStopped, kOutputClosed };

struct Listener {
  int stop = -1;    // readable once a stop is asked for
  int output = -1;  // has an error once its reader has gone

  // What has happened by now, without waiting.
  Woken look() const;

  // Returns when it happens, or kMaybeMore when `milliseconds` are over or `descriptor` is
  // readable.
  Woken wait(int descriptor, int milliseconds) const;
};

}  // namespace EventApps

#endif
