#include "apps/eventd/api/QueueJson.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "apps/common/EventKinds.h"

namespace EventApps::Api {
namespace {

using nlohmann::ordered_json;

const char* nameOf(FieldType type) {
  switch (type) {
    case FieldType::kInt32:
      return "int32";
    case FieldType::kUint32:
      return "uint32";
    case FieldType::kUint64:
      return "uint64";
    case FieldType::kFlags:
      return "flags";
    case FieldType::kState:
      return "state";
    case FieldType::kText:
      break;
  }
  return "text";
}

ordered_json jsonOf(const Field& field) {
  ordered_json object = {{"key", field.key},
                         {"name", EventApps::nameOf(field)},
                         {"type", nameOf(field.type)},
                         {"required", field.presence == Presence::kRequired}};
  if (field.type == FieldType::kText) object["mostBytes"] = field.mostBytes;
  if (field.presence == Presence::kDefault) object["default"] = field.fallback;
  object["help"] = field.help;
  return object;
}

}  // namespace

ordered_json jsonOfQueues(const FiguresSnapshot& figures) {
  auto queues = ordered_json::array();
  for (const auto& [dsid, queue] : figures.queues) {
    ordered_json object = EventApps::jsonOfQueue(dsid, queue);
    const auto selection =
        std::find_if(figures.selections.begin(), figures.selections.end(),
                     [dsid = dsid](const DataSelection& one) { return one.id == dsid; });
    if (selection != figures.selections.end()) {
      object["name"] = selection->name;
      object["type"] = selection->type;
    }
    queues.push_back(std::move(object));
  }
  return queues;
}

ordered_json jsonOfKinds() {
  auto kinds = ordered_json::object();
  for (const EventKind& kind : eventKinds()) {
    auto fields = ordered_json::array();
    for (const Field& field : kind.fields) fields.push_back(jsonOf(field));
    kinds[kind.name] = {{"number", static_cast<int>(kind.number)},
                        {"summary", kind.summary},
                        {"fields", std::move(fields)}};
  }
  return kinds;
}

}  // namespace EventApps::Api
