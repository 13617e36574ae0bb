#include "apps/eventd/api/JsonReader.h"

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "apps/common/Display.h"
#include "apps/eventd/api/Problem.h"

namespace EventApps::Api {
namespace {

using nlohmann::json;

// The reason quotes the body, which may be long.
constexpr std::size_t kReasonColumns = 300;

[[noreturn]] void refuse(const std::string& detail) {
  throw Refused(ProblemKind::kBadRequest, detail);
}

// Looks at every value while the parser meets it.
class Guard {
 public:
  explicit Guard(const JsonBounds& bounds) : m_bounds(bounds) {}

  bool operator()(int depth, json::parse_event_t event, const json& parsed) {
    const auto level = static_cast<std::size_t>(depth);
    switch (event) {
      case json::parse_event_t::object_start:
      case json::parse_event_t::array_start:
        open(level, event == json::parse_event_t::array_start);
        break;
      case json::parse_event_t::key:
        addKey(parsed.get_ref<const std::string&>());
        break;
      case json::parse_event_t::object_end:
      case json::parse_event_t::array_end:
        m_keys.pop_back();
        break;
      case json::parse_event_t::value:
        if (level == 1) countElement();
        break;
    }
    return true;
  }

 private:
  void open(std::size_t level, bool isArray) {
    if (level >= m_bounds.depth) {
      refuse("the JSON goes deeper than " + std::to_string(m_bounds.depth) + " levels");
    }
    if (level == 0) m_isArray = isArray;
    if (level == 1) countElement();
    m_keys.emplace_back();
  }

  void countElement() {
    if (!m_isArray || ++m_elements <= m_bounds.elements) return;
    throw Refused(ProblemKind::kPayloadTooLarge, "the array has more than " +
                                                     std::to_string(m_bounds.elements) +
                                                     " elements; send it in several requests");
  }

  void addKey(const std::string& key) {
    if (!m_keys.back().insert(key).second) {
      refuse("the member " + quotedStart(key) + " is there twice in one object; keep one");
    }
    if (m_keys.back().size() > m_bounds.members) {
      refuse("an object has more than " + std::to_string(m_bounds.members) + " members");
    }
  }

  JsonBounds m_bounds;
  bool m_isArray = false;
  std::size_t m_elements = 0;
  std::vector<std::set<std::string>> m_keys;  // of the objects that are open; empty for arrays
};

// "line 1, column 7: syntax error ..." of the parser's message.
std::string reasonOf(const json::exception& problem) {
  const std::string message = problem.what();
  const std::size_t at = message.find(" at ");
  return at == std::string::npos ? message : message.substr(at + 4);
}

}  // namespace

json readJson(std::string_view text, const JsonBounds& bounds) {
  Guard guard(bounds);
  try {
    return json::parse(text, [&](int depth, json::parse_event_t event, const json& parsed) {
      return guard(depth, event, parsed);
    });
  } catch (const json::exception& problem) {
    refuse("this is no JSON, at " + displayStart(reasonOf(problem), kReasonColumns));
  }
}

}  // namespace EventApps::Api
