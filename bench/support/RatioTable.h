// The last page of every benchmark: what was measured beside its baseline, with the ratio and the aim.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace bench {

struct RatioRow {
  std::string what;
  std::string measuredName;
  std::string baselineName;
  double measured = 0;  // in the table's unit
  double baseline = 0;
  std::optional<double> aim;  // largest ratio aimed at

  double Ratio() const { return measured / baseline; }
};

// How a table's numbers are written, for example FormatNanoseconds.
using Format = std::string (*)(double value);

// "812 ns", "1.42 us", "3.9 ms": three significant digits.
std::string FormatNanoseconds(double nanoseconds);
// "271 B".
std::string FormatBytes(double bytes);

// One line a row; an aim that was missed is marked, and nothing else comes of it.
void PrintRatios(std::ostream& out, const std::string& title, const std::vector<RatioRow>& rows,
                 Format format = FormatNanoseconds);

}  // namespace bench
