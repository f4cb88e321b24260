// Times of repeated operations.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

class Samples {
 public:
  void Add(double nanoseconds) { values_.push_back(nanoseconds); }
  void Add(const Samples& other) { values_.insert(values_.end(), other.values_.begin(), other.values_.end()); }
  void Reserve(std::size_t count) { values_.reserve(count); }
  std::size_t Count() const { return values_.size(); }

  // The smallest value that `percent` of the values do not pass; 0 when there are none.
  double Percentile(double percent) const;
  double Median() const { return Percentile(50); }

 private:
  std::vector<double> values_;
};

// How long `body` takes in nanoseconds.
double TimeOf(const std::function<void()>& body);

}  // namespace bench
