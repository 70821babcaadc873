/* A host that needs nothing but kestrel.h, in words that C and C++ share. */
#include "kestrel.h"

int tracksOfRow(int32_t row);

int tracksOfRow(int32_t row) {
  int32_t tracks = 0;
  return kestrelRowTracks(row, &tracks) == KESTREL_OK ? tracks : -1;
}
