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

// The floors. What a call gives is worked out by the compiler, as in the library, but where it
// stands is not known: so the floor of a name is a copy of it with its known length, that of a
// number a read from a table.
void copyName(const char* text, std::size_t length, char* buffer) {
  std::memcpy(buffer, text, length + 1);
}

void readNumber(const char* text, std::size_t /*length*/, char* /*buffer*/) {
  benchmark::DoNotOptimize(text[0]);
}

// Whoever looks a name up must find the end of the text and see that each byte is the right one.
void compareName(const char* text, std::size_t length, char* buffer) {
  benchmark::DoNotOptimize(std::strlen(text) == length && std::memcmp(text, buffer, length) == 0);
}

// Whoever looks for a code in a text must ask of each character whether it is a digit and of the
// one behind a digit whether it is a letter.
void scanText(const char* text, std::size_t /*length*/, char* /*buffer*/) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isLetter = [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; };
  int codes = 0;
  for (; *text != '\0'; ++text)
    if (isDigit(text[0]) && isLetter(text[1])) ++codes;
  benchmark::DoNotOptimize(codes);
}

using Floor = void (*)(const char* text, std::size_t length, char* buffer);

template <class Call>
void add(const std::string& name, const char* text, Floor floor, const Call& call) {
  benchmark::RegisterBenchmark((name + "/library").c_str(), [=](benchmark::State& state) {
    measure(state, [&, buffer = Buffer{}]() mutable {
      call(unknownToTheCompiler(text), buffer.data());
      benchmark::DoNotOptimize(buffer);
    });
  });
  benchmark::RegisterBenchmark((name + "/floor").c_str(), [=](benchmark::State& state) {
    Buffer buffer{};
    std::strcpy(buffer.data(), text);
    measure(state, [&, known = floor, length = std::strlen(text)]() {
      known(unknownToTheCompiler(text), length, buffer.data());
      benchmark::DoNotOptimize(buffer);
    });
  });
}

}  // namespace

void registerNamingCases() {
  add("item name", "2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)", copyName,
      [](const char*, char* buffer) { getServiceMapItemName(22, buffer); });
  add("name length", "Stereo", readNumber,
      [](const char*, char*) { benchmark::DoNotOptimize(getServiceMapItemNameLength(0)); });
  add("row of item", "16 Mono", readNumber,
      [](const char*, char*) { benchmark::DoNotOptimize(getServiceMapItemRow(39)); });
  add("name at position", "Mono 8", copyName,
      [](const char*, char* buffer) { getStreamTypeName(40, 9, buffer); });
  add("type symbol", "5.1 Mix", copyName,
      [](const char*, char*) { benchmark::DoNotOptimize(getStreamTypeSymbol(k51Mix)); });
  add("type name", "5.1 Mix", copyName,
      [](const char*, char* buffer) { getStreamTypeSymbolic(k51Mix, buffer); });
  add("type from name", "Dolby E", compareName,
      [](const char* text, char*) { benchmark::DoNotOptimize(streamTypeFromStr(text)); });
  add("item from types, short", "Stereo,5.1 Mix", compareName,
      [](const char* text, char*) { benchmark::DoNotOptimize(serviceMapItemFromStr(text)); });
  add("item from types, long",
      "Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono,Mono",
      compareName,
      [](const char* text, char*) { benchmark::DoNotOptimize(serviceMapItemFromStr(text)); });
  add("layout code", "12h", scanText,
      [](const char* text, char*) { benchmark::DoNotOptimize(GetServiceMapItemByAS11R123(text)); });
  add("layout code in a text", "EBU R 123: 16f", scanText,
      [](const char* text, char*) { benchmark::DoNotOptimize(GetServiceMapItemByAS11R123(text)); });
}

}  // namespace kestrel::bench
