#include "bench/support/Samples.h"

#include <algorithm>
#include <cmath>

namespace bench {

double Samples::Percentile(double percent) const {
  if (values_.empty()) return 0;
  std::vector<double> sorted = values_;
  const double rank = std::ceil(percent / 100 * static_cast<double>(sorted.size()));
  const auto place = sorted.begin() + static_cast<std::ptrdiff_t>(std::max(rank, 1.0)) - 1;
  std::nth_element(sorted.begin(), place, sorted.end());
  return *place;
}

double TimeOf(const std::function<void()>& body) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  body();
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

}  // namespace bench
