/* The sizes of the plain C records and the offset of each field, checked where this is included: in
 * C and in C++, by every compiler that builds the tests. */
#ifndef KESTREL_TESTS_C_API_C_RECORD_OFFSETS_H
#define KESTREL_TESTS_C_API_C_RECORD_OFFSETS_H

#include <stddef.h>

#include "api/kestrel.h"

#ifdef __cplusplus
#define KESTREL_STATIC_ASSERT static_assert
#else
#define KESTREL_STATIC_ASSERT _Static_assert
#endif

#define RECORD_TAKES(record, size) KESTREL_STATIC_ASSERT(sizeof(record) == (size), #record)
#define FIELD_STANDS_AT(record, field, offset) \
  KESTREL_STATIC_ASSERT(offsetof(record, field) == (offset), #record "." #field)

RECORD_TAKES(void*, 8);

RECORD_TAKES(KestrelStream, 48);
FIELD_STANDS_AT(KestrelStream, structSize, 0);
FIELD_STANDS_AT(KestrelStream, group, 4);
FIELD_STANDS_AT(KestrelStream, streamId, 8);
FIELD_STANDS_AT(KestrelStream, trackLabels, 16);
FIELD_STANDS_AT(KestrelStream, channelCount, 24);
FIELD_STANDS_AT(KestrelStream, formatKey1, 28);
FIELD_STANDS_AT(KestrelStream, formatKey2, 32);
FIELD_STANDS_AT(KestrelStream, formatKey3, 36);
FIELD_STANDS_AT(KestrelStream, isPairCoded, 40);
FIELD_STANDS_AT(KestrelStream, isPairShared, 41);
FIELD_STANDS_AT(KestrelStream, reserved, 42);

RECORD_TAKES(KestrelRequest, 40);
FIELD_STANDS_AT(KestrelRequest, structSize, 0);
FIELD_STANDS_AT(KestrelRequest, streamCount, 4);
FIELD_STANDS_AT(KestrelRequest, layoutDescription, 8);
FIELD_STANDS_AT(KestrelRequest, surroundChannelOrder, 16);
FIELD_STANDS_AT(KestrelRequest, streams, 24);
FIELD_STANDS_AT(KestrelRequest, streamStride, 32);
FIELD_STANDS_AT(KestrelRequest, reportAll, 36);
FIELD_STANDS_AT(KestrelRequest, surroundCheck, 37);
FIELD_STANDS_AT(KestrelRequest, reserved, 38);

RECORD_TAKES(KestrelTrack, 24);
FIELD_STANDS_AT(KestrelTrack, trackNumber, 0);
FIELD_STANDS_AT(KestrelTrack, group, 8);
FIELD_STANDS_AT(KestrelTrack, sourceGroup, 12);
FIELD_STANDS_AT(KestrelTrack, indexInGroup, 16);
FIELD_STANDS_AT(KestrelTrack, reserved, 20);

RECORD_TAKES(KestrelService, 800);
FIELD_STANDS_AT(KestrelService, structSize, 0);
FIELD_STANDS_AT(KestrelService, trackCount, 4);
FIELD_STANDS_AT(KestrelService, serviceIndex, 8);
FIELD_STANDS_AT(KestrelService, streamType, 12);
FIELD_STANDS_AT(KestrelService, reported, 16);
FIELD_STANDS_AT(KestrelService, isEmca, 17);
FIELD_STANDS_AT(KestrelService, requested, 18);
FIELD_STANDS_AT(KestrelService, reserved, 19);
FIELD_STANDS_AT(KestrelService, label, 24);
FIELD_STANDS_AT(KestrelService, slots, 32);

RECORD_TAKES(KestrelFinding, 64);
FIELD_STANDS_AT(KestrelFinding, structSize, 0);
FIELD_STANDS_AT(KestrelFinding, code, 4);
FIELD_STANDS_AT(KestrelFinding, service, 8);
FIELD_STANDS_AT(KestrelFinding, slot, 12);
FIELD_STANDS_AT(KestrelFinding, stream, 16);
FIELD_STANDS_AT(KestrelFinding, reserved, 20);
FIELD_STANDS_AT(KestrelFinding, track, 24);
FIELD_STANDS_AT(KestrelFinding, first, 32);
FIELD_STANDS_AT(KestrelFinding, second, 40);
FIELD_STANDS_AT(KestrelFinding, textOffset, 48);
FIELD_STANDS_AT(KestrelFinding, textLength, 56);

#endif /* KESTREL_TESTS_C_API_C_RECORD_OFFSETS_H */
