#include "bench/support/RatioTable.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench {

namespace {

std::string Print(const char* format, double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

std::string Padded(const std::string& text, std::size_t width, bool toTheRight = false) {
  const std::size_t blanks = width > text.size() ? width - text.size() : 0;
  return toTheRight ? std::string(blanks, ' ') + text : text + std::string(blanks, ' ');
}

std::string Verdict(const RatioRow& row) {
  if (!row.aim.has_value()) return {};
  return "   aim <= " + Print("%.2f", *row.aim) + (row.Ratio() <= *row.aim ? "  met" : "  MISSED");
}

template <class Text>
std::size_t Widest(const std::vector<RatioRow>& rows, Text text) {
  std::size_t width = 0;
  for (const RatioRow& row : rows) width = std::max(width, text(row).size());
  return width;
}

}  // namespace

std::string FormatNanoseconds(double nanoseconds) {
  constexpr std::array<const char*, 4> kUnits{" ns", " us", " ms", " s"};
  std::size_t unit = 0;
  while (nanoseconds >= 1000 && unit + 1 < kUnits.size()) {
    nanoseconds /= 1000;
    ++unit;
  }
  const char* const digits = nanoseconds >= 100 || nanoseconds == 0 ? "%.0f" : nanoseconds >= 10 ? "%.1f" : "%.2f";
  return Print(digits, nanoseconds) + kUnits[unit];
}

std::string FormatBytes(double bytes) { return Print("%.0f B", bytes); }

void PrintRatios(std::ostream& out, const std::string& title, const std::vector<RatioRow>& rows, Format format) {
  constexpr std::size_t kNumberWidth = 8;
  const std::size_t what = Widest(
      rows, [](const RatioRow& row) -> auto& { return row.what; });
  const std::size_t measured = Widest(
      rows, [](const RatioRow& row) -> auto& { return row.measuredName; });
  const std::size_t baseline = Widest(
      rows, [](const RatioRow& row) -> auto& { return row.baselineName; });
  out << "\n" << title << "\n";
  for (const RatioRow& row : rows) {
    out << "  " << Padded(row.what, what) << "   " << Padded(row.measuredName, measured) << " "
        << Padded(format(row.measured), kNumberWidth, true) << "   " << Padded(row.baselineName, baseline) << " "
        << Padded(format(row.baseline), kNumberWidth, true) << "   ratio "
        << Padded(Print("%.2f", row.Ratio()), kNumberWidth - 2, true) << Verdict(row) << "\n";
  }
  out.flush();
}

}  // namespace bench
