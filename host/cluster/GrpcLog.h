// Sends what gRPC itself has to say to the host's log instead of standard error.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_GRPCLOG_H
#define EVENTSYSTEM_HOST_CLUSTER_GRPCLOG_H

namespace EventSystemHost {

// While one lives, the lines go to the host's log, afterwards nowhere: gRPC has threads that go on
// for a while, and may have something to say when the log is closed.
class GrpcLog {
 public:
  GrpcLog();
  ~GrpcLog();

  GrpcLog(const GrpcLog&) = delete;
  GrpcLog& operator=(const GrpcLog&) = delete;
};

}  // namespace EventSystemHost

#endif
