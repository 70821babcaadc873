// The tables say what docs/schema/kestrel-result-1.json says, with the largest numbers that the
// program writes. A few functions hold a document against them.
#include "host/reporting/result_form.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include "api/catalogue_ids.h"
#include "host/judging/inspect_file.h"

namespace kestrel::host {
namespace {

enum class Kind { kText, kWord, kId, kHex, kFlag, kNumber, kObject, kList };

struct Member;

struct Form {
  Kind kind = Kind::kText;
  std::int64_t least = 0;           ///< of a number
  std::int64_t most = 0;            ///< of a number; of a list, how many elements it has
  const Member* members = nullptr;  ///< of an object
  std::size_t memberCount = 0;
  const Form* element = nullptr;  ///< of a list
  bool isDistinct = false;        ///< of a list of numbers: each stands once
  const char* words = nullptr;    ///< of a word: those that there are, between blanks
  bool mayBeNull = false;
};

struct Member {
  const char* name;
  Form form;
  bool mayLack = false;
};

constexpr Form number(std::int64_t least, std::int64_t most) {
  return {.kind = Kind::kNumber, .least = least, .most = most};
}

template <std::size_t Count>
constexpr Form object(const std::array<Member, Count>& members) {
  return {.kind = Kind::kObject, .members = members.data(), .memberCount = Count};
}

constexpr Form list(const Form& element, std::int64_t most) {
  return {.kind = Kind::kList, .most = most, .element = &element};
}

constexpr Form distinct(Form form) {
  form.isDistinct = true;
  return form;
}

constexpr Form word(const char* words) { return {.kind = Kind::kWord, .words = words}; }

constexpr Form orNull(Form form) {
  form.mayBeNull = true;
  return form;
}

constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kMostOfFile = kMostExaminedTracks;
// A layout file of 1 MiB can name as many services, and tracks past the end of a file.
constexpr std::int64_t kMostExpected = 1 << 20;
constexpr std::int64_t kMostPoints = 1 << 20;

constexpr Form kText{};
constexpr Form kId{.kind = Kind::kId};
constexpr Form kHex{.kind = Kind::kHex};
constexpr Form kFlag{.kind = Kind::kFlag};
constexpr Form kTexts = list(kText, kMostExpected);
constexpr Form kTrack = number(1, kMostExpected);
constexpr Form kTracks = distinct(list(kTrack, kMostExpected));
constexpr Form kIndex = number(0, kMostExpected);
constexpr Form kIndices = distinct(list(kIndex, kMostOfFile));

constexpr std::array<Member, 2> kItemMembers = {
    {{"id", number(0, NO_SERVICE_MAP_ITEM - 1)}, {"name", kText}}};
constexpr Form kItem = object(kItemMembers);

constexpr std::array<Member, 3> kVerdict = {
    {{"result", word(" conforms does-not-conform identified not-examined ")},
     {"exitCode", number(0, 2)},
     {"sentence", kText}}};

constexpr std::array<Member, 2> kError = {{{"id", kId}, {"sentence", kText}}};

// A line that lacks one is of another file to a scan that goes on.
constexpr Form kCount = number(0, std::numeric_limits<std::int64_t>::max());
constexpr std::array<Member, 5> kIdentity = {{{"size", kCount, true},
                                              {"modified", kText, true},
                                              {"changed", kText, true},
                                              {"device", kCount, true},
                                              {"inode", kCount, true}}};

constexpr std::array<Member, 10> kStreamMembers = {{{"id", kText},
                                                    {"channel", orNull(number(1, kLargest))},
                                                    {"format", kText},
                                                    {"channels", number(0, kLargest)},
                                                    {"sampleRate", number(0, kLargest)},
                                                    {"bitDepth", number(0, kLargest)},
                                                    {"labels", kTexts},
                                                    {"pairCoded", kFlag},
                                                    {"programme", orNull(number(1, kMostOfFile))},
                                                    {"tracks", kTracks}}};
constexpr Form kStream = object(kStreamMembers);

constexpr std::array<Member, 6> kTrackMembers = {{{"number", number(1, kMostOfFile)},
                                                  {"name", kText},
                                                  {"streams", kIndices},
                                                  {"channel", number(1, kMostOfFile)},
                                                  {"label", kText},
                                                  {"pairCoded", kFlag}}};
constexpr Form kTrackForm = object(kTrackMembers);

constexpr std::array<Member, 4> kDeclared = {
    {{"text", kText}, {"vocabulary", kText}, {"code", kText}, {"item", orNull(kItem)}}};

constexpr std::array<Member, 5> kExpectation = {{{"kind", kText},
                                                 {"text", kText},
                                                 {"item", orNull(kItem)},
                                                 {"code", kText},
                                                 {"description", kText}}};

constexpr std::array<Member, 6> kOptions = {{{"expectation", orNull(object(kExpectation)), true},
                                             {"order", kText, true},
                                             {"labelCheck", kFlag, true},
                                             {"reportAll", kFlag, true},
                                             {"strict", kFlag, true},
                                             {"timeout", number(1, kLargest), true}}};

constexpr std::array<Member, 3> kProgrammeMembers = {
    {{"stream", kIndex}, {"channels", number(0, kLargest)}, {"labels", kTexts}}};
constexpr Form kProgramme = object(kProgrammeMembers);

constexpr std::array<Member, 6> kServiceMembers = {{{"name", kText},
                                                    {"tracks", kTracks},
                                                    {"held", kFlag},
                                                    {"requested", kFlag},
                                                    {"labels", kTexts},
                                                    {"programmes", list(kProgramme, kMostOfFile)}}};
constexpr Form kService = object(kServiceMembers);

constexpr std::array<Member, 2> kPlacedMembers = {{{"name", kText}, {"tracks", kTracks}}};
constexpr Form kPlaced = object(kPlacedMembers);

constexpr std::array<Member, 4> kReasonMembers = {{{"id", kId},
                                                   {"points", number(-kMostPoints, kMostPoints)},
                                                   {"sentence", kText},
                                                   {"tracks", kTracks}}};
constexpr Form kReason = object(kReasonMembers);

constexpr std::array<Member, 5> kCandidateMembers = {{{"item", kItem},
                                                      {"score", number(-kMostPoints, kMostPoints)},
                                                      {"codes", kTexts},
                                                      {"services", list(kPlaced, kMostOfFile)},
                                                      {"reasons", list(kReason, kMostOfFile)}}};
constexpr Form kCandidate = object(kCandidateMembers);

constexpr std::array<Member, 2> kValueMembers = {{{"source", kText}, {"value", kText}}};
constexpr Form kValue = object(kValueMembers);

constexpr std::array<Member, 4> kDisagreementMembers = {
    {{"id", kId}, {"sentence", kText}, {"tracks", kTracks}, {"values", list(kValue, 2)}}};
constexpr Form kDisagreement = object(kDisagreementMembers);

constexpr std::array<Member, 4> kMajority = {{{"item", orNull(kItem)},
                                              {"sources", kTexts},
                                              {"sourceCount", number(0, kMostOfFile)},
                                              {"sentence", kText}}};

constexpr std::array<Member, 3> kCrossCheck = {
    {{"agrees", kFlag},
     {"disagreements", list(kDisagreement, kMostExpected)},
     {"majority", object(kMajority)}}};

constexpr std::array<Member, 5> kFindingMembers = {{{"id", kId},
                                                    {"severity", word(" error warning note ")},
                                                    {"sentence", kText},
                                                    {"service", orNull(kIndex)},
                                                    {"tracks", kTracks}}};
constexpr Form kFinding = object(kFindingMembers);

constexpr std::array<Member, 19> kResultMembers = {
    {{"schema", kText},
     {"kestrel", kText},
     {"file", kText},
     {"fileBytes", kHex, true},
     {"identity", orNull(object(kIdentity)), true},
     {"options", object(kOptions), true},
     {"verdict", object(kVerdict)},
     {"error", orNull(object(kError))},
     {"reader", kText},
     {"container", kText},
     {"trackTotal", number(0, kMostOfFile)},
     {"streams", list(kStream, kMostOfFile)},
     {"tracks", list(kTrackForm, kMostOfFile)},
     {"declared", orNull(object(kDeclared))},
     {"expectation", orNull(object(kExpectation))},
     {"services", list(kService, kMostExpected)},
     {"identification", list(kCandidate, NO_SERVICE_MAP_ITEM)},
     {"crossCheck", orNull(object(kCrossCheck))},
     {"findings", list(kFinding, kMostExpected)}}};
constexpr Form kResult = object(kResultMembers);

// --- Holding a value against a form. What is wrong begins with the place in the value.

bool isNumberWithin(const Json& value, std::int64_t least, std::int64_t most) {
  if (!value.is_number_integer()) {
    return false;
  }
  const bool isHuge =
      value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
  return !isHuge && value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most;
}

bool consistsOf(const Json& value, std::string_view characters) {
  if (!value.is_string()) {
    return false;
  }
  const auto& text = value.get_ref<const std::string&>();
  return !text.empty() && text.find_first_not_of(characters) == std::string::npos;
}

bool isOneOf(const Json& value, std::string_view words) {
  return consistsOf(value, "abcdefghijklmnopqrstuvwxyz-") &&
         words.find(" " + value.get<std::string>() + " ") != std::string_view::npos;
}

bool areDistinct(const Json& numbers) {
  std::vector<std::int64_t> sorted = numbers.get<std::vector<std::int64_t>>();
  std::ranges::sort(sorted);
  return std::ranges::adjacent_find(sorted) == sorted.end();
}

std::string errorIn(const Json& value, const Form& form);

std::string errorInObject(const Json& value, const Form& form) {
  if (!value.is_object()) {
    return " is no object";
  }
  for (std::size_t index = 0; index < form.memberCount; ++index) {
    const Member& member = form.members[index];
    const auto found = value.find(member.name);
    std::string error = found == value.end() ? (member.mayLack ? "" : " is not there")
                                             : errorIn(*found, member.form);
    if (!error.empty()) {
      return fmt::format(".{}{}", member.name, error);
    }
  }
  return "";
}

std::string errorInList(const Json& value, const Form& form) {
  if (!value.is_array() || value.size() > static_cast<std::size_t>(form.most)) {
    return fmt::format(" is no list of at most {} elements", form.most);
  }
  for (std::size_t index = 0; index < value.size(); ++index) {
    const std::string error = errorIn(value.at(index), *form.element);
    if (!error.empty()) {
      return fmt::format("[{}]{}", index, error);
    }
  }
  return form.isDistinct && !areDistinct(value) ? " has a number twice" : "";
}

std::string unless(bool holds, const char* error) { return holds ? "" : error; }

// NOLINTNEXTLINE(misc-no-recursion): forms are as deep as their tables.
std::string errorIn(const Json& value, const Form& form) {
  if (form.mayBeNull && value.is_null()) {
    return "";
  }
  switch (form.kind) {
    case Kind::kText:
      return unless(value.is_string(), " is no text");
    case Kind::kWord:
      return unless(isOneOf(value, form.words), " is none of its words");
    case Kind::kId:
      return unless(consistsOf(value, "abcdefghijklmnopqrstuvwxyz0123456789-"), " is no id");
    case Kind::kHex:
      return unless(consistsOf(value, "0123456789abcdef") &&
                        value.get_ref<const std::string&>().size() % 2 == 0,
                    " are no bytes");
    case Kind::kFlag:
      return unless(value.is_boolean(), " is neither true nor false");
    case Kind::kNumber:
      return isNumberWithin(value, form.least, form.most)
                 ? ""
                 : fmt::format(" is no whole number from {} to {}", form.least, form.most);
    case Kind::kObject:
      return errorInObject(value, form);
    case Kind::kList:
      return errorInList(value, form);
  }
  return "";
}

// Tracks name streams by their places.
std::string errorInIndices(const Json& document) {
  for (const Json& track : document.at("tracks")) {
    for (const Json& index : track.at("streams")) {
      if (index.get<std::size_t>() >= document.at("streams").size()) {
        return "a track is of a stream that is not there";
      }
    }
  }
  return "";
}

}  // namespace

std::string formErrorIn(const Json& document) {
  const std::string error = errorIn(document, kResult);
  return error.empty() ? errorInIndices(document) : error.substr(1);
}

}  // namespace kestrel::host
