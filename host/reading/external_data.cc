// Such a file is a tree of boxes: a length of 4 bytes, a type of 4, the content. A length of 1 says
// that 8 bytes of length follow, 0 that the box reaches to the end of the file.
#include "host/reading/external_data.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace kestrel::host {
namespace {

// The way to the data references of a track.
constexpr std::array<std::string_view, 6> kWay = {"moov", "trak", "mdia", "minf", "dinf", "dref"};
constexpr std::uint64_t kVersionAndCount = 8;  // before the entries of a "dref"
constexpr std::uint8_t kInThisFile = 1;        // the lowest of the flags of an entry

struct Box {
  std::array<std::uint8_t, 8> head{};
  std::uint64_t begin = 0;  // of the content
  std::uint64_t end = 0;

  bool is(std::string_view type) const {
    return std::equal(type.begin(), type.end(), head.begin() + 4, head.end());
  }
};

std::uint64_t bigEndian(std::span<const std::uint8_t> bytes) {
  std::uint64_t value = 0;
  for (const std::uint8_t byte : bytes) {
    value = value << 8 | byte;
  }
  return value;
}

// Nothing when no whole head is there, or when the length is none.
std::optional<Box> boxAt(const InputFile& file, std::uint64_t at, std::uint64_t end) {
  Box box{.begin = at + box.head.size(), .end = end};
  if (at >= end || file.read(box.head, at) < box.head.size()) {
    return std::nullopt;
  }
  std::uint64_t length = bigEndian(std::span(box.head).first<4>());
  if (length == 1) {
    std::array<std::uint8_t, 8> longLength{};
    if (file.read(longLength, box.begin) < longLength.size()) {
      return std::nullopt;
    }
    length = bigEndian(longLength);
    box.begin += longLength.size();
  }
  if (length != 0) {
    if (length < box.begin - at) {
      return std::nullopt;
    }
    box.end = std::min(end, at + std::min(length, end - at));
  }
  return box;
}

bool isElsewhere(const InputFile& file, const Box& entry) {
  std::array<std::uint8_t, 4> versionAndFlags{};
  return file.read(versionAndFlags, entry.begin) == versionAndFlags.size() &&
         (versionAndFlags.back() & kInThisFile) == 0;
}

// Looks at the boxes between two places, which are so many steps on the way.
bool anyElsewhere(const InputFile& file, std::uint64_t at, std::uint64_t end, std::size_t steps) {
  while (const auto box = boxAt(file, at, end)) {
    at = box->end;
    if (steps == kWay.size()) {
      if (isElsewhere(file, *box)) {
        return true;
      }
    } else if (steps == 1 && box->is("rmra")) {
      return true;
    } else if (box->is(kWay.at(steps))) {
      const std::uint64_t skipped = box->is("dref") ? kVersionAndCount : 0;
      if (anyElsewhere(file, box->begin + skipped, box->end, steps + 1)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

bool hasExternalData(const InputFile& file) { return anyElsewhere(file, 0, file.size(), 0); }

}  // namespace kestrel::host
