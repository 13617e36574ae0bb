#include "apps/eventctl/DemoProof.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

constexpr std::string_view kMessage = ";LEGACYEVENT{payload:backup ";
constexpr std::string_view kOf = " of ";
constexpr std::string_view kEnd = " done;}}";

// One record while a queue is gone through.
struct Progress {
  std::vector<unsigned long> times;  // each event was found
  unsigned long last = 0;            // the number of the latest event found
};

struct Origin {
  std::size_t record;
  unsigned long number;
};

// Who wrote the event; nothing unless it stands there exactly as written, in the queue it was
// written to.
std::optional<Origin> originOf(const std::vector<DemoRecord>& records, unsigned int dsid,
                               const DemoFound& event) {
  const std::string_view text = event.eventString;
  const std::size_t start = text.find(kMessage) + kMessage.size();
  const std::size_t of = text.find(kOf, start);
  if (text.find(kMessage) == text.npos || of == text.npos || !text.ends_with(kEnd)) return {};
  const auto number = parseNumber<unsigned long>(text.substr(start, of - start));
  const std::size_t name = of + kOf.size();
  const auto writer = text.substr(name, text.size() - name - kEnd.size());
  const auto record = std::find_if(records.begin(), records.end(),
                                   [&](const DemoRecord& one) { return one.writer == writer; });
  if (!number || record == records.end()) return {};
  if (*number == 0 || *number > record->events.size()) return {};
  if (record->events[*number - 1].dsid != dsid) return {};
  if (text != demoEventString(record->writer, *number, event.id)) return {};
  return Origin{static_cast<std::size_t>(record - records.begin()), *number};
}

void countFound(const DemoFate& fate, unsigned long number, unsigned long id, Progress& progress,
                DemoProof& proof) {
  ++proof.found;
  if (progress.times[number - 1]++ > 0) {
    ++proof.doubled;
    return;
  }
  if (number < progress.last) ++proof.disordered;
  progress.last = number;
  if (!fate.acknowledged) ++proof.unanswered;
  if (fate.id != 0 && fate.id != id) ++proof.misnumbered;
}

unsigned long countLost(const DemoRecord& record, unsigned int dsid, const Progress& progress) {
  unsigned long lost = 0;
  for (std::size_t i = 0; i < record.events.size(); ++i) {
    const DemoFate& fate = record.events[i];
    if (fate.acknowledged && fate.dsid == dsid && progress.times[i] == 0) ++lost;
  }
  return lost;
}

}  // namespace

std::string demoEventString(const std::string& writer, unsigned long number, unsigned long id) {
  std::string text = "EVENT{version:1;type:1;id:" + std::to_string(id);
  text += ";date:1710201600";
  text += kMessage;
  text += std::to_string(number);
  text += kOf;
  text += writer;
  text += kEnd;
  return text;
}

unsigned long DemoRecord::acknowledged(unsigned int dsid) const {
  const auto count = std::count_if(events.begin(), events.end(), [&](const DemoFate& fate) {
    return fate.acknowledged && fate.dsid == dsid;
  });
  return static_cast<unsigned long>(count);
}

DemoProof proveQueue(const std::vector<DemoRecord>& records, unsigned int dsid,
                     const std::vector<DemoFound>& found) {
  DemoProof proof;
  std::vector<Progress> progress;
  for (const DemoRecord& record : records) {
    proof.acknowledged.push_back(record.acknowledged(dsid));
    progress.push_back({std::vector<unsigned long>(record.events.size()), 0});
  }
  unsigned long last = 0;
  for (const DemoFound& event : found) {
    if (event.id <= last) ++proof.disordered;
    last = event.id;
    const auto origin = originOf(records, dsid, event);
    if (!origin) {
      ++proof.foreign;
      continue;
    }
    const DemoFate& fate = records[origin->record].events[origin->number - 1];
    countFound(fate, origin->number, event.id, progress[origin->record], proof);
  }
  for (std::size_t i = 0; i < records.size(); ++i) {
    proof.lost += countLost(records[i], dsid, progress[i]);
  }
  return proof;
}

}  // namespace EventApps
