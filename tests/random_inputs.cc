// A random call is made backwards: first the services, then streams that carry them, then the
// description with the total that these streams make. Most calls therefore find their services, and
// one changed thing turns them into near misses.
#include "tests/random_inputs.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel::test {
namespace {

constexpr std::size_t kLongestDescription = 120;

// The bytes of a list, the bytes beside the ends of its ranges, and some far away.
constexpr std::string_view kBytes =
    "T=,-. 157ZzAa0234689;:+/@[`{EMCA\t\n\v*<>\"\x01\x7F\x80\xA0\xC3\xE9\xFF";

constexpr std::array<std::string_view, 28> kElements = {
    "Mono",  "Stereo",  "5.1 Mix",  "7.1 Mix",  "EMCA",    "Mono",      "Stereo",
    "-Mono", "-Stereo", "-EMCA",    "-5.1 Mix", "--EMCA",  "-7.-1 Mix", "St-ereo",
    "Mono-", " Mono",   "Mono ",    "stereo",   "EMCa",    "Dolby E",   "",
    "-",     "5.1 mix", "5.1  Mix", "51 Mix",   "-- Mono", "T",         "7.1 Mix.",
};

constexpr std::array<std::string_view, 14> kTotals = {
    "2", "4", "8", "6", "08", "00", "0", "1", "16", "99", "", "123", "x", "1 ",
};

constexpr std::array<std::string_view, 12> kSeparators = {
    ";", ";", ";", " ", ",", "", "; ", "\n", "T", "3", "\xC3\xA9", "|",
};

constexpr std::array<std::string_view, 8> kServices = {
    "Mono", "Mono", "Stereo", "Stereo", "5.1 Mix", "5.1 Mix", "7.1 Mix", "EMCA",
};

constexpr std::array<std::string_view, 5> kUnknownServices = {"Dolby E", "stereo", " Mono", "Mix",
                                                              ""};

constexpr std::array<std::wstring_view, 6> kSurroundLabels = {L"L",   L"R",  L"C",
                                                              L"LFE", L"Ls", L"Rs"};

constexpr std::array<std::wstring_view, 8> kWrongLabels = {L"l",  L"LS",   L"X",      L"Lfe",
                                                           L"L,", L"L\tR", L"\u00C4", L"L"};

constexpr std::array<std::wstring_view, 4> kOrders = {L"L R C LFE Ls Rs", L"", L" ",
                                                      L"L R Ls Rs C LFE"};

constexpr std::array<std::uint8_t, 6> kFlags = {0, 1, 2, 3, 128, 255};

std::string randomList(Random& random) {
  std::string list;
  const std::size_t count = 1 + random.below(4);
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) list += random.oneIn(10) ? ",," : ",";
    list += random.oneOf(kElements);
  }
  if (random.oneIn(8)) list += ",";
  return list;
}

std::string randomEntry(Random& random) {
  std::string entry = random.oneIn(16) ? "t" : "T";
  entry += random.oneOf(kTotals);
  if (!random.oneIn(10)) entry += random.oneIn(12) ? " =" : "=";
  return entry + randomList(random);
}

void changeBytes(Random& random, std::string& text) {
  while (!text.empty() && random.oneIn(3)) {
    text[random.below(text.size())] = kBytes[random.below(kBytes.size())];
  }
}

// The tracks that the named service takes, for the generator's own planning.
std::size_t widthOf(std::string_view service) {
  if (service == "Mono") return 1;
  if (service == "Stereo") return 2;
  return service == "5.1 Mix" ? 6 : 8;
}

// Makes the streams of a file from front to back. Ordinary tracks are only planned, each with its
// label, until a pair-coded service or the end of the file makes them into streams: streams may cut
// through services.
class InputBuilder {
 public:
  explicit InputBuilder(Random& random) : random_(random), nextNumber_(random.between(0, 20)) {
    sameOrdinaryGroup_ = random.oneIn(2);
    shortCuts_ = random.oneIn(3);
    defects_ = random.oneIn(2);
  }

  plain::ServiceMapInput build() {
    addServices();
    makeOrdinaryStreams();
    addStreamsWithoutTracks();
    breakFormat();
    input_.order = random_.oneOf(kOrders);
    input_.reportAll = random_.oneIn(2);
    input_.surroundCheck = !random_.oneIn(3);
    input_.description = describe();
    return std::move(input_);
  }

 private:
  void addServices() {
    const std::size_t count = 1 + random_.below(random_.oneIn(3) ? 7 : 3);
    for (std::size_t i = 0; i < count; ++i) {
      if (random_.oneIn(25)) {
        addElement(random_.oneOf(kUnknownServices));
        continue;
      }
      const std::string_view service = random_.oneOf(kServices);
      addElement(service);
      if (service == "EMCA") {
        makeOrdinaryStreams();
        makeEmca();
      } else {
        planOrdinary(service);
      }
    }
  }

  void addElement(std::string_view name) {
    if (!list_.empty()) list_ += ",";
    if (random_.oneIn(6)) list_ += "-";
    list_ += name;
  }

  void planOrdinary(std::string_view service) {
    std::vector<std::wstring> labels(widthOf(service), L"M");
    if (service == "5.1 Mix") labels = surroundLabels();
    planned_.insert(planned_.end(), labels.begin(), labels.end());
  }

  std::vector<std::wstring> surroundLabels() {
    std::vector<std::wstring> labels(kSurroundLabels.begin(), kSurroundLabels.end());
    if (random_.oneIn(2)) shuffle(labels);
    if (defects_ && random_.oneIn(2)) {
      labels[random_.below(labels.size())] = random_.oneOf(kWrongLabels);
    }
    return labels;
  }

  void shuffle(std::vector<std::wstring>& labels) {
    for (std::size_t i = labels.size(); i > 1; --i) {
      std::swap(labels[i - 1], labels[random_.below(i)]);
    }
  }

  void makeOrdinaryStreams() {
    for (std::size_t first = 0; first < planned_.size();) {
      const std::size_t width = cut(planned_.size() - first);
      AudioStreamInfo& stream = newStream(static_cast<std::int32_t>(width));
      stream.streamId = decorated(std::to_wstring(nextOrdinaryNumber()));
      stream.trackLabels = joinLabels(first, width);
      stream.group = ordinaryGroup();
      first += width;
    }
    planned_.clear();
  }

  std::size_t cut(std::size_t rest) {
    constexpr std::array<std::size_t, 5> kCuts = {6, 2, 1, 8, 6};
    const std::size_t width = shortCuts_ ? 1 + random_.below(2) : random_.oneOf(kCuts);
    return std::min(width, rest);
  }

  AudioStreamInfo& newStream(std::int32_t channelCount) {
    AudioStreamInfo stream;
    stream.channelCount = channelCount;
    stream.formatKey1 = 48000;
    stream.formatKey2 = 24;
    stream.formatKey3 = 1;
    return input_.streams.emplace_back(stream);
  }

  std::int32_t nextOrdinaryNumber() {
    if (!random_.oneIn(12)) ++nextNumber_;
    return nextNumber_;
  }

  std::wstring decorated(std::wstring number) {
    switch (random_.below(16)) {
      case 0:
        return L" \t\n\v\f\r" + number;
      case 1:
        return L"+" + number;
      case 2:
        return number + L"-x";
      case 3:
        return L"00" + number + L".5";
      case 4:
        return L"-" + number;
      default:
        return number;
    }
  }

  std::wstring joinLabels(std::size_t first, std::size_t width) {
    if (defects_ && random_.oneIn(6)) --width;
    std::wstring text = defects_ && random_.oneIn(6) ? L"  " : L"";
    for (std::size_t i = 0; i < width; ++i) {
      if (i > 0) text += random_.oneIn(10) ? L"  " : L" ";
      text += planned_[first + i];
    }
    return defects_ && random_.oneIn(8) ? text + L" L" : text;
  }

  std::int32_t ordinaryGroup() {
    // The group of the last pair-coded stream, which an EMCA service then takes with it.
    if (!input_.streams.empty() && random_.oneIn(12)) return emcaGroup_;
    return sameOrdinaryGroup_ ? 1 : nextGroup_++;
  }

  void makeEmca() {
    emcaGroup_ = nextGroup_++;
    switch (random_.below(6)) {
      case 0:
        return makeSharedPair();
      case 1:
        return makeProgrammes({emcaGroup_, emcaGroup_});
      case 2:
        return makeProgrammes({emcaGroup_, nextGroup_++});
      case 3:
        return makeProgrammes({emcaGroup_, nextGroup_++, emcaGroup_});
      default:
        return makeOnePair();
    }
  }

  AudioStreamInfo& newPairCodedStream(std::int32_t group) {
    AudioStreamInfo& stream = newStream(random_.oneIn(3) ? random_.between(1, 9) : 2);
    stream.isPairCoded = 1;
    stream.group = group;
    if (random_.oneIn(6)) stream.formatKey3 = random_.between(1, 3);
    return stream;
  }

  void makeOnePair() {
    AudioStreamInfo& stream = newPairCodedStream(emcaGroup_);
    stream.streamId = std::to_wstring(++nextNumber_);
    if (random_.oneIn(8)) stream.channelCount = random_.between(30, 40);
  }

  // Programmes of one pair: "5-1", "5-2" and so on.
  void makeProgrammes(const std::vector<std::int32_t>& groups) {
    std::int64_t number = ++nextNumber_;
    for (std::size_t i = 0; i < groups.size(); ++i) {
      newPairCodedStream(groups[i]).streamId =
          std::to_wstring(number) + L"-" + std::to_wstring(i + 1);
      // The same number in 32 bits.
      if (random_.oneIn(12)) number += std::int64_t{1} << 32;
    }
  }

  void makeSharedPair() {
    const std::int32_t count = random_.between(1, 3);
    for (std::int32_t i = 0; i < count; ++i) {
      AudioStreamInfo& stream = newPairCodedStream(i == 0 ? emcaGroup_ : nextGroup_++);
      stream.streamId = std::to_wstring(++nextNumber_);
      stream.isPairShared = random_.oneIn(4) ? 2 : 1;
    }
  }

  void addStreamsWithoutTracks() {
    if (!random_.oneIn(8)) return;
    AudioStreamInfo stream = newStream(-random_.between(0, 3));
    input_.streams.pop_back();
    stream.streamId = std::to_wstring(random_.between(0, nextNumber_));
    stream.trackLabels = L"L R C LFE Ls Rs";
    const auto place = static_cast<std::ptrdiff_t>(random_.below(input_.streams.size() + 1));
    input_.streams.insert(input_.streams.begin() + place, stream);
  }

  void breakFormat() {
    if (input_.streams.empty() || !random_.oneIn(6)) return;
    AudioStreamInfo& stream = input_.streams[random_.below(input_.streams.size())];
    constexpr std::array<std::int32_t AudioStreamInfo::*, 3> kKeys = {
        &AudioStreamInfo::formatKey1, &AudioStreamInfo::formatKey2, &AudioStreamInfo::formatKey3};
    stream.*random_.oneOf(kKeys) = random_.between(-1, 1);
  }

  std::string describe() {
    const auto count = static_cast<std::int32_t>(input_.streams.size());
    const std::string total = std::to_string(plain::fileTrackCount(input_.streams.data(), count));
    const bool padded = total.size() == 1 && random_.oneIn(4);
    std::string text = random_.oneIn(4) ? "T97=Stereo;T3=Mono,Mono,Mono;" : "";
    text += "T" + std::string(padded ? "0" : "") + total + "=" + list_;
    if (random_.oneIn(6)) text += ",";
    if (random_.oneIn(4)) text += ";T" + total + "=Stereo";
    return text;
  }

  Random& random_;
  plain::ServiceMapInput input_;
  std::string list_;
  std::vector<std::wstring> planned_;
  std::int32_t nextNumber_;
  std::int32_t nextGroup_ = 2;
  std::int32_t emcaGroup_ = 0;
  bool sameOrdinaryGroup_;
  bool shortCuts_;
  bool defects_;
};

void changeStreamList(Random& random, std::vector<AudioStreamInfo>& streams) {
  const std::size_t a = random.below(streams.size());
  const std::size_t b = random.below(streams.size());
  switch (random.below(4)) {
    case 0:
      std::swap(streams[a], streams[b]);
      break;
    case 1:
      streams.erase(streams.begin() + static_cast<std::ptrdiff_t>(a));
      break;
    case 2:
      streams.push_back(AudioStreamInfo(streams[a]));
      break;
    default:
      streams[a].streamId = streams[b].streamId;
      break;
  }
}

void changeStream(Random& random, AudioStreamInfo& stream, const AudioStreamInfo& other) {
  constexpr std::array<std::wstring_view, 8> kIds = {
      L"",           L"-",  L"x1",     L"99999999999999999999", L"-99999999999999999999",
      L"4294967297", L"-1", L"\u00A01"};
  switch (random.below(7)) {
    case 0:
      stream.channelCount += random.between(-2, 2);
      break;
    case 1:
    case 2:
      stream.isPairCoded = random.oneOf(kFlags);
      break;
    case 3:
      stream.isPairShared = random.oneOf(kFlags);
      break;
    case 4:
      stream.group = other.group;
      break;
    case 5:
      stream.trackLabels = other.trackLabels;
      break;
    default:
      stream.streamId = random.oneOf(kIds);
      break;
  }
}

void changeOneThing(Random& random, plain::ServiceMapInput& input) {
  if (input.streams.empty() || random.oneIn(8)) {
    input.description = randomDescription(random);
  } else if (random.oneIn(8)) {
    changeBytes(random, input.description);
  } else if (random.oneIn(4)) {
    changeStreamList(random, input.streams);
  } else {
    // In two statements, because the order in which arguments are worked out is open.
    AudioStreamInfo& stream = input.streams[random.below(input.streams.size())];
    changeStream(random, stream, random.oneOf(input.streams));
  }
}

}  // namespace

std::string randomDescription(Random& random) {
  std::string text;
  const std::size_t count = random.below(5);
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += random.oneOf(kSeparators);
    text += randomEntry(random);
  }
  if (random.oneIn(4)) changeBytes(random, text);
  return text.substr(0, kLongestDescription);
}

plain::ServiceMapInput randomServiceMapInput(Random& random) {
  plain::ServiceMapInput input = InputBuilder(random).build();
  if (random.oneIn(3)) changeOneThing(random, input);
  return input;
}

}  // namespace kestrel::test
