#include "host/cluster/GrpcLog.h"

#include <grpc/support/log.h>

#include <mutex>

#include "EventSystem/platform/HostLog.h"

namespace EventSystemHost {
namespace {

std::mutex g_mutex;
int g_users = 0;  // guarded by g_mutex

// What matters of it comes back as the result of a call, and is logged as an error there.
void write(gpr_log_func_args* line) {
  const std::lock_guard lock(g_mutex);
  if (g_users > 0) InfoA(0, "gRPC: %s", line->message);
}

}  // namespace

GrpcLog::GrpcLog() {
  const std::lock_guard lock(g_mutex);
  ++g_users;
  gpr_set_log_function(write);
}

GrpcLog::~GrpcLog() {
  const std::lock_guard lock(g_mutex);
  --g_users;
}

}  // namespace EventSystemHost
