// Calls of getServiceMap() as rows: the arguments, the vector of the host and what became of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"
#include "tests/robustness/call_row.h"

namespace kestrel::test {

AudioStreamInfo streamOf(const std::wstring& id, std::int32_t channelCount,
                         const std::wstring& labels = L"");

/// The arguments of a call that carries a stereo service, to be spoiled one at a time.
struct ServiceMapArguments {
  std::optional<std::string> description = "T2=Stereo";
  std::optional<std::wstring> order = L"L R C LFE Ls Rs";
  std::int32_t allowTwoTrackStreams = 0;
  std::vector<AudioStreamInfo> streams = {streamOf(L"1", 2)};
  bool withStreams = true;                  // else NULL
  std::optional<std::int32_t> streamCount;  // without it, that of the streams
  std::uint8_t reportAll = 0;
  std::uint8_t surroundCheck = 0;

  std::int32_t count() const;
};

/// What the vector holds, record for record: "[2 r-- '' 1/0/0/0 1/0/0/1]" is a service of two
/// tracks, reported, neither pair-coded nor requested, without a label; a slot is told as track
/// number / group / source group / index in the group.
std::string inWords(const std::vector<ServiceMapResult>& records);
std::string inWords(const ServiceMapResult& record);
std::string labelInWords(const std::wstring& label);

/// The answer of the plain form.
Answer plainAnswer(const ServiceMapArguments& arguments);

inline const Answer kUntouched{"returned 0", ""};
inline const Answer kEmptied{"returned 0", "no records"};
inline const Answer kStereoFound{"returned 1", "[2 r-- '' 1/0/0/0 1/0/0/1]"};

CallRow serviceMapRow(const std::string& parameter, const std::string& value,
                      const Answer& expected, const ServiceMapArguments& arguments);

}  // namespace kestrel::test
