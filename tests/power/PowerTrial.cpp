#include "tests/power/PowerTrial.h"

#include <random>
#include <stdexcept>
#include <string_view>

#include "tests/power/Days.h"

namespace EventSystemTest {

namespace {

std::size_t hashOf(const DiskImage& image) {
  std::size_t hash = 0;
  const auto add = [&](std::string_view text) {
    hash = hash * 1099511628211U + std::hash<std::string_view>()(text);
  };
  for (const auto& [path, content] : image) {
    add(path.native());
    add(content);
  }
  return hash;
}

// A canonical name, as the log has it.
std::filesystem::path made(const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory);
  return std::filesystem::canonical(directory);
}

}  // namespace

PowerTrial::PowerTrial(std::string durability, const Day& day)
    : m_durability(std::move(durability)),
      m_promise(m_durability == "strict" ? Promise::kEachCall : Promise::kUntilMark),
      m_root(TempDir::inMemory()),
      m_home(made(m_root.path() / "day")) {
  configureHome(m_home, m_durability);
  made(m_home / "audit");
  DiskLog log(m_home);
  Service service(m_home, m_ledger, [&log] { return log.position(); });
  day(service, log);
  m_log = log.entries();
  for (const Step& step : m_ledger.steps) {
    if (step.end == kNever) throw std::runtime_error("a call failed on a disk without a fault");
  }
}

DiskImage PowerTrial::imageAt(std::size_t point, std::uint64_t damage) {
  if (!m_model || point < m_reached) m_model = std::make_unique<DiskModel>(m_log);
  m_reached = point;
  m_model->advance(point);
  return m_model->crash(damage);
}

std::filesystem::path PowerTrial::freshHome() {
  const std::filesystem::path home = m_root.path() / "after";
  std::filesystem::remove_all(home);
  made(home / "audit");
  configureHome(home, m_durability);
  return made(home);
}

const Reboot& PowerTrial::rebootOn(const DiskImage& image) {
  const std::size_t hash = hashOf(image);
  const auto known = m_known.find(hash);
  if (known != m_known.end()) return known->second;
  const std::filesystem::path home = freshHome();
  materialise(image, m_home, home);
  ++m_figures.images;
  return m_known.emplace(hash, reboot(home, [] { return std::size_t{0}; })).first->second;
}

std::string PowerTrial::lose(std::size_t point, std::uint64_t damage) {
  if (!m_model || point != m_reached) ++m_figures.points;
  ++m_figures.losses;
  return judge(m_ledger, m_promise, point, rebootOn(imageAt(point, damage)), m_figures);
}

std::string PowerTrial::loseTwice(std::size_t point, std::uint64_t damage,
                                  std::uint64_t secondDamage) {
  std::string problem = lose(point, damage);
  if (!problem.empty()) return problem;
  const std::filesystem::path home = freshHome();
  materialise(imageAt(point, damage), m_home, home);
  DiskImage image;
  Reboot first;
  std::size_t second = 0;
  {
    DiskLog log(home);
    const std::size_t begin = log.position();
    first = reboot(home, [&log] { return log.position(); });
    second = begin + std::mt19937_64(secondDamage)() % (log.position() - begin + 1);
    DiskModel model(log.entries());
    model.advance(second);
    image = model.crash(secondDamage);
  }
  materialise(image, home, freshHome());
  ++m_figures.losses;
  ++m_figures.images;
  const Reboot again = reboot(home, [] { return std::size_t{0}; });
  problem = judge(first.ledger, m_promise, second, again, m_figures);
  return problem.empty() ? problem
                         : "after a second loss at " + std::to_string(second) + ": " + problem;
}

}  // namespace EventSystemTest
