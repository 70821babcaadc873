// The verdict on a file, from what was found about it.
#pragma once

#include "host/judging/result.h"

namespace kestrel::host {

/// @param isStrict  warnings fail too
Verdict verdictOf(const FileResult& result, bool isStrict);

}  // namespace kestrel::host
