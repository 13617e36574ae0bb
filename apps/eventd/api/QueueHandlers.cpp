// The queues themselves: which there are, added, removed, checked.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "EventSystem/platform/HostConfig.h"
#include "apps/common/DataSelections.h"
#include "apps/common/Display.h"
#include "apps/common/QueueCheck.h"
#include "apps/common/QueueNames.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/JsonReader.h"
#include "apps/eventd/api/MediaTypes.h"
#include "apps/eventd/api/Parameters.h"
#include "apps/eventd/api/QueueJson.h"
#include "apps/eventd/api/Services.h"

namespace EventApps::Api {
namespace {

using nlohmann::json;

unsigned int numberIn(const Call& call) {
  const auto dsid = static_cast<unsigned int>(
      requireNumber(call.argument("dsid"), std::numeric_limits<unsigned int>::max(),
                    "the number of the data selection"));
  return queueOf(dsid);
}

DataSelection selectionIn(const Call& call) {
  const json body = optionalBody(call, {"name", "type"});
  DataSelection selection{.id = numberIn(call), .type = DataSelection{}.type, .name = ""};
  if (body.contains("name")) {
    if (!body["name"].is_string()) throw Refused(ProblemKind::kBadRequest, "the name is no text");
    selection.name = body["name"].get<std::string>();
  }
  if (selection.name.size() > kLongestSelectionName ||
      displayText(selection.name) != selection.name) {
    throw Refused(ProblemKind::kBadRequest, "the name takes at most " +
                                                std::to_string(kLongestSelectionName) +
                                                " bytes, none of them a control character");
  }
  if (!body.contains("type")) return selection;
  const json& type = body["type"];
  if (!type.is_number_unsigned() || type.get<std::uint64_t>() > std::numeric_limits<int>::max()) {
    throw Refused(ProblemKind::kBadRequest, "the type is no whole number from 0 to " +
                                                std::to_string(std::numeric_limits<int>::max()));
  }
  selection.type = type.get<int>();
  return selection;
}

Problem problemOf(const ChangeResult& result) {
  if (!result.refused) return queueProblem(result.code, result.problem);
  const bool isUnknown = *result.refused == SelectionRefused::Reason::kUnknown;
  return {.kind = isUnknown ? ProblemKind::kUnknownDataSelection : ProblemKind::kConflict,
          .detail = result.problem};
}

}  // namespace

unsigned int queueIn(const Services& services, const Call& call) {
  const unsigned int dsid = numberIn(call);
  if (services.queues.hasQueue(dsid)) return dsid;
  // It may stand where the database cannot be read.
  if (const std::string damage = services.host.damage(); !damage.empty()) {
    throw Refused(ProblemKind::kStoreFailed, damage);
  }
  throw Refused(ProblemKind::kUnknownDataSelection,
                "data selection " + std::to_string(dsid) +
                    " does not exist; add it with PUT /v1/queues/" + std::to_string(dsid));
}

Problem queueProblem(int code, const std::string& problem) {
  if (code != kNoMajority) return {.kind = ProblemKind::kStoreFailed, .detail = problem};
  return {.kind = ProblemKind::kNoMajority, .detail = problem, .headers = {{"Retry-After", "1"}}};
}

json optionalBody(const Call& call, std::initializer_list<std::string_view> members) {
  const Http::Request& request = call.request();
  if (request.body.empty()) return json::object();
  if (mediaTypeOf(request.header("Content-Type")) != "application/json") {
    throw Refused(ProblemKind::kUnsupportedMediaType, "the body is taken as application/json");
  }
  json body = readJson(request.body, {.depth = 1});
  if (!body.is_object()) throw Refused(ProblemKind::kBadRequest, "the body is no JSON object");
  for (const auto& [name, value] : body.items()) {
    if (std::find(members.begin(), members.end(), name) != members.end()) continue;
    throw Refused(ProblemKind::kBadRequest,
                  "the body's member " + quotedStart(name) + " is not known here");
  }
  return body;
}

void listQueues(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  services.queues.figures([call](const FiguresPtr& figures) {
    if (!figures->problem.empty()) return call->fail(queueProblem(figures->code, figures->problem));
    call->answerJson(200, {{"queues", jsonOfQueues(*figures)}});
  });
}

void addQueue(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  const DataSelection selection = selectionIn(*call);
  if (isGlobalQueue(selection.id)) {
    throw Refused(ProblemKind::kConflict, "this is the global queue, which is always there");
  }
  if (selection.id > kHighestSelection) {
    throw Refused(ProblemKind::kBadRequest,
                  "the highest number of a data selection is " + std::to_string(kHighestSelection));
  }
  services.queues.addDataSelection(selection, [call, selection](const ChangeResult& result) {
    if (!result.problem.empty()) return call->fail(problemOf(result));
    const nlohmann::ordered_json object = {
        {"dsid", selection.id}, {"name", selection.name}, {"type", selection.type}};
    call->answer({201, "application/json", jsonLine(object) + "\n", {}});
  });
}

void removeQueue(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  const unsigned int dsid = queueIn(services, *call);
  if (isGlobalQueue(dsid)) {
    throw Refused(ProblemKind::kConflict, "this is the global queue, which stays");
  }
  services.queues.removeDataSelection(dsid, [call](const ChangeResult& result) {
    if (!result.problem.empty()) return call->fail(problemOf(result));
    call->answer({204, "", "", {}});
  });
}

void checkQueues(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  const json body = optionalBody(*call, {"fix"});
  if (body.contains("fix") && !body["fix"].is_boolean()) {
    throw Refused(ProblemKind::kBadRequest, "the body's member fix is neither true nor false");
  }
  services.queues.check(body.value("fix", false), [call](const CheckResult& result) {
    if (!result.problem.empty()) return call->fail(queueProblem(result.code, result.problem));
    call->answerJson(200, jsonOf(result.report));
  });
}

}  // namespace EventApps::Api
