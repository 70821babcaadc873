// The service map in its plain, slow form, for tests to compare the library with: every track of
// the file stands in a list of its own, and every question about a stream is a search through all
// streams. Meant for streams of few channels.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"

namespace kestrel::plain {

/// What a call does to the vector of the host.
enum class Outcome {
  kUntouched,  ///< returns 0, the vector is as it was
  kEmptied,    ///< returns 0, the vector holds nothing
  kFilled,     ///< returns 1, the vector holds the results
};

struct PlainResult {
  Outcome outcome = Outcome::kUntouched;
  std::vector<ServiceMapResult> results;
};

/// The arguments of one call that decide its result.
struct ServiceMapInput {
  std::string description;
  std::wstring order;
  std::vector<AudioStreamInfo> streams;
  bool reportAll = false;
  bool surroundCheck = false;
};

/// The file's track total, by which an entry of the layout description is chosen.
std::uint32_t fileTrackCount(const AudioStreamInfo* streams, std::int32_t count);

PlainResult serviceMap(const std::string& description, const std::wstring& order,
                       const AudioStreamInfo* streams, std::int32_t streamCount, bool reportAll,
                       bool surroundCheck);

PlainResult serviceMap(const ServiceMapInput& input);

/// True when both lists hold equal records; every field is compared, unused slots too.
bool sameResults(const std::vector<ServiceMapResult>& left,
                 const std::vector<ServiceMapResult>& right);

/// True when both calls ended alike and left equal records.
bool sameResults(const PlainResult& left, const PlainResult& right);

std::ostream& operator<<(std::ostream& out, Outcome outcome);
std::ostream& operator<<(std::ostream& out, const PlainResult& result);
std::ostream& operator<<(std::ostream& out, const ServiceMapInput& input);

}  // namespace kestrel::plain
