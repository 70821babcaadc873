// The layout for which most of the sources of evidence speak.
#pragma once

#include "host/judging/cross_check.h"

namespace kestrel::host {

Majority evidenceMajority(const CrossCheckInput& input);

}  // namespace kestrel::host
