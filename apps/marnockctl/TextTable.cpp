#include "apps/marnockctl/TextTable.h"

#include <algorithm>
#include <cstddef>

namespace KT {

namespace {

// How many characters a terminal shows for UTF-8 text, wide and combining ones aside.
std::size_t Width(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width, TextTable::Align align) {
  const std::string blanks(width - std::min(width, Width(text)), ' ');
  return align == TextTable::Align::Left ? text + blanks : blanks + text;
}

}  // namespace

void TextTable::AddColumn(const std::vector<std::string>& cells, Align align) {
  const std::string gap = lines_.empty() ? "" : "  ";
  lines_.resize(std::max(lines_.size(), cells.size()));
  std::size_t width = 0;
  for (const std::string& cell : cells) {
    width = std::max(width, Width(cell));
  }
  for (std::size_t row = 0; row < cells.size(); ++row) {
    lines_[row] += gap + Padded(cells[row], width, align);
  }
}

std::string TextTable::Text() const {
  std::string text;
  for (std::size_t row = 0; row < lines_.size(); ++row) {
    const std::string& line = lines_[row];
    text += (row == 0 ? "" : "\n") + line.substr(0, line.find_last_not_of(' ') + 1);
  }
  return text;
}

}  // namespace KT
