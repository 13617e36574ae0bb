// Preloaded into a program: kills it before its Nth call that changes names of files or makes them
// durable. N is in the environment, as KILL_AT_FILE_CALL.

#include <dlfcn.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>

namespace {

void countCall() {
  static std::atomic<long> calls{0};
  const char* const at = std::getenv("KILL_AT_FILE_CALL");
  if (at != nullptr && ++calls == std::atol(at)) ::raise(SIGKILL);
}

template <class Function>
Function* nextOf(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

// The C library's functions, so their names and types.
#define EVENTCTL_COUNTED(name, parameters, arguments)                     \
  extern "C" __attribute__((visibility("default"))) int name parameters { \
    countCall();                                                          \
    return nextOf<int parameters>(#name) arguments;                       \
  }

EVENTCTL_COUNTED(link, (const char* from, const char* to) noexcept, (from, to))
EVENTCTL_COUNTED(unlink, (const char* name) noexcept, (name))
EVENTCTL_COUNTED(remove, (const char* name) noexcept, (name))
EVENTCTL_COUNTED(rename, (const char* from, const char* to) noexcept, (from, to))
EVENTCTL_COUNTED(renameat2,
                 (int fromAt, const char* from, int toAt, const char* to,
                  unsigned int flags) noexcept,
                 (fromAt, from, toAt, to, flags))
EVENTCTL_COUNTED(ftruncate, (int descriptor, off_t bytes) noexcept, (descriptor, bytes))
EVENTCTL_COUNTED(fsync, (int descriptor), (descriptor))
EVENTCTL_COUNTED(fdatasync, (int descriptor), (descriptor))
