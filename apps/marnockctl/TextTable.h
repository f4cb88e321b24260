// Columns of text for a reader at a terminal.
#pragma once

#include <string>
#include <vector>

namespace KT {

// The cells of one column: `title`, then what `cell` makes of each row.
template <class Rows, class Cell>
std::vector<std::string> Column(const std::string& title, const Rows& rows, Cell&& cell) {
  std::vector<std::string> column{title};
  for (const auto& row : rows) {
    column.push_back(cell(row));
  }
  return column;
}

class TextTable {
 public:
  enum class Align { Left, Right };

  // Adds a column on the right, a cell a line from the top. Cells are UTF-8 without line ends.
  void AddColumn(const std::vector<std::string>& cells, Align align = Align::Left);

  // The lines, columns two blanks apart, without blanks at the ends of lines and without a newline at the end.
  std::string Text() const;

 private:
  std::vector<std::string> lines_;
};

}  // namespace KT
