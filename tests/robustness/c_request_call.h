// Calls of kestrelAnalyse() as rows: a request that is in order and can be spoiled, and what the
// call made of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/robustness/call_row.h"

namespace kestrel::test {

/// What a request is made of; it owns the texts.
struct RequestParts {
  std::string description = "T2=Stereo";
  std::string order = "L R C LFE Ls Rs";
  std::string streamId = "1";
  std::string trackLabels = "";
  std::int32_t channelCount = 2;
  std::size_t streams = 1;  // that many alike
  bool everything = false;  // both flags of the request
};

/// Changes a request that is in order, and its streams.
using Spoil = std::function<void(KestrelRequest&, std::vector<KestrelStream>&)>;

CallRow requestRow(
    const std::string& value, const Answer& expected, const RequestParts& parts,
    const Spoil& spoil = [](KestrelRequest&, std::vector<KestrelStream>&) {});

/// Status 0 with an analysis of this outcome that has so many services.
Answer analysed(std::int32_t outcome, int services);

/// A failure: no analysis, and for a bad text where it is.
Answer refused(KestrelStatus status);
Answer badText(std::size_t byte, std::int32_t stream);

/// What kestrelAnalyse() gives back.
struct AnalyseOuts {
  AnalyseOuts();
  ~AnalyseOuts();
  AnalyseOuts(const AnalyseOuts&) = delete;
  AnalyseOuts& operator=(const AnalyseOuts&) = delete;

  std::int64_t elsewhere = 0;  // where the analysis points to before the call
  KestrelAnalysis* analysis;
  std::size_t badByte;
  std::int32_t badStream;

  std::string inWords() const;
};

}  // namespace kestrel::test
