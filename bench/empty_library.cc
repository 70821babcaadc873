// A shared library of C++ that holds nothing: what loading and unloading cost at least.
#include "api/export.h"

extern "C" KESTREL_EXPORT int answer();

int answer() { return 1; }
