#include "apps/eventctl/DemoStage.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "apps/common/Display.h"
#include "apps/common/Table.h"
#include "apps/eventctl/ExitStatus.h"

namespace EventApps {

void DemoStage::heading(const std::string& text) {
  m_output.line("");
  m_output.line(styled(m_output, Style::kBold, std::to_string(++m_steps) + ". " + text));
}

void DemoStage::say(const std::string& text) {
  for (const std::string& line :
       wrapToWidth(displayText(text), std::min<std::size_t>(m_output.columns(), 78))) {
    m_output.line(line);
  }
}

void DemoStage::note(bool good, const std::string& text) {
  ++(good ? m_good : m_bad);
  const std::string mark =
      good ? styled(m_output, Style::kGreen, "[ok]") : styled(m_output, Style::kRed, "[FAILED]");
  m_output.line(mark + " " + text);
  m_output.flush();
}

// Complaints and JSON are as long as they need to be. What is coloured fits already, and cannot
// be measured.
void DemoStage::echo(const std::string& line) {
  const bool coloured = line.find('\x1b') != std::string::npos;
  if (coloured || displayWidth(line) <= m_output.columns()) return m_output.line(line);
  std::string before;
  for (const std::string& part : wrapToWidth(line, m_output.columns() - 4)) {
    m_output.line(before + part);
    before = "    ";
  }
}

void DemoStage::echoCommand(const Arguments& arguments) {
  std::string shown = "$ eventctl";
  for (const std::string& argument : arguments) {
    const bool plain = argument.find(' ') == std::string::npos;
    shown += plain ? " " + argument : " '" + argument + "'";
  }
  m_output.line(styled(m_output, Style::kBold, shown));
  m_output.flush();
}

DemoStage::Arguments DemoStage::show(const Arguments& arguments, int status) {
  echoCommand(arguments);
  Arguments printed;
  const int result = run(arguments, [&](const std::string& line) {
    printed.push_back(line);
    echo(line);
    m_output.flush();
  });
  const bool fine = status < 0 ? result == kDone || result == kFailed : result == status;
  if (!fine) note(false, "the command ended with status " + std::to_string(result));
  return printed;
}

int DemoStage::run(const Arguments& arguments, const ChildProcess::TakeLine& take) {
  try {
    const int status = runSelf(arguments, childOptions(), take, m_stop.descriptor());
    endWhenInterrupted();
    return status;
  } catch (const Failure&) {
    endWhenInterrupted();
    throw;
  }
}

nlohmann::json DemoStage::ask(const Arguments& arguments) {
  std::string text;
  run(arguments, [&](const std::string& line) { text += line; });
  return nlohmann::json::parse(text, nullptr, false);
}

ChildOptions DemoStage::childOptions() const {
  ChildOptions options;
  options.directory = m_directory;
  options.environment = {"COLUMNS=" + std::to_string(m_output.columns()),
                         m_output.isColoured() ? "CLICOLOR_FORCE=1" : "NO_COLOR=1"};
  return options;
}

void DemoStage::endWhenInterrupted() const {
  if (m_stop.arrived()) throw Failure("the tour was interrupted");
}

int DemoStage::finish() {
  heading("Done");
  const auto seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
  std::array<char, 32> time{};
  std::snprintf(time.data(), time.size(), "%.1f", seconds);
  say(displayCount(m_good) + " of " + displayCount(m_good + m_bad) + " checks passed, in " +
      time.data() + " seconds. eventctl --help lists the commands.");
  return m_bad == 0 ? kDone : kFailed;
}

}  // namespace EventApps
