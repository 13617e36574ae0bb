#include "apps/eventctl/DemoTraffic.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"
#include "apps/eventctl/ExitStatus.h"

namespace EventApps {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience(60000);
constexpr milliseconds kRowInterval(500);
constexpr milliseconds kQuestionInterval(250);

std::string secondsText(DemoTraffic::Clock::duration time) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f s", std::chrono::duration<double>(time).count());
  return text.data();
}

std::vector<Table::Column> columnsFor(const std::vector<std::string>& hosts) {
  std::vector<Table::Column> columns = {{"time", 6, Align::kRight, Style::kDim},
                                        {"leader", 6, Align::kLeft, Style::kBlue}};
  for (const std::string& host : hosts) columns.push_back({host, 7, Align::kRight});
  columns.push_back({"per second", 10, Align::kRight});
  columns.push_back({"", 0, Align::kLeft, Style::kBold});
  return columns;
}

}  // namespace

DemoTraffic::DemoTraffic(DemoStage& stage, const std::vector<std::string>& hosts,
                         const std::string& observer, const std::vector<std::string>& nodes)
    : m_stage(stage), m_observer(observer), m_nodes(nodes), m_nextRow(m_start + kRowInterval) {
  m_table.emplace(stage.output(), columnsFor(hosts), Overflow::kCut);
  for (const std::string& host : hosts) {
    m_writers.push_back(std::make_unique<DemoWriter>(host, stage.childOptions()));
  }
}

void DemoTraffic::flowUntil(const std::function<bool()>& done, const std::string& awaited) {
  const auto end = Clock::now() + kPatience;
  while (!done()) {
    pump(nullptr, {});
    for (const auto& writer : m_writers) {
      if (!writer->ended() || m_finishing) continue;
      const auto& said = writer->complaints();
      throw Failure(writer->name() +
                    " stopped writing: " + (said.empty() ? "it said nothing" : said.back()));
    }
    if (Clock::now() > end) throw Failure("waited too long until " + awaited);
  }
}

void DemoTraffic::flowFor(milliseconds time) {
  const auto end = Clock::now() + time;
  flowUntil([&] { return Clock::now() >= end; }, "the time was over");
}

void DemoTraffic::show(const DemoStage::Arguments& arguments) {
  ChildProcess child(arguments, m_stage.childOptions());
  std::vector<std::string> lines;
  m_shownEnded = false;
  while (!m_shownEnded) pump(&child, [&](const std::string& line) { lines.push_back(line); });
  m_stage.echoCommand(arguments);
  for (const std::string& line : lines) m_stage.echo(line);
  const int status = child.wait();
  if (status != kDone) {
    m_stage.note(false, "the command ended with status " + std::to_string(status));
  }
}

void DemoTraffic::finish() {
  tell("no more events");
  m_finishing = true;
  for (const auto& writer : m_writers) writer->finish();
  flowUntil([this] { return allEnded(); }, "both hosts had ended");
  tell("both hosts have ended");
}

void DemoTraffic::tell(const std::string& what) {
  const auto now = Clock::now();
  unsigned long inAll = 0;
  std::vector<std::string> cells = {secondsText(now - m_start)};
  cells.push_back(leaderName());
  for (const auto& writer : m_writers) {
    cells.push_back(displayCount(writer->acknowledged()));
    inAll += writer->acknowledged();
  }
  cells.push_back(rateAt(now, inAll));
  cells.push_back(what);
  m_table->row(cells);
  m_stage.output().flush();
  m_nextRow = now + kRowInterval;
}

std::string DemoTraffic::leaderName() const {
  const int leader = m_members.leader();
  if (leader >= 0) return m_nodes.at(static_cast<std::size_t>(leader));
  return m_members.areKnown() ? "none" : "?";
}

// Of both hosts, since the last row that told a rate; nothing where that was but a moment ago.
std::string DemoTraffic::rateAt(Clock::time_point now, unsigned long inAll) {
  const auto time = now - m_toldAt;
  if (time < kRowInterval / 2) return "";
  const double events = static_cast<double>(inAll - m_toldInAll);
  m_toldInAll = inAll;
  m_toldAt = now;
  return displayCount(
      static_cast<unsigned long>(events / std::chrono::duration<double>(time).count()));
}

void DemoTraffic::forgetMembers() {
  m_question.reset();
  m_nextQuestion = Clock::now();
  m_members = DemoMembers();
}

unsigned long DemoTraffic::least() const {
  unsigned long least = std::numeric_limits<unsigned long>::max();
  for (const auto& writer : m_writers) least = std::min(least, writer->acknowledged());
  return least;
}

bool DemoTraffic::allEnded() const {
  return std::all_of(m_writers.begin(), m_writers.end(),
                     [](const auto& writer) { return writer->ended(); });
}

// Waits until anything can go on, and lets it. Descriptors of -1 are passed over by poll().
void DemoTraffic::pump(ChildProcess* shown, const ChildProcess::TakeLine& take) {
  watchMembers();
  std::vector<pollfd> waits = {
      {.fd = m_stage.stopDescriptor(), .events = POLLIN, .revents = 0},
      {.fd = m_question ? m_question->output() : -1, .events = POLLIN, .revents = 0},
      {.fd = shown != nullptr ? shown->output() : -1, .events = POLLIN, .revents = 0}};
  for (const auto& writer : m_writers) {
    waits.push_back({.fd = writer->output(), .events = POLLIN, .revents = 0});
    waits.push_back({.fd = writer->input(), .events = POLLOUT, .revents = 0});
  }
  ::poll(waits.data(), waits.size(), 20);
  m_stage.endWhenInterrupted();
  if (waits[1].revents != 0) readMembers();
  if (waits[2].revents != 0) m_shownEnded = !shown->readLines(take);
  for (std::size_t i = 0; i < m_writers.size(); ++i) {
    if (waits[3 + 2 * i].revents != 0) m_writers[i]->read();
    if (waits[4 + 2 * i].revents != 0) m_writers[i]->feed();
  }
  tellInTime();
}

void DemoTraffic::watchMembers() {
  if (m_question || Clock::now() < m_nextQuestion) return;
  m_answer.clear();
  const DemoStage::Arguments arguments = {"--home", m_observer, "stats", "--json"};
  m_question = std::make_unique<ChildProcess>(arguments, m_stage.childOptions());
}

void DemoTraffic::readMembers() {
  if (m_question->readLines([this](const std::string& line) { m_answer += line; })) return;
  m_question.reset();
  m_nextQuestion = Clock::now() + kQuestionInterval;
  m_members = DemoMembers(nlohmann::json::parse(m_answer, nullptr, false));
}

void DemoTraffic::tellInTime() {
  if (Clock::now() >= m_nextRow) tell("");
}

}  // namespace EventApps
