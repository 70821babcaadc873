// getServiceMap of the built library beside its plain form and beside the floor: the same records
// built by hand from what is known beforehand.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "api/ebu_r123.h"
#include "api/kestrel.h"
#include "api/service_map.h"
#include "bench/cases.h"
#include "bench/measure.h"
#include "bench/naming_bench.h"
#include "bench/plain_c_request.h"
#include "bench/ratio_reporter.h"

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

void registerEverydayCases() {
  for (const Case& named : everydayCases()) {
    const auto input = std::make_shared<const plain::ServiceMapInput>(named.input);
    const auto add = [&](const char* form, auto function) {
      benchmark::RegisterBenchmark((named.name + "/" + form).c_str(),
                                   [=](benchmark::State& state) { function(state, *input); });
    };
    add("library", library);
    add("plain", plainForm);
    add("floor", floorOf);
    add("plain C", plainC);
  }
}

void streams(benchmark::State& state) {
  library(state, manyStreams(static_cast<std::size_t>(state.range(0))));
  state.SetComplexityN(state.range(0));
}

void description(benchmark::State& state) {
  const auto input = longDescription(static_cast<std::size_t>(state.range(0)));
  library(state, input);
  state.SetComplexityN(state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(input.description.size()));
}

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

BENCHMARK(streams)->RangeMultiplier(10)->Range(10, 100'000)->Complexity();
BENCHMARK(description)->RangeMultiplier(10)->Range(100, 1'000'000)->Complexity();

}  // namespace
}  // namespace kestrel::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
  kestrel::bench::registerEverydayCases();
  kestrel::bench::registerNamingCases();
  benchmark::RegisterBenchmark("R 123 of 16 tracks/library", kestrel::bench::ebuR123);
  benchmark::RegisterBenchmark("R 123 of 16 tracks/floor", kestrel::bench::ebuR123Floor);
  kestrel::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return EXIT_SUCCESS;
}
