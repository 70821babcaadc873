// getServiceMap of the built library beside its plain form and beside the floor: the same records
// built by hand from what is known beforehand.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "api/ebu_r123.h"
#include "api/kestrel.h"
#include "api/service_map.h"
#include "bench/cases.h"
#include "bench/libavutil_layouts.h"
#include "bench/measure.h"
#include "bench/naming_bench.h"
#include "bench/plain_c_request.h"
#include "bench/ratio_reporter.h"
#include "bench/reading_pass.h"

namespace kestrel::bench {
namespace {

std::int32_t call(const plain::ServiceMapInput& input, std::vector<ServiceMapResult>& results) {
  return getServiceMap(input.description.c_str(), input.order.c_str(), 0, input.streams.data(),
                       static_cast<std::int32_t>(input.streams.size()), &results,
                       input.reportAll ? 1 : 0, input.surroundCheck ? 1 : 0);
}

void library(benchmark::State& state, const plain::ServiceMapInput& input) {
  measure(state, [&] {
    std::vector<ServiceMapResult> results;
    benchmark::DoNotOptimize(call(input, results));
    benchmark::DoNotOptimize(results.data());
  });
}

void plainForm(benchmark::State& state, const plain::ServiceMapInput& input) {
  measure(state, [&] {
    const auto result = plain::serviceMap(input.description, input.order, input.streams.data(),
                                          static_cast<std::int32_t>(input.streams.size()),
                                          input.reportAll, input.surroundCheck);
    benchmark::DoNotOptimize(result.results.data());
  });
}

void floorOf(benchmark::State& state, const plain::ServiceMapInput& input) {
  std::vector<ServiceMapResult> known;
  call(input, known);
  measure(state, [&] {
    std::vector<ServiceMapResult> results;
    results.reserve(known.size());
    for (const ServiceMapResult& record : known) results.push_back(record);
    benchmark::DoNotOptimize(results.data());
  });
}

// The plain C interface on the same input.
void plainC(benchmark::State& state, const plain::ServiceMapInput& input) {
  const PlainCRequest request(input);
  measure(state, [&] {
    KestrelAnalysis* analysis = nullptr;
    benchmark::DoNotOptimize(kestrelAnalyse(request.get(), &analysis, nullptr, nullptr));
    kestrelFreeAnalysis(analysis);
  });
}

template <class Function>
void addCase(const std::string& name, const Function& function,
             const std::shared_ptr<const plain::ServiceMapInput>& input) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [=](benchmark::State& state) { function(state, *input); });
}

void registerEverydayCases() {
  for (const Case& named : everydayCases()) {
    const auto input = std::make_shared<const plain::ServiceMapInput>(named.input);
    const auto add = [&](const char* form, auto function) {
      addCase(named.name + "/" + form, function, input);
    };
    add("library", library);
    add("plain", plainForm);
    add("floor", floorOf);
    add("plain C", plainC);
  }
}

// One of the functions of reading_pass.h, over a member of the input.
template <class Pass, class Text>
void registerPass(const std::string& name, Pass pass, Text plain::ServiceMapInput::*text,
                  const std::shared_ptr<const plain::ServiceMapInput>& input) {
  addCase(
      name,
      [=](benchmark::State& state, const plain::ServiceMapInput& read) {
        measure(state, [&] { benchmark::DoNotOptimize(pass(read.*text)); });
      },
      input);
}

void registerLongCases() {
  const auto many = std::make_shared<const plain::ServiceMapInput>(manyStreams(100'000));
  addCase("1,000 streams/library", library,
          std::make_shared<const plain::ServiceMapInput>(manyStreams(1'000)));
  addCase("100,000 streams/library", library, many);
  registerPass("100,000 streams/reading pass", readRecords, &plain::ServiceMapInput::streams, many);
  registerPass("100,000 streams/touching pass", touchRecords, &plain::ServiceMapInput::streams,
               many);
  const auto text = std::make_shared<const plain::ServiceMapInput>(longDescription(1'000'000));
  addCase("10 kB description/library", library,
          std::make_shared<const plain::ServiceMapInput>(longDescription(10'000)));
  addCase("1 MB description/library", library, text);
  registerPass("1 MB description/reading pass", classifyCharacters,
               &plain::ServiceMapInput::description, text);
  registerPass("1 MB description/memchr", findNothing, &plain::ServiceMapInput::description, text);
}

#ifdef KESTREL_HAS_LIBAVUTIL
void libavutil(benchmark::State& state) {
  measure(state, [] { benchmark::DoNotOptimize(readCompareAndDescribeLayouts()); });
}
#endif

// The EBU R 123 analysis beside the block that it hands out.
void ebuR123(benchmark::State& state) {
  const auto input = everydayCases().at(1).input;
  measure(state, [&] {
    ServiceMapResult* block = nullptr;
    std::int32_t count = 0;
    std::int32_t item = 0;
    getServiceMapEbuR123(input.description.c_str(), 0, input.streams.data(),
                         static_cast<std::int32_t>(input.streams.size()), &block, &count, &item);
    std::free(block);
  });
}

void ebuR123Floor(benchmark::State& state) {
  measure(state, [&] {
    void* block = std::malloc(1);
    benchmark::DoNotOptimize(block);
    std::free(block);
  });
}

}  // namespace
}  // namespace kestrel::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
  kestrel::bench::registerEverydayCases();
  kestrel::bench::registerLongCases();
  kestrel::bench::registerNamingCases();
#ifdef KESTREL_HAS_LIBAVUTIL
  benchmark::RegisterBenchmark("8 tracks, 5.1 and stereo/libavutil", kestrel::bench::libavutil);
#endif
  benchmark::RegisterBenchmark("R 123 of 16 tracks/library", kestrel::bench::ebuR123);
  benchmark::RegisterBenchmark("R 123 of 16 tracks/floor", kestrel::bench::ebuR123Floor);
  kestrel::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return EXIT_SUCCESS;
}
