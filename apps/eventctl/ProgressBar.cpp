#include "apps/eventctl/ProgressBar.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "apps/common/Output.h"

namespace EventApps {
namespace {

constexpr std::chrono::milliseconds kPatience(300);  // shorter work needs no bar
constexpr std::chrono::milliseconds kInterval(100);
constexpr std::size_t kColumns = 40;

}  // namespace

ProgressBar::ProgressBar(std::size_t total)
    : m_total(total),
      m_wanted(total > 0 && isErrorTerminal()),
      m_nextUpdate(Clock::now() + kPatience) {}

ProgressBar::~ProgressBar() {
  hide();
}

void ProgressBar::update(std::size_t done) {
  if (!m_wanted || Clock::now() < m_nextUpdate) return;
  m_nextUpdate = Clock::now() + kInterval;
  const std::size_t capped = std::min(done, m_total);
  const std::size_t filled = capped * kColumns / m_total;
  const std::string bar = std::string(filled, '#') + std::string(kColumns - filled, '.');
  std::fprintf(stderr, "\r[%s] %3zu %%", bar.c_str(), capped * 100 / m_total);
  m_visible = true;
}

void ProgressBar::hide() {
  if (m_visible) std::fputs("\r\033[K", stderr);
  m_visible = false;
}

}  // namespace EventApps
