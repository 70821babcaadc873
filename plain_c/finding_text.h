// Findings as English sentences.
#pragma once

#include <string>

#include "api/kestrel.h"

namespace kestrel {

/// One sentence about a finding of the analysis, with a full stop. It counts services and their
/// tracks from 1. Raises std::bad_alloc.
std::string findingText(const KestrelFinding& finding, const KestrelAnalysis& analysis);

}  // namespace kestrel
