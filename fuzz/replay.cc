// Runs a harness over every file of its corpus, in the order of their names, without any fuzzer:
// what a fuzzer once found stays found in every build and by every compiler.
//
// usage: NAME_replay CORPUS_FOLDER
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "fuzz/harness.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

// False when the file cannot be read.
bool replay(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string input{std::istreambuf_iterator<char>(stream), {}};
  // Told before it runs: a harness that fails ends the process.
  std::cerr << file.filename().string() << std::endl;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  return stream.is_open() && !stream.bad();
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<fs::path> files = argc == 2 ? filesOf(argv[1]) : std::vector<fs::path>{};
  if (files.empty()) {
    std::cerr << "usage: replay CORPUS_FOLDER, with files in it\n";
    return 2;
  }
  const bool allRead = std::all_of(files.begin(), files.end(), replay);
  std::cout << files.size() << " inputs" << (allRead ? "\n" : ", the last cannot be read\n");
  return allRead ? 0 : 1;
}
