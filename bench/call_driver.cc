// Calls the library a given number of times and nothing else: the difference of two runs under an
// instruction counter is what that many calls cost, without the loading of the program.
//
// usage: kestrel_call_driver CASE CALLS        an everyday case of bench/cases.h; " (plain C)"
// after
//                                              its name asks for the plain C interface
//        kestrel_call_driver CASE CALLS SIZE   one of the cases that have a size
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "api/kestrel.h"
#include "api/service_map.h"
#include "bench/cases.h"
#include "bench/plain_c_request.h"

namespace kestrel::bench {
namespace {

constexpr std::string_view kPlainC = " (plain C)";

void callLibrary(const plain::ServiceMapInput& input, long calls) {
  for (long i = 0; i < calls; ++i) {
    std::vector<ServiceMapResult> results;
    getServiceMap(input.description.c_str(), input.order.c_str(), 0, input.streams.data(),
                  static_cast<std::int32_t>(input.streams.size()), &results,
                  input.reportAll ? 1 : 0, input.surroundCheck ? 1 : 0);
  }
}

void callPlainC(const plain::ServiceMapInput& input, long calls) {
  const PlainCRequest request(input);
  for (long i = 0; i < calls; ++i) {
    KestrelAnalysis* analysis = nullptr;
    kestrelAnalyse(request.get(), &analysis, nullptr, nullptr);
    kestrelFreeAnalysis(analysis);
  }
}

// The sentences of all findings.
void sayFindings(const plain::ServiceMapInput& input, long calls) {
  const PlainCRequest request(input);
  KestrelAnalysis* analysis = nullptr;
  kestrelAnalyse(request.get(), &analysis, nullptr, nullptr);
  std::int32_t count = 0;
  kestrelFindingCount(analysis, &count);
  for (long i = 0; i < calls * count; ++i) {
    std::array<char, 256> text{};
    std::size_t needed = 0;
    kestrelFindingText(analysis, static_cast<std::int32_t>(i % count), text.data(), text.size(),
                       &needed);
  }
  kestrelFreeAnalysis(analysis);
}

struct SizedCase {
  std::string_view name;
  plain::ServiceMapInput (*input)(std::size_t size);
  void (*call)(const plain::ServiceMapInput& input, long calls);
};

constexpr std::array<SizedCase, 6> kSizedCases = {{
    {"streams", manyStreams, callLibrary},
    {"description", longDescription, callLibrary},
    {"streams of one number", streamsOfOneNumber, callLibrary},
    {"streams of one number (plain C)", streamsOfOneNumber, callPlainC},
    {"unknown services", unknownServices, callPlainC},
    {"sentences", unknownServices, sayFindings},
}};

bool callSized(std::string_view name, long calls, std::size_t size) {
  const auto* const known = std::ranges::find(kSizedCases, name, &SizedCase::name);
  if (known == kSizedCases.end()) return false;
  known->call(known->input(size), calls);
  return true;
}

bool call(std::string_view name, long calls) {
  const bool inC = name.ends_with(kPlainC);
  if (inC) name.remove_suffix(kPlainC.size());
  for (const Case& known : everydayCases()) {
    if (known.name != name) continue;
    (inC ? callPlainC : callLibrary)(known.input, calls);
    return true;
  }
  return false;
}

}  // namespace
}  // namespace kestrel::bench

int main(int argc, char** argv) {
  using namespace kestrel::bench;
  if (argc == 3 && call(argv[1], std::atol(argv[2]))) return EXIT_SUCCESS;
  if (argc == 4 && callSized(argv[1], std::atol(argv[2]), std::strtoul(argv[3], nullptr, 10)))
    return EXIT_SUCCESS;
  std::cerr << "usage: kestrel_call_driver CASE CALLS [SIZE]\n";
  return EXIT_FAILURE;
}
