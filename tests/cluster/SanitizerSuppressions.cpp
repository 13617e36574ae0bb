// What the sanitizers are told to pass over in the programs that use gRPC.
//
// gRPC and what it is built on are not instrumented: what they do with memory and locks of their
// own looks like races to ThreadSanitizer. Their calls of intercepted functions are passed over,
// and so is the one function of their headers that copies what they have received; our own code is
// not. c-ares, through which gRPC looks names up, leaks a few bytes with each name.

extern "C" {

__attribute__((visibility("default"))) const char* __tsan_default_suppressions();
__attribute__((visibility("default"))) const char* __lsan_default_suppressions();

const char* __tsan_default_suppressions() {
  return "race:grpc::internal::CallOpClientRecvStatus::FinishOp\n"
         "called_from_lib:libgrpc.so\n"
         "called_from_lib:libgrpc++.so\n"
         "called_from_lib:libgpr.so\n"
         "called_from_lib:libaddress_sorting.so\n"
         "called_from_lib:libcares.so\n"
         "called_from_lib:libprotobuf.so\n"
         "called_from_lib:libssl.so\n"
         "called_from_lib:libcrypto.so\n"
         "called_from_lib:libabsl_base.so\n"
         "called_from_lib:libabsl_graphcycles_internal.so\n"
         "called_from_lib:libabsl_synchronization.so\n"
         "called_from_lib:libabsl_malloc_internal.so\n"
         "called_from_lib:libabsl_cord.so\n"
         "called_from_lib:libabsl_cord_internal.so\n"
         "called_from_lib:libabsl_cordz_info.so\n"
         "called_from_lib:libabsl_status.so\n"
         "called_from_lib:libabsl_strings.so\n"
         "called_from_lib:libabsl_str_format_internal.so\n"
         "called_from_lib:libabsl_random_internal_pool_urbg.so\n"
         "called_from_lib:libabsl_random_internal_seed_material.so\n"
         "called_from_lib:libabsl_raw_hash_set.so\n"
         "called_from_lib:libabsl_time.so\n"
         "called_from_lib:libabsl_time_zone.so\n";
}

const char* __lsan_default_suppressions() {
  return "leak:libcares\n";
}

}  // extern "C"
