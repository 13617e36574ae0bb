// `eventctl add KIND --field value...`: puts one event into a queue.

#include <ctime>
#include <memory>
#include <string>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventLimits.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/common/StoredForm.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

// A KelpEvent carries one of two fields, by its issue.
void requireIssueField(const FieldTexts& texts) {
  const bool isFileGroup = texts.at("issue") == "3";
  const char* const needed = isFileGroup ? "file_group" : "issue_duration";
  const char* const unwritten = isFileGroup ? "issue_duration" : "file_group";
  const EventKind& kind = *kindOf(EventSystem::kKelpEvent);
  const std::string issue = "--issue " + texts.at("issue");
  if (!texts.contains(needed)) {
    throw CLI::ValidationError(findField(kind, needed)->option, "is required with " + issue);
  }
  if (texts.contains(unwritten)) {
    throw CLI::ValidationError(findField(kind, unwritten)->option,
                               "is not carried by an event with " + issue);
  }
}

void fillDefaults(const EventKind& kind, FieldTexts& texts) {
  for (const Field& field : kind.fields) {
    if (texts.contains(field.key)) continue;
    if (field.presence == Presence::kDefault) texts[field.key] = field.fallback;
    if (field.presence == Presence::kNow) texts[field.key] = std::to_string(std::time(nullptr));
  }
}

[[noreturn]] void refused(QueueSession& session, int result, const std::string& queue) {
  if (result == EventSystem::kStorageLimits) {
    throw Failure("the event was refused: " + queue +
                  " is full; consume or delete events, or raise count_limit in " +
                  session.queues().limitsFile());
  }
  throw Failure("the event was not stored (result " + std::to_string(result) + "); " +
                session.queues().whyFailed());
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
  const auto event = kind.build(texts);
  QueueSession session(options);
  const std::string problem = whyNotStorable(*event, session.queues().destination(options.dsid));
  if (!problem.empty()) throw Failure("the event was refused: " + problem);
  unsigned long id = 0;
  const int result = session.queues().store(*event, options.dsid, id);
  if (result != 0) refused(session, result, queueName(options.dsid));
  session.queues().makeDurable();
  try {
    printAdded(options, *event, id);
  } catch (const OutputError& error) {
    throw Failure("event " + std::to_string(id) + " was stored in " + queueName(options.dsid) +
                  ", but its id could not be printed: " + error.what());
  }
  return kDone;
}

void defineField(CLI::App& command, const Field& field, const std::shared_ptr<FieldTexts>& texts) {
  CLI::Option* const option = command.add_option_function<std::string>(
      field.option,
      [texts, &field](const std::string& text) {
        const std::string problem = whyNotAValue(field, text);
        if (!problem.empty()) throw CLI::ValidationError(field.option, problem);
        (*texts)[field.key] = text;
      },
      field.help);
  option->type_name(field.type == FieldType::kText ? "TEXT" : "N");
  if (field.presence == Presence::kRequired) option->required();
}

void defineKind(CLI::App& add, CommandLine& line, const EventKind& kind) {
  const std::string example = std::string("add ") + kind.name + " " + kind.example;
  CLI::App* const command = defineCommand(add, kind.name, kind.summary, example);
  const auto texts = std::make_shared<FieldTexts>();
  for (const Field& field : kind.fields) defineField(*command, field, texts);
  command->callback([&line, &kind, texts] {
    if (kind.number == EventSystem::kKelpEvent) requireIssueField(*texts);
    fillDefaults(kind, *texts);
    line.run = [&line, &kind, texts] { return runAdd(line.global, kind, *texts); };
  });
}

}  // namespace

void defineAdd(CLI::App& app, CommandLine& line) {
  CLI::App* const add = defineCommand(app, "add", "put an event into a queue and print its id",
                                      "add activity --action 3 --severity 2 --msg 'disk full'");
  add->require_subcommand(1);
  for (const EventKind& kind : eventKinds()) defineKind(*add, line, kind);
}

}  // namespace EventApps
