// Findings as English sentences.
#pragma once

#include <string>
#include <string_view>

#include "api/kestrel.h"

namespace kestrel {

/// What the sentences name beside the numbers of a finding.
struct FindingContext {
  std::string_view layoutDescription;
  std::string_view serviceList;  // of the entry that was chosen
  std::string_view totals;       // "2, 4 and 8": those that the description has entries for
};

/// One sentence, with a full stop. Services and their tracks are counted from 1 in it. Raises
/// std::bad_alloc.
std::string findingText(const KestrelFinding& finding, const FindingContext& context);

}  // namespace kestrel
