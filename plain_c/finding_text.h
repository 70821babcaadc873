// Findings as English sentences.
#pragma once

#include <string>

#include "api/kestrel.h"

namespace kestrel {

/// One sentence on a finding of the analysis, with a full stop. Services and their tracks are
/// counted from 1 in it. Raises std::bad_alloc.
std::string findingText(const KestrelFinding& finding, const KestrelAnalysis& analysis);

}  // namespace kestrel
