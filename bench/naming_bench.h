// The catalogue, naming and look-up calls, each beside the least that such a call must do.
#pragma once

namespace kestrel::bench {

void registerNamingCases();

}  // namespace kestrel::bench
