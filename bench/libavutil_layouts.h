// Calls of libavutil that do work of the same size: what a well-kept library of the field takes for
// a few texts, comparisons and names of channel layouts.
#pragma once

namespace kestrel::bench {

/// Reads two layouts from their names, compares eight pairs of layouts and describes the two.
/// Returns how many comparisons say "equal".
int readCompareAndDescribeLayouts();

}  // namespace kestrel::bench
