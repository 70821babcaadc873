// The analysis runs in the order of its functions: count the file's tracks, parse, list the slots
// that the services expect, list the file's tracks, line the two lists up, hand the tracks out, and
// make the records. Each list is built in full before the next step reads it.
#include "tests/plain/plain_service_map.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <set>

#include "tests/plain/plain_layout_description.h"

namespace kestrel::plain {
namespace {

struct FileTrack {
  std::int64_t trackNumber = 0;
  std::int32_t group = 0;
  std::int32_t sourceGroup = 0;
  std::int32_t indexInGroup = 0;
  std::uint8_t isPairCoded = 0;
  std::uint8_t isPairShared = 0;
  std::int32_t streamGroup = 0;
};

struct ExpectedTrack {
  std::int32_t trackNumber = 0;
  bool isEmca = false;
};

struct ServiceFinding {
  PlainExpectedService service;
  std::vector<FileTrack> fileTracks;
};

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Builds the number on its own side of zero, because the negative side reaches one further.
std::int64_t appendDigit(std::int64_t number, std::int64_t digit, bool negative) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (negative) {
    if (number < (Limits::min() + digit) / 10) return Limits::min();
    return number * 10 - digit;
  }
  if (number > (Limits::max() - digit) / 10) return Limits::max();
  return number * 10 + digit;
}

std::int64_t leadingNumber(const std::wstring& text) {
  std::size_t i = std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size());
  const bool negative = i < text.size() && text[i] == L'-';
  if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) ++i;
  std::int64_t number = 0;
  for (; i < text.size() && isDigit(text[i]); ++i) {
    number = appendDigit(number, text[i] - L'0', negative);
  }
  return number;
}

std::int64_t trackNumberOf(const AudioStreamInfo& stream) { return leadingNumber(stream.streamId); }

bool hasHyphen(const AudioStreamInfo& stream) {
  return stream.streamId.find(L'-') != std::wstring::npos;
}

std::vector<std::wstring> splitAtBlanks(const std::wstring& text) {
  std::vector<std::wstring> tokens;
  std::wstring token;
  for (const wchar_t c : text + L" ") {
    if (c != L' ') {
      token += c;
    } else if (!token.empty()) {
      tokens.push_back(token);
      token.clear();
    }
  }
  return tokens;
}

std::wstring labelAt(const std::wstring& text, std::int32_t index) {
  const std::vector<std::wstring> tokens = splitAtBlanks(text);
  if (index < 0 || static_cast<std::size_t>(index) >= tokens.size()) return {};
  return tokens[static_cast<std::size_t>(index)];
}

bool checkSurroundLabels(const std::wstring& text) {
  static const std::set<std::wstring> kLabels = {L"L", L"R", L"C", L"LFE", L"Ls", L"Rs"};
  const std::vector<std::wstring> tokens = splitAtBlanks(text);
  const std::set<std::wstring> distinct(tokens.begin(), tokens.end());
  return tokens.size() == 6 && distinct == kLabels;
}

class Analysis {
 public:
  explicit Analysis(const ServiceMapInput& input)
      : surroundCheck_(input.surroundCheck), streams_(input.streams) {
    const auto streamCount = static_cast<std::int32_t>(streams_.size());
    const std::uint32_t total = fileTrackCount(streams_.data(), streamCount);
    std::int32_t counter = -1;
    services_ = parse(input.description, total, input.reportAll, counter);
    for (PlainExpectedService& service : services_) {
      if (service.streamType == k51Mix) service.label = input.order;
    }
  }

  PlainResult run() {
    if (streams_.empty() || services_.empty()) return {Outcome::kUntouched, {}};
    listExpectedTracks();
    expandTracks();
    if (!tracksAlign()) return {Outcome::kUntouched, {}};
    for (const PlainExpectedService& service : services_) assign(service);
    return buildResults();
  }

 private:
  void listExpectedTracks() {
    for (const PlainExpectedService& service : services_) {
      for (std::int32_t i = 0; i < service.trackCount; ++i) {
        const std::int32_t number = service.tracks[static_cast<std::size_t>(i)];
        expectedTracks_.push_back({number, service.isEmca});
      }
    }
  }

  void expandTracks() {
    bool sharedPairStarted = false;
    for (const AudioStreamInfo& stream : streams_) {
      for (std::int32_t j = 0; j < stream.channelCount; ++j) {
        FileTrack track{trackNumberOf(stream), stream.group,        stream.group, j,
                        stream.isPairCoded,    stream.isPairShared, stream.group};
        joinGroup(track, hasHyphen(stream), sharedPairStarted);
        fileTracks_.push_back(track);
      }
    }
  }

  void joinGroup(FileTrack& track, bool hyphen, bool& sharedPairStarted) const {
    if (track.isPairCoded != 1) return;
    if (fileTracks_.empty()) {
      sharedPairStarted = true;
      return;
    }
    const FileTrack& previous = fileTracks_.back();
    bool joins = previous.trackNumber == track.trackNumber && previous.group != track.group;
    if (!hyphen && track.isPairShared != 0) {
      joins = sharedPairStarted;
      sharedPairStarted = true;
    }
    if (!joins) return;
    track.group = previous.group;
    track.indexInGroup =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(previous.indexInGroup) + 1U);
  }

  bool tracksAlign() const {
    std::size_t cursor = 0;
    for (std::size_t e = 0; e < expectedTracks_.size();) {
      const bool isEmca = expectedTracks_[e].isEmca;
      if (cursor >= fileTracks_.size()) return false;
      if ((fileTracks_[cursor].isPairCoded != 0) != isEmca) return false;
      const std::size_t run = pairCodedRun(cursor);
      if (run > 0) cursor += run - 1;
      e += isEmca ? 2 : 1;
      cursor += 1;
    }
    return true;
  }

  std::size_t pairCodedRun(std::size_t first) const {
    std::size_t length = 0;
    while (first + length < fileTracks_.size() && fileTracks_[first + length].isPairCoded == 1 &&
           fileTracks_[first + length].group == fileTracks_[first].group) {
      ++length;
    }
    return length;
  }

  void assign(const PlainExpectedService& service) {
    if (service.isEmca) {
      assignEmca(service);
    } else {
      assignOrdinary(service);
    }
  }

  void assignEmca(const PlainExpectedService& service) {
    if (next_ >= fileTracks_.size() || fileTracks_[next_].isPairCoded != 1) return;
    const std::int32_t group = fileTracks_[next_].group;
    while (next_ < fileTracks_.size() && fileTracks_[next_].group == group) {
      ServiceFinding finding{service, takeProgramme(group, fileTracks_[next_].streamGroup)};
      finding.service.trackCount = static_cast<std::int32_t>(finding.fileTracks.size());
      if (service.reported) findings_.push_back(finding);
    }
  }

  std::vector<FileTrack> takeProgramme(std::int32_t group, std::int32_t streamGroup) {
    std::vector<FileTrack> taken;
    while (next_ < fileTracks_.size() && fileTracks_[next_].group == group &&
           fileTracks_[next_].streamGroup == streamGroup) {
      taken.push_back(fileTracks_[next_++]);
    }
    return taken;
  }

  void assignOrdinary(const PlainExpectedService& service) {
    ServiceFinding finding{service, {}};
    if (service.streamType == k51Mix && surroundCheck_) {
      const std::wstring label = deriveLabel(service.trackCount);
      if (checkSurroundLabels(label)) finding.service.label = label;
    }
    for (std::int32_t i = 0; i < service.trackCount && next_ < fileTracks_.size(); ++i) {
      finding.fileTracks.push_back(fileTracks_[next_++]);
    }
    if (service.reported) findings_.push_back(finding);
  }

  std::wstring deriveLabel(std::int32_t trackCount) const {
    std::wstring text;
    for (std::int32_t i = 0; i < trackCount; ++i) {
      const std::size_t at = next_ + static_cast<std::size_t>(i);
      if (at < fileTracks_.size()) text += labelOfTrack(fileTracks_[at]);
      if (i < trackCount - 1) text += L" ";
    }
    return text;
  }

  std::wstring labelOfTrack(const FileTrack& track) const {
    for (const AudioStreamInfo& stream : streams_) {
      if (trackNumberOf(stream) == track.trackNumber) {
        return labelAt(stream.trackLabels, track.indexInGroup);
      }
    }
    return {};
  }

  PlainResult buildResults() const {
    PlainResult result{Outcome::kFilled, {}};
    for (const ServiceFinding& finding : findings_) {
      result.results.push_back(makeRecord(finding));
      if (!neighboursAgree(finding)) return {Outcome::kEmptied, {}};
    }
    return result;
  }

  static ServiceMapResult makeRecord(const ServiceFinding& finding) {
    ServiceMapResult record;
    record.trackCount = std::min(finding.service.trackCount, kSlotCount);
    record.reported = finding.service.reported ? 1 : 0;
    record.isEmca = finding.service.isEmca ? 1 : 0;
    record.requested = finding.service.requested ? 1 : 0;
    record.label = finding.service.label;
    for (std::size_t j = 0; j < finding.fileTracks.size() && j < record.slots.size(); ++j) {
      const FileTrack& track = finding.fileTracks[j];
      record.slots[j] = {track.trackNumber, track.group, track.sourceGroup, track.indexInGroup};
    }
    return record;
  }

  bool neighboursAgree(const ServiceFinding& finding) const {
    const std::int32_t trackCount = finding.service.trackCount;
    if (trackCount <= 1 || finding.service.isEmca) return true;
    // A missing track agrees with nothing, whatever numbers the streams have.
    if (finding.fileTracks.size() < static_cast<std::size_t>(trackCount)) return false;
    for (std::size_t j = 0; j + 1 < finding.fileTracks.size(); ++j) {
      const std::optional<std::size_t> a = lastStreamOf(finding.fileTracks[j].trackNumber);
      const std::optional<std::size_t> b = lastStreamOf(finding.fileTracks[j + 1].trackNumber);
      if (!a || !b || !tracksCompatible(*a, *b)) return false;
    }
    return true;
  }

  std::optional<std::size_t> lastStreamOf(std::int64_t trackNumber) const {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
      if (trackNumberOf(streams_[i]) == trackNumber) found = i;
    }
    return found;
  }

  bool tracksCompatible(std::size_t a, std::size_t b) const {
    return streams_[a].formatKey1 == streams_[b].formatKey1 &&
           streams_[a].formatKey2 == streams_[b].formatKey2 &&
           streams_[a].formatKey3 == streams_[b].formatKey3;
  }

  bool surroundCheck_;
  std::vector<AudioStreamInfo> streams_;
  std::vector<PlainExpectedService> services_;
  std::vector<ExpectedTrack> expectedTracks_;
  std::vector<FileTrack> fileTracks_;
  std::size_t next_ = 0;
  std::vector<ServiceFinding> findings_;
};

}  // namespace

std::uint32_t fileTrackCount(const AudioStreamInfo* streams, std::int32_t count) {
  std::uint32_t sum = 0;
  bool sharedPairCounted = false;
  std::optional<std::int32_t> remembered;
  for (std::int32_t i = 0; streams != nullptr && i < count; ++i) {
    const AudioStreamInfo& stream = streams[i];
    if (stream.isPairCoded == 0) {
      sum += static_cast<std::uint32_t>(stream.channelCount);
      continue;
    }
    const auto number = static_cast<std::int32_t>(trackNumberOf(stream));
    if (hasHyphen(stream) || stream.isPairShared == 0) {
      if (number != remembered) sum += 2;
    } else {
      if (!sharedPairCounted) sum += 2;
      sharedPairCounted = true;
    }
    remembered = number;
  }
  return sum;
}

PlainResult serviceMap(const std::string& description, const std::wstring& order,
                       const AudioStreamInfo* streams, std::int32_t streamCount, bool reportAll,
                       bool surroundCheck) {
  ServiceMapInput input{description, order, {}, reportAll, surroundCheck};
  if (streams != nullptr && streamCount > 0) input.streams.assign(streams, streams + streamCount);
  return serviceMap(input);
}

PlainResult serviceMap(const ServiceMapInput& input) { return Analysis(input).run(); }

}  // namespace kestrel::plain
