#include "apps/eventctl/ClusterStats.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/Table.h"

namespace EventApps {
namespace {

using EventSystemHost::ClusterMember;
using EventSystemHost::ClusterReport;

std::string displayBytes(std::int64_t bytes) {
  constexpr std::array<const char*, 4> kUnits = {"KiB", "MiB", "GiB", "TiB"};
  constexpr double kStep = 1024;
  double amount = static_cast<double>(bytes) / kStep;
  std::size_t unit = 0;
  for (; amount >= kStep && unit + 1 < kUnits.size(); ++unit) amount /= kStep;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f %s", amount, kUnits.at(unit));
  return text.data();
}

std::string ofQuota(std::int64_t bytes, std::int64_t quota) {
  if (quota == 0) return displayBytes(bytes);
  std::array<char, 32> percent{};
  std::snprintf(percent.data(), percent.size(), ", %.1f %%",
                100.0 * static_cast<double>(bytes) / static_cast<double>(quota));
  return displayBytes(bytes) + percent.data();
}

std::vector<std::string> rowOf(const ClusterMember& member) {
  const std::string endpoint = displayText(member.endpoint);
  if (!member.reachable) {
    return {endpoint, "-", "-", "-", "-", "not reachable"};
  }
  return {endpoint,
          member.name.empty() ? "-" : displayText(member.name),
          member.leader ? "leader" : "member",
          displayText(member.version),
          displayBytes(member.databaseBytesInUse),
          ofQuota(member.databaseBytes, member.quotaBytes) + " of " +
              (member.quotaBytes == 0 ? "an unknown quota" : displayBytes(member.quotaBytes))};
}

}  // namespace

void printCluster(Output& output, const ClusterReport& report) {
  Table table(output,
              {{"etcd member", 15, Align::kLeft, Style::kBold},
               {"name", 7, Align::kLeft},
               {"role", 6, Align::kLeft},
               {"version", 7, Align::kLeft},
               {"in use", 9, Align::kRight},
               {"database", 0, Align::kLeft}},
              Overflow::kWrap);
  for (const ClusterMember& member : report.members) table.row(rowOf(member));
  for (const ClusterMember& member : report.members) {
    if (!member.failure.empty()) output.line("Not reachable: " + displayText(member.failure));
  }
  for (const std::string& alarm : report.alarms) {
    output.line(styled(output, Style::kRed, "Alarm: " + displayText(alarm)));
  }
}

}  // namespace EventApps
