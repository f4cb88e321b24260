// Runs a fuzz target once for each file of the folders named on the command line, in the order of their names, so that
// an input that once found a fault finds it again in every test run.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// The name is printed first, so that a target which stops the program shows with what.
void Run(const std::filesystem::path& file) {
  std::cout << file.filename().string() << std::endl;
  std::ifstream stream(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  // A copy of just its size on the heap: reading past its end is reading past an allocation.
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const std::filesystem::path& file : FilesOf(argv[i])) {
      Run(file);
      ++count;
    }
  }
  std::cout << count << " inputs" << std::endl;
  return count > 0 ? 0 : 1;  // a corpus that is not there is no success
}
