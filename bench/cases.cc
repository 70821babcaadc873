#include "bench/cases.h"

namespace kestrel::bench {

namespace {

AudioStreamInfo stream(std::size_t number, std::int32_t channels) {
  AudioStreamInfo info;
  info.streamId = std::to_wstring(number);
  info.group = static_cast<std::int32_t>(number);
  info.channelCount = channels;
  info.formatKey1 = 48000;
  info.formatKey2 = 24;
  info.formatKey3 = 7;
  return info;
}

AudioStreamInfo programme(std::size_t pair, int part, std::int32_t channels) {
  AudioStreamInfo info = stream(pair, channels);
  info.streamId += L"-" + std::to_wstring(part);
  info.group = static_cast<std::int32_t>(pair * 10) + part;
  info.isPairCoded = 1;
  return info;
}

plain::ServiceMapInput input(std::string description, std::vector<AudioStreamInfo> streams) {
  plain::ServiceMapInput call;
  call.description = std::move(description);
  call.order = L"L R C LFE Ls Rs";
  call.streams = std::move(streams);
  call.surroundCheck = true;
  return call;
}

plain::ServiceMapInput surroundAndStereo(std::string description) {
  auto call = input(std::move(description), {stream(1, 6), stream(2, 2)});
  call.streams[0].trackLabels = L"L R C LFE Ls Rs";
  call.streams[1].trackLabels = L"L R";
  return call;
}

plain::ServiceMapInput sixteenMono() {
  std::string description = "T16=Mono";
  std::vector<AudioStreamInfo> streams{stream(1, 1)};
  for (std::size_t number = 2; number <= 16; ++number) {
    description += ",Mono";
    streams.push_back(stream(number, 1));
  }
  return input(description, streams);
}

plain::ServiceMapInput stereoAndEmcaPairs() {
  std::vector<AudioStreamInfo> streams;
  for (std::size_t pair = 0; pair < 4; ++pair) {
    streams.push_back(stream(4 * pair + 1, 2));
    streams.push_back(programme(4 * pair + 3, 1, 6));
  }
  return input("T16=Stereo,EMCA,Stereo,EMCA,Stereo,EMCA,Stereo,EMCA", streams);
}

plain::ServiceMapInput thirtyEntries() {
  std::string description;
  for (int total = 10; total < 39; ++total)
    description += "T" + std::to_string(total) + "=5.1 Mix,Stereo,Stereo;";
  return surroundAndStereo(description + "T8=5.1 Mix,Stereo");
}

}  // namespace

std::vector<Case> everydayCases() {
  auto misaligned = sixteenMono();
  misaligned.streams.back().isPairCoded = 1;
  misaligned.description = "T17" + misaligned.description.substr(3);
  return {{"8 tracks, 5.1 and stereo", surroundAndStereo("T8=5.1 Mix,Stereo")},
          {"16 mono tracks", sixteenMono()},
          {"4 stereo and EMCA pairs", stereoAndEmcaPairs()},
          {"30 entries, the last fits", thirtyEntries()},
          {"failing alignment", misaligned}};
}

plain::ServiceMapInput manyStreams(std::size_t streams) {
  auto call = input("T2=Stereo", {});
  for (std::size_t number = 1; number <= streams; ++number)
    call.streams.push_back(stream(number, number <= 2 ? 1 : 0));
  return call;
}

plain::ServiceMapInput longDescription(std::size_t length) {
  std::string description;
  while (description.size() < length) description += "T16=7.1 Mix,5.1 Mix,Stereo;";
  return surroundAndStereo(description + "T8=5.1 Mix,Stereo");
}

plain::ServiceMapInput streamsOfOneNumber(std::size_t streams) {
  auto call = input("T6=5.1 Mix", {});
  for (std::size_t i = 0; i < streams; ++i) {
    if (i > 0) call.description += ",5.1 Mix";
    call.streams.push_back(stream(1, 6));
  }
  call.streams.front().trackLabels = L"L R C LFE Ls" + std::wstring(10 * streams, L' ') + L"Rs";
  // An entry has at most 99 tracks: a stream without any takes the total back to 6.
  call.streams.push_back(stream(2, -6 * (static_cast<std::int32_t>(streams) - 1)));
  return call;
}

plain::ServiceMapInput unknownServices(std::size_t services) {
  auto call = input("T2=Stereo", {stream(1, 2)});
  for (std::size_t i = 0; i < services; ++i) call.description += ",Unknown";
  return call;
}

}  // namespace kestrel::bench
