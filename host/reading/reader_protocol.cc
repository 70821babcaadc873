#include "host/reading/reader_protocol.h"

#include <fmt/format.h>

#include <cstdint>
#include <nlohmann/json.hpp>

#include "host/basics/json.h"
#include "host/basics/text_parts.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {
namespace {

constexpr std::string_view kExited = "exited ";
constexpr std::string_view kSignalled = "signalled ";
constexpr std::size_t kLongestHead = 64;

[[noreturn]] void reject() {
  throw NotExamined("reader-failed", "the reader does not answer in its form");
}

struct Head {
  bool isSignalled = false;
  int code = 0;
  std::uint64_t size = 0;
};

Head headIn(std::string_view line) {
  const bool isSignalled = takeText(line, kSignalled);
  if (!isSignalled && !takeText(line, kExited)) {
    reject();
  }
  const auto code = takeNumber<int>(line);
  const bool isBlank = takeText(line, " ");
  const auto size = takeNumber<std::uint64_t>(line);
  if (!code || !isBlank || !size || !line.empty()) {
    reject();
  }
  return {isSignalled, *code, *size};
}

}  // namespace

std::string textOf(const ReaderRequest& request) {
  std::string text;
  for (const std::string& part : {request.parseSpeed, request.file}) {
    text.append(part, 0, part.find('\0')).push_back('\0');
  }
  return text;
}

std::optional<ReaderRequest> takeRequest(std::string& text) {
  const std::size_t speedEnd = text.find('\0');
  const std::size_t fileEnd =
      speedEnd == std::string::npos ? speedEnd : text.find('\0', speedEnd + 1);
  if (fileEnd == std::string::npos) {
    return std::nullopt;
  }
  ReaderRequest request{text.substr(0, speedEnd),
                        text.substr(speedEnd + 1, fileEnd - speedEnd - 1)};
  text.erase(0, fileEnd + 1);
  return request;
}

std::string textOf(const ReaderAnswer& answer) {
  return fmt::format("{}{} {}\n", answer.isSignalled ? kSignalled : kExited, answer.code,
                     answer.output.size()) +
         answer.output;
}

std::optional<ReaderAnswer> answerIn(std::string_view text) {
  const std::size_t headEnd = text.substr(0, kLongestHead).find('\n');
  if (headEnd == std::string_view::npos) {
    if (text.size() >= kLongestHead) {
      reject();
    }
    return std::nullopt;
  }
  const Head head = headIn(text.substr(0, headEnd));
  text.remove_prefix(headEnd + 1);
  if (text.size() > head.size) {
    reject();
  }
  if (text.size() < head.size) {
    return std::nullopt;
  }
  return ReaderAnswer{head.isSignalled, head.code, std::string(text)};
}

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(RawAudioStream, id, format, muxingMode, channels, channelLayout,
                                   channelLayoutId, samplingRate, bitDepth)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(RawMedia, container, isTruncated, declaredLayout, audioStreams)

namespace {

constexpr char kReason[] = "notExamined";
constexpr char kSentence[] = "sentence";

std::string oneLine(const ForeignJson& json) {
  constexpr int kOneLine = -1;
  constexpr bool kAsciiOnly = true;
  return json.dump(kOneLine, ' ', kAsciiOnly, ForeignJson::error_handler_t::replace);
}

}  // namespace

std::string rawMediaToJson(const RawMedia& media) { return oneLine(media); }

std::string reasonToJson(const NotExamined& reason) {
  return oneLine({{kReason, reason.id()}, {kSentence, reason.what()}});
}

RawMedia rawMediaFromJson(std::string_view json) {
  try {
    const auto answer = parsedJson<ForeignJson>(json);
    if (answer.contains(kReason)) {
      throw NotExamined(answer.at(kReason).get<std::string>(),
                        answer.at(kSentence).get<std::string>());
    }
    return answer.get<RawMedia>();
  } catch (const nlohmann::json::exception&) {
    throw NotExamined("reader-failed", "the reader's answer cannot be understood");
  }
}

}  // namespace kestrel::host
