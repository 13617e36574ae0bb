#include "apps/common/Table.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "apps/common/Display.h"

namespace EventApps {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kLeastRest = 8;  // of the last column, whatever the others took

std::string padded(const std::string& cell, const Table::Column& column) {
  const std::size_t width = displayWidth(cell);
  const std::string blanks(column.width > width ? column.width - width : 0, ' ');
  return column.align == Align::kRight ? blanks + cell : cell + blanks;
}

const char* escapeOf(Style style) {
  switch (style) {
    case Style::kBold:
      return "\033[1m";
    case Style::kDim:
      return "\033[2m";
    case Style::kBlue:
      return "\033[36m";
    case Style::kGreen:
      return "\033[32m";
    case Style::kRed:
      return "\033[31m";
    case Style::kPlain:
      break;
  }
  return "";
}

}  // namespace

std::string styled(const Output& output, Style style, const std::string& text) {
  if (!output.isColoured() || style == Style::kPlain) return text;
  return escapeOf(style) + text + "\033[0m";
}

Table::Table(Output& output, std::vector<Column> columns, Overflow overflow)
    : m_output(output), m_columns(std::move(columns)), m_overflow(overflow) {}

void Table::row(const std::vector<std::string>& cells) {
  if (!std::exchange(m_started, true)) titles();
  std::size_t used = 0;
  const std::string lead = leadingCells(cells, false, used);
  const std::size_t columns = m_output.columns();
  const std::size_t rest = columns > used + kLeastRest ? columns - used : kLeastRest;
  const Style style = m_columns.back().style;
  if (m_overflow == Overflow::kCut) {
    m_output.line(lead + styled(m_output, style, cutToWidth(cells.back(), rest)));
    return;
  }
  std::string before = lead;
  for (const std::string& line : wrapToWidth(cells.back(), rest)) {
    m_output.line(before + styled(m_output, style, line));
    before.assign(used, ' ');
  }
}

void Table::titles() {
  std::vector<std::string> cells;
  std::transform(m_columns.begin(), m_columns.end(), std::back_inserter(cells),
                 [](const Column& column) { return column.title; });
  std::size_t used = 0;
  const std::string lead = leadingCells(cells, true, used);
  m_output.line(lead + styled(m_output, Style::kBold, cells.back()));
}

std::string Table::leadingCells(const std::vector<std::string>& cells, bool title,
                                std::size_t& width) const {
  std::string text;
  for (std::size_t i = 0; i + 1 < m_columns.size(); ++i) {
    const std::string cell = padded(cells[i], m_columns[i]);
    width += displayWidth(cell) + kGap;
    text += styled(m_output, title ? Style::kBold : m_columns[i].style, cell);
    text.append(kGap, ' ');
  }
  return text;
}

}  // namespace EventApps
