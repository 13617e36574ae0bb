// The comparison as JSON, which the report is made from.
//
// Thread safety: a free function.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_JSONREPORT_H
#define EVENTSYSTEM_BENCH_SYSTEMS_JSONREPORT_H

#include <string>

#include "bench/systems/Comparison.h"
#include "bench/systems/Machine.h"

namespace EventSystemBench {

std::string toJson(const Comparison& comparison, const ComparisonPlan& plan,
                   const Machine& machine);

}  // namespace EventSystemBench

#endif
