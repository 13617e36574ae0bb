// store_tables startup [ROWS]               start-up from 10^4 rows up to ROWS (default 10^6)
// store_tables durability [THREADS [SECONDS]]  strict beside group (default 16 threads, 2 s)
// store_tables repeat new|next|delete CALLS    one kind of call, for a profiler

#include "bench/stores/StoreTables.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int count, char** arguments) {
  const std::string table = count > 1 ? arguments[1] : "";
  const auto number = [&](int at, long otherwise) {
    return count > at ? std::atol(arguments[at]) : otherwise;
  };
  if (table == "life" && count > 2) {
    EventSystemBench::measureLife(arguments[2]);
  } else if (table == "startup") {
    EventSystemBench::printStartup(arguments[0], number(2, 1000000));
  } else if (table == "repeat" && count > 3) {
    EventSystemBench::repeatCall(arguments[2], std::atoi(arguments[3]));
  } else if (table == "durability") {
    EventSystemBench::printDurability(static_cast<int>(number(2, 16)),
                                      count > 3 ? std::atof(arguments[3]) : 2);
  } else {
    std::fprintf(stderr,
                 "usage: store_tables startup [ROWS] | durability [THREADS [SECONDS]] | repeat "
                 "CALL COUNT\n");
    return 2;
  }
  return 0;
}
