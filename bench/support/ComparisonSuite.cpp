#include "bench/support/ComparisonSuite.h"

#include <iostream>
#include <map>

#include "bench/support/Machine.h"
#include "bench/support/RatioTable.h"
#include "bench/support/Samples.h"

namespace bench {

namespace {

std::string BenchmarkName(const std::string& what, const std::string& subject) { return what + "/" + subject; }

// Keeps the processor time of every repetition and prints nothing: the table comes at the end.
class Recorder final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration) times_[run.run_name.function_name].Add(run.GetAdjustedCPUTime());
    }
  }

  // 0 when no such benchmark ran, because of a filter.
  double Median(const std::string& name) const {
    const auto found = times_.find(name);
    return found == times_.end() ? 0 : found->second.Median();
  }

 private:
  std::map<std::string, Samples> times_;
};

}  // namespace

void ComparisonSuite::Add(const std::string& what, const Subject& subject, const std::vector<Subject>& baselines) {
  comparisons_.push_back({what, subject, baselines});
  benchmark::RegisterBenchmark(BenchmarkName(what, subject.name).c_str(), subject.body);
  for (const Subject& baseline : baselines) {
    benchmark::RegisterBenchmark(BenchmarkName(what, baseline.name).c_str(), baseline.body);
  }
}

int ComparisonSuite::Run(const std::string& title, int argc, char** argv) const {
  std::vector<std::string> defaults{"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=9",
                                    "--benchmark_min_time=0.05"};
  std::vector<char*> arguments(argv, argv + argc);
  for (std::string& option : defaults) arguments.insert(arguments.begin() + 1, option.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

  DescribeMachine(std::cout);
  Recorder recorder;
  benchmark::RunSpecifiedBenchmarks(&recorder);
  std::vector<RatioRow> rows;
  for (const Comparison& comparison : comparisons_) {
    for (const Subject& baseline : comparison.baselines) {
      const double measured = recorder.Median(BenchmarkName(comparison.what, comparison.subject.name));
      const double beside = recorder.Median(BenchmarkName(comparison.what, baseline.name));
      if (measured == 0 || beside == 0) continue;
      rows.push_back({comparison.what, comparison.subject.name, baseline.name, measured, beside, baseline.aim});
    }
  }
  PrintRatios(std::cout, title, rows);
  return 0;
}

}  // namespace bench
