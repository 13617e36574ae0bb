// A table for people, printed row by row: all columns but the last are padded, the last takes
// what is left of the line.
//
// Thread safety: none; used by the thread that prints.

#ifndef EVENTSYSTEM_APPS_COMMON_TABLE_H
#define EVENTSYSTEM_APPS_COMMON_TABLE_H

#include <cstddef>
#include <string>
#include <vector>

#include "apps/common/Display.h"
#include "apps/common/Output.h"

namespace EventApps {

enum class Align { kLeft, kRight };

// What becomes of a last column that is longer than the line.
enum class Overflow {
  kCut,  // shortened, with an ellipsis
  kWrap  // continued below, complete
};

enum class Style { kPlain, kBold, kDim, kBlue, kGreen, kRed };

// `text` in a style where the output is coloured, otherwise as it is.
std::string styled(const Output& output, Style style, const std::string& text);

class Table {
 public:
  struct Column {
    std::string title;
    std::size_t width;  // at least; a longer value pushes the row to the right
    Align align = Align::kLeft;
    Style style = Style::kPlain;
  };

  Table(Output& output, std::vector<Column> columns, Overflow overflow);

  // Prints a row, before the first one the titles. Cells are outputs of displayText().
  void row(const std::vector<std::string>& cells);

 private:
  void titles();
  std::string leadingCells(const std::vector<std::string>& cells, bool title,
                           std::size_t& width) const;

  Output& m_output;
  std::vector<Column> m_columns;
  Overflow m_overflow;
  bool m_started = false;
};

}  // namespace EventApps

#endif
