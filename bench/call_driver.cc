// Calls the library a given number of times and nothing else: the difference of two runs under an
// instruction counter is what that many calls cost, without the loading of the program.
//
// usage: kestrel_call_driver CASE CALLS      a case of bench/cases.h, with " (plain C)" behind it
//                                            for the same by the plain C interface
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
  if (argc == 3 && kestrel::bench::call(argv[1], std::atol(argv[2]))) return EXIT_SUCCESS;
  std::cerr << "usage: kestrel_call_driver CASE CALLS\n";
  return EXIT_FAILURE;
}
