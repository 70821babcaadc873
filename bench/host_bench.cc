// The host's own time for one file: everything but the reading, which takes place in a process of
// its own. Each file of the test media is read once, before the clock runs.
//
// usage: kestrel_host_bench [options of Google Benchmark]
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "host/judging/inspect_file.h"
#include "host/reading/libmediainfo_reader.h"
#include "host/reporting/html_section.h"
#include "host/reporting/result_json.h"
#include "host/reporting/text_report.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

class ReadBefore : public MediaReader {
 public:
  explicit ReadBefore(ReadMedia media) : media_(std::move(media)) {}
  ReadMedia read(const fs::path& /*file*/) const override { return media_; }

 private:
  ReadMedia media_;
};

void line(benchmark::State& state, const fs::path& file, const InspectOptions& options) {
  for ([[maybe_unused]] auto step : state) {
    benchmark::DoNotOptimize(toJson(inspectFile(file, options)).dump());
  }
}

void section(benchmark::State& state, const fs::path& file, const InspectOptions& options) {
  const auto document = toJson(inspectFile(file, options));
  for ([[maybe_unused]] auto step : state) {
    benchmark::DoNotOptimize(htmlSection(document, 1, true));
  }
}

void addBenchmarks(const fs::path& file) {
  const LibmediainfoReader reader(KESTREL_PROGRAM, std::chrono::seconds(1));
  InspectOptions options;
  options.reader = std::make_shared<ReadBefore>(reader.read(file));
  const std::string name = file.filename().string();
  benchmark::RegisterBenchmark(("line/" + name).c_str(), line, file, options)
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark(("section/" + name).c_str(), section, file, options)
      ->Unit(benchmark::kMicrosecond);
}

}  // namespace
}  // namespace kestrel::host

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (const auto& entry : std::filesystem::directory_iterator(KESTREL_TEST_MEDIA)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".md" && extension != ".py") {
      kestrel::host::addBenchmarks(entry.path());
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
