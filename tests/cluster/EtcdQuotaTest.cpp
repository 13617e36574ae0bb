#include <gtest/gtest.h>

#include "host/cluster/EtcdQuota.h"

namespace EventSystemHost {
namespace {

TEST(EtcdQuota, IsReadFromTheMetrics) {
  EXPECT_EQ(quotaIn("# HELP etcd_server_quota_backend_bytes size\n"
                    "# TYPE etcd_server_quota_backend_bytes gauge\n"
                    "etcd_server_quota_backend_bytes 2.147483648e+09\nother 1\n"),
            2147483648);
  EXPECT_EQ(quotaIn("other 1\n"), 0);
  EXPECT_EQ(quotaIn(""), 0);
}

}  // namespace
}  // namespace EventSystemHost
