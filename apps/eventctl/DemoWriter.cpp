#include "apps/eventctl/DemoWriter.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace EventApps {
namespace {

// Half of the events go to the global queue, the others to two data selections.
constexpr std::array<unsigned int, 4> kQueues = {0, 4, 0, 7};

// What waits in the pipe is still written at the end: not much. A pipe takes a line of this length
// whole or not at all.
constexpr int kPipeBytes = 8192;

ChildOptions withInput(ChildOptions options) {
  options.takesInput = true;
  return options;
}

}  // namespace

DemoWriter::DemoWriter(const std::string& host, const ChildOptions& options)
    : m_record{host, {}},
      m_child({"--home", host, "--json", "import", "-", "--acknowledge"}, withInput(options)) {
  ::fcntl(m_child.input(), F_SETPIPE_SZ, kPipeBytes);
}

void DemoWriter::feed() {
  while (m_child.input() >= 0) {
    const unsigned long number = m_record.events.size() + 1;
    const unsigned int dsid = kQueues[number % kQueues.size()];
    std::string line = dsid == 0 ? "" : "dsid=" + std::to_string(dsid) + " ";
    line += demoEventString(m_record.writer, number, 0) + "\n";
    if (m_child.write(line) != line.size()) return;
    m_record.events.push_back({dsid, false, 0});
  }
}

void DemoWriter::read() {
  m_ended = !m_child.readLines([this](const std::string& line) { takeLine(line); });
  if (m_ended) m_child.closeInput();
}

// {"line":7,"dsid":4,"id":12}, or a complaint.
void DemoWriter::takeLine(const std::string& line) {
  const auto answer = nlohmann::json::parse(line, nullptr, false);
  if (!answer.is_object()) {
    m_complaints.push_back(line);
    return;
  }
  if (!answer.contains("line")) {  // the summary at the end
    m_refused = answer.value("refused", 0UL);
    return;
  }
  const auto number = answer["line"].get<std::size_t>();
  if (number == 0 || number > m_record.events.size() ||
      answer["dsid"] != m_record.events[number - 1].dsid) {
    m_complaints.push_back("not of an event that was handed over: " + line);
    return;
  }
  DemoFate& fate = m_record.events[number - 1];
  fate.acknowledged = true;
  fate.id = answer["id"].get<unsigned long>();
  const auto now = Clock::now();
  if (m_acknowledged++ > 0) {
    m_longestGap = std::max(
        m_longestGap, std::chrono::duration_cast<std::chrono::milliseconds>(now - m_lastAnswer));
  }
  m_lastAnswer = now;
}

}  // namespace EventApps
