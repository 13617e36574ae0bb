#include "apps/eventd/queue/Published.h"

#include <nlohmann/json.hpp>

namespace EventApps {
namespace {

// JSON takes about as much again as event string and fields.
constexpr std::size_t kBytesOfOne = 512;
constexpr std::size_t kTimesTheText = 4;

}  // namespace

const std::string& Published::json() const {
  std::call_once(m_made, [this] { m_json = jsonLine(jsonOf(m_view)); });
  return m_json;
}

std::size_t Published::bytes() const {
  return kBytesOfOne + kTimesTheText * m_view.eventString.size();
}

}  // namespace EventApps
