#include "tests/proof/Proof.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace EventSystemTest {

namespace {

// A tab or a line feed would end a field of the report.
std::string field(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
  return text;
}

}  // namespace

Proof::Proof(std::string name, const std::string& purpose)
    : m_name(std::move(name)), m_app(purpose), m_seed(std::random_device()()) {
  m_app.add_option("--seed", m_seed, "What the run is made of; the same seed, the same run");
  m_app.add_option("--rounds", m_rounds, "End after so many rounds (default: 1, or by --minutes)");
  m_app.add_option("--minutes", m_minutes, "End after so many minutes")
      ->check(CLI::NonNegativeNumber);
}

bool Proof::parse(int count, char** arguments) {
  try {
    m_app.parse(count, arguments);
  } catch (const CLI::ParseError& error) {
    m_status = m_app.exit(error);
    return false;
  }
  if (m_rounds == 0 && m_minutes == 0) m_rounds = 1;
  m_end = std::chrono::steady_clock::now() +
          std::chrono::duration_cast<std::chrono::steady_clock::duration>(
              std::chrono::duration<double, std::ratio<60>>(m_minutes));
  std::printf("%s: seed %lu\n", m_name.c_str(), m_seed);
  std::fflush(stdout);
  return true;
}

bool Proof::more(std::uint64_t done) const {
  const std::scoped_lock lock(m_mutex);
  if (!m_failures.empty() || (m_rounds != 0 && done >= m_rounds)) return false;
  return m_minutes == 0 || std::chrono::steady_clock::now() < m_end;
}

void Proof::figure(const std::string& what, std::uint64_t number) {
  const std::scoped_lock lock(m_mutex);
  const auto known = std::find_if(m_figures.begin(), m_figures.end(),
                                  [&](const auto& figure) { return figure.first == what; });
  if (known != m_figures.end()) {
    known->second += number;
  } else {
    m_figures.emplace_back(what, number);
  }
}

void Proof::failure(const std::string& what, const std::string& repeat) {
  const std::scoped_lock lock(m_mutex);
  m_failures.emplace_back(what, repeat);
}

int Proof::finish() {
  const std::scoped_lock lock(m_mutex);
  for (const auto& [what, number] : m_figures) {
    std::printf("proof-figure\t%s\t%s\t%lu\n", m_name.c_str(), field(what).c_str(), number);
  }
  for (const auto& [what, repeat] : m_failures) {
    std::printf("proof-failure\t%s\t%s\t%s %s\n", m_name.c_str(), field(what).c_str(),
                m_app.get_name().c_str(), field(repeat).c_str());
  }
  std::fflush(stdout);
  m_status = m_failures.empty() ? 0 : 1;
  return m_status;
}

}  // namespace EventSystemTest
