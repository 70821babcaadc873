// Marks the functions that the shared library exports. On ELF platforms the mark overrides hidden
// visibility. On Windows the module definition file, made from api/exported_names.txt, exports the
// plain names, so no mark is needed.
#pragma once

#if defined(_WIN32)
#define KESTREL_EXPORT
#else
#define KESTREL_EXPORT __attribute__((visibility("default")))
#endif
