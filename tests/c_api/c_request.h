// Requests of the plain C interface that are in order, for tests to send or to spoil.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "api/kestrel.h"

namespace kestrel::test {

inline constexpr char kSixLabels[] = "L R C LFE Ls Rs";

inline KestrelStream stream(const char* id, std::int32_t channelCount, const char* labels = "") {
  KestrelStream made{};
  made.structSize = sizeof made;
  made.streamId = id;
  made.trackLabels = labels;
  made.channelCount = channelCount;
  return made;
}

inline KestrelStream pairCoded(const char* id, std::int32_t channelCount, std::int32_t group = 5) {
  KestrelStream made = stream(id, channelCount);
  made.group = group;
  made.isPairCoded = 1;
  return made;
}

inline KestrelStream sharedPair(const char* id, std::int32_t channelCount, std::int32_t group) {
  KestrelStream made = pairCoded(id, channelCount, group);
  made.isPairShared = 1;
  return made;
}

/// A request with surroundCheck set. It points to the text and to the streams.
inline KestrelRequest request(const char* description, const std::vector<KestrelStream>& streams) {
  KestrelRequest made{};
  made.structSize = sizeof made;
  made.layoutDescription = description;
  made.surroundChannelOrder = kSixLabels;
  made.streams = streams.data();
  made.streamCount = static_cast<std::int32_t>(streams.size());
  made.streamStride = sizeof(KestrelStream);
  made.surroundCheck = 1;
  return made;
}

struct AnalysisFreer {
  void operator()(KestrelAnalysis* analysis) const { kestrelFreeAnalysis(analysis); }
};
using Analysis = std::unique_ptr<KestrelAnalysis, AnalysisFreer>;

}  // namespace kestrel::test
