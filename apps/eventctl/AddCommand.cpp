// `eventctl add KIND --field value...`: puts one event into a queue.

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventLimits.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/common/StoredForm.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"

namespace EventApps {
namespace {

// What is wrong with the fields together, or nothing.
std::string whyNotTogether(const EventKind& kind, const FieldTexts& texts) {
  const IssueFields fields = issueFields(kind, texts);
  if (fields.needed == nullptr) return {};
  const std::string issue = "--issue " + texts.at("issue");
  if (!texts.contains(fields.needed->key)) {
    return std::string(fields.needed->option) + ": is required with " + issue;
  }
  if (texts.contains(fields.lost->key)) {
    return std::string(fields.lost->option) + ": is not carried by an event with " + issue;
  }
  return {};
}

[[noreturn]] void refused(const StoreOutcome& outcome, const std::string& queue) {
  switch (outcome.refusal) {
    case StoreOutcome::Refusal::kFull:
      throw Failure("the event was refused: " + queue + " is full; " + outcome.reason);
    case StoreOutcome::Refusal::kRejected:
      throw Failure("the event was refused: " + outcome.reason);
    case StoreOutcome::Refusal::kUnknown:
      throw Failure("whether the event was stored is not known: " + outcome.reason);
    default:
      throw Failure("the event was not stored " + outcome.reason);
  }
}

void printAdded(const GlobalOptions& options, EventSystem::Event& event, unsigned long id) {
  Output& output = standardOutput();
  if (options.json) {
    // The event itself does not know the id that the cluster service gave it.
    const auto stored = parseEvent(withId(eventStringOf(event), id));
    output.line(jsonLine(jsonOf(viewOf(*stored, options.dsid))));
  } else {
    output.line(std::to_string(id));
  }
  output.flush();
}

int runAdd(const GlobalOptions& options, const EventKind& kind, const FieldTexts& texts) {
  std::vector<std::unique_ptr<EventSystem::Event>> events;
  events.push_back(kind.build(texts));
  const auto& event = events.front();
  const auto queues = openToWrite(options);
  queues->requireQueue(options.dsid);
  std::string problem = whyNotStorable(*event, queues->destination(options.dsid, false));
  if (!problem.empty()) {
    problem = whyNotStorable(*event, queues->destination(options.dsid, true));
  }
  if (!problem.empty()) throw Failure("the event was refused: " + problem);
  const StoreOutcome outcome = queues->store(events, options.dsid);
  if (outcome.ids.empty()) refused(outcome, queueName(options.dsid));
  queues->makeDurable();
  const unsigned long id = outcome.ids.front();
  try {
    printAdded(options, *event, id);
  } catch (const OutputError& error) {
    throw Failure("event " + std::to_string(id) + " was stored in " + queueName(options.dsid) +
                  ", but its id could not be printed: " + error.what());
  }
  return kDone;
}

// Its own, and with that the key of the event string; --version is what every program has.
std::string optionNames(const Field& field) {
  const std::string key = std::string("--") + field.key;
  return key == field.option || key == "--version" ? field.option : field.option + ("," + key);
}

// "--action N --msg TEXT [--time N]"
std::string usageOf(const EventKind& kind) {
  std::string usage;
  for (const Field& field : kind.fields) {
    const bool isText = field.type == FieldType::kText;
    const std::string option = std::string(field.option) + (isText ? " TEXT" : " N");
    if (!usage.empty()) usage += ' ';
    usage += field.presence == Presence::kRequired ? option : "[" + option + "]";
  }
  return usage;
}

std::string fieldsOfKinds() {
  constexpr std::size_t kNameColumns = 16;
  constexpr std::size_t kColumns = 80;
  std::string text = "The fields of each kind:\n";
  for (const EventKind& kind : eventKinds()) {
    std::string before = std::string("  ") + kind.name;
    for (const std::string& line : wrapToWidth(usageOf(kind), kColumns - kNameColumns)) {
      before.resize(kNameColumns, ' ');
      text += before + line + "\n";
      before.clear();
    }
  }
  text.pop_back();
  return text;
}

void defineField(Command& command, const Field& field, const std::shared_ptr<FieldTexts>& texts) {
  command.value(
      optionNames(field), field.type == FieldType::kText ? "TEXT" : "N", field.help,
      [texts, &field](const std::string& text) {
        (*texts)[field.key] = text;
        return whyNotAValue(field, text);
      },
      field.presence == Presence::kRequired ? Need::kRequired : Need::kOptional);
}

void defineKind(Command& add, const EventKind& kind) {
  const std::string example = std::string("add ") + kind.name + " " + kind.example;
  Command command = add.add(kind.name, kind.summary, example);
  const auto texts = std::make_shared<FieldTexts>();
  for (const Field& field : kind.fields) defineField(command, field, texts);
  command.runs([&global = command.global(), &kind, texts] { return runAdd(global, kind, *texts); },
               [&kind, texts] {
                 std::string problem = whyNotTogether(kind, *texts);
                 if (problem.empty()) fillDefaults(kind, *texts);
                 return problem;
               });
}

}  // namespace

void defineAdd(Command parent) {
  Command add =
      parent.add("add", "put an event into a queue and print its id",
                 "add activity --action 3 --severity 2 --msg 'disk full'\n\n" + fieldsOfKinds());
  add.requireCommand();
  for (const EventKind& kind : eventKinds()) defineKind(add, kind);
}

}  // namespace EventApps
