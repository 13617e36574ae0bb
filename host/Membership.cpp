#include "host/Membership.h"

#include <array>
#include <fstream>
#include <random>

#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

std::string drawIdentity() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digit(0, 15);
  std::string identity(32, '0');
  for (char& each : identity) each = kDigits[digit(random)];
  return identity;
}

std::string keptIdentity(const std::filesystem::path& file) {
  std::string identity;
  std::getline(std::ifstream(file), identity);
  if (!identity.empty()) return identity;
  identity = drawIdentity();
  writePrivateFile(file, identity + "\n");
  return identity;
}

}  // namespace

ClusterMembership membershipOf(const HostConfiguration& configuration) {
  const std::string file = configuration.databaseFile.string() + ".member";
  const std::string place = configuration.serverName + ":" + configuration.databaseFile.string();
  return {configuration.clusterQueue, configuration.clusterMember, {keptIdentity(file), place}};
}

}  // namespace EventSystemHost
