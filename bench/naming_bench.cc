#include "bench/naming_bench.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <string>

#include "api/catalogue.h"
#include "api/layout_code.h"
#include "api/stream_naming.h"
#include "bench/measure.h"

namespace kestrel::bench {
namespace {

using Buffer = std::array<char, 128>;

// The name as the compiler cannot know it.
const char* unknownToTheCompiler(const char* text) {
  benchmark::DoNotOptimize(text);
  return text;
}

template <class Call>
void add(const std::string& name, const char* text, const Call& call) {
  benchmark::RegisterBenchmark((name + "/library").c_str(), [=](benchmark::State& state) {
    measure(state, [&, buffer = Buffer{}]() mutable {
      call(unknownToTheCompiler(text), buffer.data());
      benchmark::DoNotOptimize(buffer);
    });
  });
  benchmark::RegisterBenchmark((name + "/floor").c_str(), [=](benchmark::State& state) {
    measure(state, [&, buffer = Buffer{}]() mutable {
      std::strcpy(buffer.data(), unknownToTheCompiler(text));
      benchmark::DoNotOptimize(buffer);
    });
  });
}

}  // namespace

void registerNamingCases() {
  add("item name", "2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)",
      [](const char*, char* buffer) { getServiceMapItemName(22, buffer); });
  add("name length", "Stereo",
      [](const char*, char*) { benchmark::DoNotOptimize(getServiceMapItemNameLength(0)); });
  add("row of item", "16 Mono",
      [](const char*, char*) { benchmark::DoNotOptimize(getServiceMapItemRow(39)); });
  add("name at position", "Mono 8",
      [](const char*, char* buffer) { getStreamTypeName(40, 9, buffer); });
  add("type symbol", "5.1 Mix",
      [](const char*, char*) { benchmark::DoNotOptimize(getStreamTypeSymbol(k51Mix)); });
  add("type name", "5.1 Mix",
      [](const char*, char* buffer) { getStreamTypeSymbolic(k51Mix, buffer); });
  add("type from name", "Dolby E",
      [](const char* text, char*) { benchmark::DoNotOptimize(streamTypeFromStr(text)); });
  add("item from types, short", "Stereo,5.1 Mix",
      [](const char* text, char*) { benchmark::DoNotOptimize(serviceMapItemFromStr(text)); });
  add("item from types, long",
      "Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono",
      [](const char* text, char*) { benchmark::DoNotOptimize(serviceMapItemFromStr(text)); });
  add("layout code", "12h",
      [](const char* text, char*) { benchmark::DoNotOptimize(GetServiceMapItemByAS11R123(text)); });
  add("layout code in a text", "EBU R 123: 16f",
      [](const char* text, char*) { benchmark::DoNotOptimize(GetServiceMapItemByAS11R123(text)); });
}

}  // namespace kestrel::bench
