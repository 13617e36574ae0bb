#include "tests/power/DiskModel.h"

#include <algorithm>
#include <array>
#include <functional>
#include <random>

namespace EventSystemTest {

namespace {

constexpr std::size_t kSector = 512;

using Kind = DiskEntry::Kind;
using Random = std::mt19937_64;

void apply(std::string& content, const DiskEntry& entry) {
  const auto offset = static_cast<std::size_t>(entry.offset);
  if (entry.kind == Kind::kTruncated) {
    content.resize(offset);
    return;
  }
  if (content.size() < offset + entry.data.size()) content.resize(offset + entry.data.size());
  content.replace(offset, entry.data.size(), entry.data);
}

// What reaches the disk of one write, as numbers of sectors.
class Choice {
 public:
  Choice(std::uint64_t damage, std::size_t newest) : m_damage(damage), m_newest(newest) {
    if (damage > kInOrderAndTheNewestTorn) {
      m_random.seed(damage);
      m_kept = std::array{0.05, 0.3, 0.5, 0.7, 0.95}[m_random() % 5];
      m_whole = std::array{0.0, 0.5, 1.0}[m_random() % 3];
    }
  }

  // Decides about an entry; to be asked for all of them, in the order of the log.
  std::function<bool(std::size_t sector)> of(std::size_t position, std::size_t first,
                                             std::size_t last) {
    if (m_damage == kNothingUnflushed) return [](std::size_t) { return false; };
    if (m_damage == kEverything) return [](std::size_t) { return true; };
    if (m_damage == kInOrderAndTheNewestTorn) return inOrder(position, first, last);
    if (chance(m_whole)) return [kept = chance(m_kept)](std::size_t) { return kept; };
    const std::size_t middle = (first + last + 1) / 2;
    switch (m_random() % 3) {
      case 0:
        return [middle](std::size_t sector) { return sector < middle; };
      case 1:
        return [middle](std::size_t sector) { return sector >= middle; };
      default:
        return [this](std::size_t) { return chance(m_kept); };
    }
  }

  // Whether a sector is found with anything in it.
  bool garbles() { return m_damage > kInOrderAndTheNewestTorn && m_random() % 8 == 0; }
  Random& random() { return m_random; }

 private:
  bool chance(double probability) {
    return std::uniform_real_distribution<>(0, 1)(m_random) < probability;
  }

  std::function<bool(std::size_t)> inOrder(std::size_t position, std::size_t first,
                                           std::size_t last) const {
    if (position != m_newest) return [](std::size_t) { return true; };
    const std::size_t middle = (first + last + 1) / 2;
    return [middle](std::size_t sector) { return sector < middle; };
  }

  const std::uint64_t m_damage;
  const std::size_t m_newest;
  Random m_random;
  double m_kept = 0;
  double m_whole = 0;
};

// One write, and which of its sectors are found.
struct Remains {
  const DiskEntry* entry;
  std::size_t first = 0;  // sector
  std::vector<bool> found{};
};

Remains remainsOf(const DiskEntry& entry, std::size_t position, Choice& choice) {
  Remains remains{&entry};
  std::size_t last = 0;
  if (entry.kind == Kind::kWritten) {
    const auto offset = static_cast<std::size_t>(entry.offset);
    remains.first = offset / kSector;
    last = (offset + std::max<std::size_t>(entry.data.size(), 1) - 1) / kSector;
  }
  const auto found = choice.of(position, remains.first, last);
  for (std::size_t sector = remains.first; sector <= last; ++sector) {
    remains.found.push_back(found(sector));
  }
  return remains;
}

// A sector that is found as a later write left it has the earlier ones in it.
void takeEarlierOnes(std::vector<Remains>& all) {
  std::set<std::size_t> later;
  for (auto one = all.rbegin(); one != all.rend(); ++one) {
    if (one->entry->kind != Kind::kWritten) continue;
    for (std::size_t i = 0; i < one->found.size(); ++i) {
      if (one->found[i]) later.insert(one->first + i);
      if (later.contains(one->first + i)) one->found[i] = true;
    }
  }
}

// The part of a write that is in its sector `index`, as offset and size in the file.
std::pair<std::size_t, std::size_t> partIn(const Remains& remains, std::size_t index) {
  const auto begin = static_cast<std::size_t>(remains.entry->offset);
  const std::size_t end = begin + remains.entry->data.size();
  const std::size_t sector = (remains.first + index) * kSector;
  const std::size_t from = std::max(begin, sector);
  return {from, std::min(end, sector + kSector) - from};
}

void applyRemains(std::string& content, const Remains& remains) {
  const DiskEntry& entry = *remains.entry;
  if (entry.kind == Kind::kTruncated) {
    if (remains.found[0]) apply(content, entry);
    return;
  }
  for (std::size_t i = 0; i < remains.found.size(); ++i) {
    if (!remains.found[i]) continue;
    const auto [offset, size] = partIn(remains, i);
    if (content.size() < offset + size) content.resize(offset + size);
    content.replace(offset, size, entry.data, offset - static_cast<std::size_t>(entry.offset),
                    size);
  }
}

void garble(std::string& content, const Remains& remains, Random& random) {
  if (remains.entry->kind != Kind::kWritten) return;
  const auto [offset, size] = partIn(remains, random() % remains.found.size());
  for (std::size_t i = offset; i < std::min(offset + size, content.size()); ++i) {
    content[i] = static_cast<char>(random());
  }
}

}  // namespace

void DiskModel::advance(std::size_t position) {
  for (; m_position < position; ++m_position) apply(m_position);
}

void DiskModel::apply(std::size_t position) {
  const DiskEntry& entry = m_log[position];
  switch (entry.kind) {
    case Kind::kKnown:
      m_files[entry.file].flushed = entry.data;
      nameKnown(entry, position);
      return;
    case Kind::kCreated:
      m_files[entry.file];
      m_names[entry.path].unflushed.emplace_back(position, entry.file);
      return;
    case Kind::kRemoved:
      m_names[entry.path].unflushed.emplace_back(position, std::nullopt);
      return;
    case Kind::kWritten:
    case Kind::kTruncated:
      m_files[entry.file].unflushed.push_back(position);
      return;
    case Kind::kFlushed:
      flushFile(m_files[entry.file], entry.covered);
      return;
    case Kind::kDirectoryFlushed:
      flushDirectory(entry);
      return;
  }
}

void DiskModel::flushFile(File& file, std::size_t covered) const {
  auto next = file.unflushed.begin();
  for (; next != file.unflushed.end() && *next < covered; ++next) {
    EventSystemTest::apply(file.flushed, m_log[*next]);
  }
  file.unflushed.erase(file.unflushed.begin(), next);
}

// Somebody else made it, an unknown time ago.
void DiskModel::nameKnown(const DiskEntry& entry, std::size_t position) {
  const auto names = m_flushedNames.find(entry.path.parent_path());
  if (names != m_flushedNames.end() && names->second.contains(entry.path.filename())) {
    m_names[entry.path].flushed = entry.file;
  } else {
    m_names[entry.path].unflushed.emplace_back(position, entry.file);
  }
}

void DiskModel::flushDirectory(const DiskEntry& entry) {
  m_flushedNames[entry.path] = entry.names;
  for (auto& [path, name] : m_names) {
    if (path.parent_path() != entry.path) continue;
    while (!name.unflushed.empty() && name.unflushed.front().first < entry.covered) {
      name.flushed = name.unflushed.front().second;
      name.unflushed.erase(name.unflushed.begin());
    }
  }
}

std::size_t DiskModel::unflushed() const {
  std::size_t count = 0;
  for (const auto& [number, file] : m_files) count += file.unflushed.size();
  for (const auto& [path, name] : m_names) count += name.unflushed.size();
  return count;
}

DiskImage DiskModel::crash(std::uint64_t damage) const {
  std::size_t newest = 0;
  for (const auto& [number, file] : m_files) {
    if (!file.unflushed.empty()) newest = std::max(newest, file.unflushed.back());
  }
  DiskImage image;
  Random random(damage);
  for (const auto& [path, name] : m_names) {
    Target target = name.flushed;
    const std::size_t moments = name.unflushed.size();
    if (moments > 0 && damage != kNothingUnflushed) {
      const std::size_t moment =
          damage <= kInOrderAndTheNewestTorn ? moments : random() % (moments + 1);
      if (moment > 0) target = name.unflushed[moment - 1].second;
    }
    const std::uint64_t seed = damage <= kInOrderAndTheNewestTorn ? damage : (random() | 4);
    if (target) image[path] = contentOf(m_files.at(*target), seed, newest);
  }
  return image;
}

std::string DiskModel::contentOf(const File& file, std::uint64_t seed, std::size_t newest) const {
  std::string content = file.flushed;
  if (file.unflushed.empty() || seed == kNothingUnflushed) return content;
  Choice choice(seed, newest);
  std::vector<Remains> all;
  for (const std::size_t position : file.unflushed) {
    all.push_back(remainsOf(m_log[position], position, choice));
  }
  takeEarlierOnes(all);
  for (const Remains& one : all) applyRemains(content, one);
  if (choice.garbles()) garble(content, all[choice.random()() % all.size()], choice.random());
  return content;
}

}  // namespace EventSystemTest
