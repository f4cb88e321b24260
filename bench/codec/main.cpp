#include "bench/codec/CodecBenchmarks.h"

int main(int argc, char** argv) {
  bench::ComparisonSuite suite;
  bench::AddPrimitives(suite);
  bench::AddRecords(suite);
  return suite.Run("Message encoding (median processor time)", argc, argv);
}
