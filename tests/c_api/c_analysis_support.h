// Makes analyses through the plain C interface and reads them, each function checking that the call
// goes as it should.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {

/// The analysis of a request that is in order.
Analysis analysed(const KestrelRequest& request);

struct Refusal {
  KestrelStatus status;
  std::size_t badByte;
  std::int32_t badStream;
  bool operator==(const Refusal&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal);

/// What a refused request leaves behind; the two places stay 77 where none is written.
Refusal refusalOf(const KestrelRequest* request);

/// A refusal that writes neither place.
Refusal refusal(KestrelStatus status);

std::int32_t outcomeOf(const Analysis& analysis);
std::int32_t serviceCount(const Analysis& analysis);
std::int32_t findingCount(const Analysis& analysis);
KestrelService serviceAt(const Analysis& analysis, std::int32_t index);
KestrelFinding findingAt(const Analysis& analysis, std::int32_t index);
std::string sentenceAt(const Analysis& analysis, std::int32_t index);

/// Puts a text into each of the four places of a request in turn, and calls `use` with the request
/// and the index that stands for the place.
template <class Use>
void forEachPlaceOf(const std::string& text, const Use& use) {
  std::vector<KestrelStream> streams(3, stream("1", 2));
  KestrelRequest asked = request("T6=Stereo", streams);
  asked.layoutDescription = text.c_str();
  use(asked, -1);
  asked = request("T6=Stereo", streams);
  asked.surroundChannelOrder = text.c_str();
  use(asked, -1);
  for (const auto place : {&KestrelStream::streamId, &KestrelStream::trackLabels}) {
    streams.assign(3, stream("1", 2));
    streams[1].*place = text.c_str();
    use(request("T6=Stereo", streams), 1);
  }
}

}  // namespace kestrel::test
