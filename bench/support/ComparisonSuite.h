// Benchmarks in groups: one thing measured and its baselines, all in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// A benchmark with the name that it has in the table.
struct Subject {
  std::string name;
  std::function<void(benchmark::State&)> body;
  std::optional<double> aim;  // of a baseline: largest ratio aimed at
};

class ComparisonSuite {
 public:
  // `what` is measured by `subject` and by each of `baselines`.
  void Add(const std::string& what, const Subject& subject, const std::vector<Subject>& baselines);

  // Runs everything repeatedly in random order, so that a busy moment of the machine hits both sides of a ratio, then
  // prints the ratios of the median processor times. Understands Google Benchmark's options. Returns main's status.
  int Run(const std::string& title, int argc, char** argv) const;

 private:
  struct Comparison {
    std::string what;
    Subject subject;
    std::vector<Subject> baselines;
  };
  std::vector<Comparison> comparisons_;
};

}  // namespace bench
