// What an analysis of the plain C interface must be, whatever the input: the verdict and the
// services of the plain form, and findings that fit the input and the outcome.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "tests/c_api/c_answer.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

/// The fields of a finding that a code uses.
enum UsedFields : unsigned {
  kService = 1,
  kSlot = 2,
  kTrack = 4,
  kValues = 8,
  kFirst = 16,
  kText = 32,
};

/// Those of every code.
const std::map<std::int32_t, unsigned>& usedFields();

/// What is wrong with an answer, in a few words; empty when it is as it must be.
/// @param expected  what the plain form makes of the input
std::string wrongIn(const Answer& answer, const plain::ServiceMapInput& input,
                    const plain::PlainResult& expected);

}  // namespace kestrel::test
