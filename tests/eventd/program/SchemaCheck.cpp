#include "tests/eventd/program/SchemaCheck.h"

#include <algorithm>
#include <functional>
#include <map>
#include <regex>

namespace EventSystemTest {
namespace {

using nlohmann::json;

bool hasType(const json& value, const std::string& type) {
  const std::map<std::string, bool> types = {
      {"object", value.is_object()}, {"array", value.is_array()},
      {"string", value.is_string()}, {"integer", value.is_number_integer()},
      {"number", value.is_number()}, {"boolean", value.is_boolean()},
      {"null", value.is_null()}};
  const auto found = types.find(type);
  return found != types.end() && found->second;
}

class Check {
 public:
  explicit Check(const json& root) : m_root(root) {}

  void value(const json& value, const json& schema, const std::string& place) {
    for (const auto& [keyword, argument] : schema.items()) {
      const auto known = keywords().find(keyword);
      if (known == keywords().end()) {
        fail(place, "the keyword " + keyword + " is not known here");
      } else if (known->second) {
        (this->*known->second)(value, argument, schema, place);
      }
    }
  }

  std::vector<std::string> problems;

 private:
  using Keyword = void (Check::*)(const json& value, const json& argument, const json& schema,
                                  const std::string& place);

  static const std::map<std::string, Keyword>& keywords() {
    static const std::map<std::string, Keyword> all = {
        {"$ref", &Check::reference},    {"type", &Check::type},
        {"required", &Check::required}, {"properties", &Check::properties},
        {"items", &Check::items},       {"additionalProperties", &Check::additional},
        {"enum", &Check::choices},      {"pattern", &Check::pattern},
        {"minimum", &Check::minimum},   {"maximum", &Check::maximum},
        {"minItems", &Check::minItems}, {"oneOf", &Check::oneOf},
        {"description", nullptr},       {"default", nullptr}};
    return all;
  }

  void fail(const std::string& place, const std::string& what) {
    problems.push_back(place + ": " + what);
  }

  void reference(const json& one, const json& argument, const json&, const std::string& place) {
    value(one, m_root.at(json::json_pointer(argument.get<std::string>().substr(1))), place);
  }
  void type(const json& one, const json& argument, const json&, const std::string& place) {
    const json types = argument.is_array() ? argument : json::array({argument});
    const bool fits = std::any_of(types.begin(), types.end(),
                                  [&](const json& name) { return hasType(one, name); });
    if (!fits) fail(place, one.dump() + " is not " + argument.dump());
  }
  void required(const json& one, const json& argument, const json&, const std::string& place) {
    for (const json& name : argument) {
      if (one.is_object() && !one.contains(name.get<std::string>()))
        fail(place, "lacks " + name.dump());
    }
  }
  void properties(const json& one, const json& argument, const json&, const std::string& place) {
    if (!one.is_object()) return;
    for (const auto& [name, schema] : argument.items()) {
      if (one.contains(name)) value(one[name], schema, place + "/" + name);
    }
  }
  void additional(const json& one, const json& argument, const json& schema,
                  const std::string& place) {
    if (!one.is_object() || argument == true) return;
    for (const auto& [name, member] : one.items()) {
      if (schema.value("properties", json::object()).contains(name)) continue;
      if (argument == false) {
        fail(place, "has " + name);
      } else {
        value(member, argument, place + "/" + name);
      }
    }
  }
  void items(const json& one, const json& argument, const json&, const std::string& place) {
    if (!one.is_array()) return;
    for (std::size_t i = 0; i < one.size(); ++i) {
      value(one[i], argument, place + "/" + std::to_string(i));
    }
  }
  void choices(const json& one, const json& argument, const json&, const std::string& place) {
    if (std::find(argument.begin(), argument.end(), one) == argument.end()) {
      fail(place, one.dump() + " is none of " + argument.dump());
    }
  }
  void pattern(const json& one, const json& argument, const json&, const std::string& place) {
    const bool fits = one.is_string() && std::regex_search(one.get<std::string>(),
                                                           std::regex(argument.get<std::string>()));
    if (!fits) fail(place, one.dump() + " does not match " + argument.dump());
  }
  void minimum(const json& one, const json& argument, const json&, const std::string& place) {
    if (one.is_number() && one < argument) fail(place, one.dump() + " is too small");
  }
  void maximum(const json& one, const json& argument, const json&, const std::string& place) {
    if (one.is_number() && one > argument) fail(place, one.dump() + " is too large");
  }
  void minItems(const json& one, const json& argument, const json&, const std::string& place) {
    if (one.is_array() && one.size() < argument.get<std::size_t>()) fail(place, "has too few");
  }
  void oneOf(const json& one, const json& argument, const json&, const std::string& place) {
    const auto fitting = std::count_if(argument.begin(), argument.end(), [&](const json& schema) {
      return whyNotValid(one, schema, m_root).empty();
    });
    if (fitting != 1) fail(place, "fits " + std::to_string(fitting) + " of the choices");
  }

  const json& m_root;
};

}  // namespace

std::vector<std::string> whyNotValid(const json& value, const json& schema, const json& root) {
  Check check(root);
  check.value(value, schema, "");
  return check.problems;
}

}  // namespace EventSystemTest
