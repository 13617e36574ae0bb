#include "bench/cluster/Table.h"

#include <cstdio>

namespace Bench {

void printHead() {
  std::printf("%-44s %7s %7s | %9s %9s | %9s %9s | %6s\n", "", "ratio", "ratio", "library",
              "library", "etcd", "etcd", "calls");
  std::printf("%-44s %7s %7s | %9s %9s | %9s %9s | %6s\n", "", "median", "p99", "median us",
              "p99 us", "median us", "p99 us", "each");
}

void printRow(const std::string& what, const Comparison& measured) {
  const Samples& library = measured.library;
  const Samples& bare = measured.bare;
  std::printf("%-44s %7.2f %7.2f | %9.0f %9.0f | %9.0f %9.0f | %6zu\n", what.c_str(),
              library.median() / bare.median(), library.p99() / bare.p99(), library.median(),
              library.p99(), bare.median(), bare.p99(), library.count());
  std::fflush(stdout);
}

}  // namespace Bench
