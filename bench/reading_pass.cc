#include "bench/reading_pass.h"

#include <array>
#include <cstring>
#include <string_view>

namespace kestrel::bench {

namespace {

enum Class : unsigned char { kSeparator, kEntry, kTotal, kList };

constexpr auto kClasses = [] {
  std::array<Class, 256> classes{};
  for (const char c : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSUVWXYZ,-. "))
    classes[static_cast<unsigned char>(c)] = kList;
  for (const char c : std::string_view("0123456789="))
    classes[static_cast<unsigned char>(c)] = kTotal;
  classes['T'] = kEntry;
  return classes;
}();

}  // namespace

std::int64_t classifyCharacters(const std::string& description) {
  std::int64_t entries = 0;
  Class before = kSeparator;
  for (const char c : description) {
    const Class now = kClasses[static_cast<unsigned char>(c)];
    if (before == kEntry && now == kTotal) ++entries;
    before = now;
  }
  return entries;
}

bool findNothing(const std::string& description) {
  return std::memchr(description.data(), '\1', description.size()) == nullptr;
}

std::int64_t readRecords(const std::vector<AudioStreamInfo>& streams) {
  std::int64_t sum = 0;
  for (const AudioStreamInfo& stream : streams) {
    std::int64_t number = 0;
    for (const wchar_t* c = stream.streamId.c_str(); *c >= L'0' && *c <= L'9'; ++c)
      number = number * 10 + (*c - L'0');
    sum += number + stream.channelCount + stream.group;
    sum += stream.formatKey1 ^ stream.formatKey2 ^ stream.formatKey3;
    if (stream.isPairCoded != 0) ++sum;
  }
  return sum;
}

std::int64_t touchRecords(const std::vector<AudioStreamInfo>& streams) {
  std::int64_t sum = 0;
  for (const AudioStreamInfo& stream : streams) sum += stream.channelCount;
  return sum;
}

}  // namespace kestrel::bench
