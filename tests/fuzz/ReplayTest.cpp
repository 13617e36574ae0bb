// Runs a target over its corpus, without libFuzzer.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/fuzz/Target.h"

namespace EventSystemTest {
namespace {

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

std::vector<std::filesystem::path> corpus() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(FUZZ_CORPUS)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST(FUZZ_TARGET, TakesEveryInputOfItsCorpus) {
  const std::vector<std::filesystem::path> files = corpus();
  ASSERT_FALSE(files.empty());
  for (const std::filesystem::path& file : files) {
    RecordProperty("input", file.string());
    try {
      runTarget(contentOf(file));
    } catch (const std::exception& finding) {
      ADD_FAILURE() << file << ": " << finding.what();
    }
  }
}

TEST(FUZZ_TARGET, TakesInputsThatAreCutOrHoldNothing) {
  runTarget({});
  const std::string whole = contentOf(corpus().front());
  for (std::size_t size = 1; size < whole.size(); size += 1 + whole.size() / 16) {
    runTarget(std::string_view(whole).substr(0, size));
  }
}

}  // namespace
}  // namespace EventSystemTest
