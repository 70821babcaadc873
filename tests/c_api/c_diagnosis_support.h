// One analysis of the plain C interface with its findings, and what a test expects of them.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {

using Streams = std::vector<KestrelStream>;

KestrelStream withKeys(KestrelStream made, std::int32_t key1, std::int32_t key2, std::int32_t key3);

/// The fields of a finding; those that a code does not use are as they are here.
struct Found {
  std::int32_t code = 0;
  std::int32_t service = -1;
  std::int32_t slot = -1;
  std::int32_t stream = -1;
  std::int64_t track = -1;
  std::int64_t first = 0;
  std::int64_t second = 0;
  std::int64_t textOffset = -1;
  std::int64_t textLength = -1;
  bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found);

/// One analysis, with surroundCheck set.
class Diagnosis {
 public:
  Diagnosis(const char* description, const Streams& streams);

  static Diagnosis withoutSurroundCheck(const char* description, const Streams& streams);
  static Diagnosis reportingAll(const char* description, const Streams& streams);
  static Diagnosis withOrder(const char* order, const char* description, const Streams& streams);

  std::int32_t outcome() const;
  std::vector<Found> findings() const;
  std::string sentence(std::int32_t index) const;
  std::vector<std::int32_t> describedTotals() const;
  const KestrelAnalysis* analysis() const { return analysis_.get(); }

 private:
  struct Options {
    bool reportAll = false;
    bool surroundCheck = true;
    const char* order = kSixLabels;
  };

  Diagnosis(const Options& options, const char* description, const Streams& streams);

  Found findingAt(std::int32_t index) const;

  Analysis analysis_;
};

/// A finding, and what its sentence must name.
struct Expected {
  Found found;
  std::vector<std::string> words;
};

/// Compares the outcome and all findings, and reads their sentences.
void expectDiagnosis(const Diagnosis& diagnosis, std::int32_t outcome,
                     const std::vector<Expected>& expected);

}  // namespace kestrel::test
