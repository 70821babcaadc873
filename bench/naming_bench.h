// The catalogue, naming and look-up calls beside a plain copy of the same name.
#pragma once

namespace kestrel::bench {

void registerNamingCases();

}  // namespace kestrel::bench
